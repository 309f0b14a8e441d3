// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyIntersected.h"

class QGraphicsItem;

/// A hit in a Qt graphics scene: the item that was found at the record's point. Made by Ky2DScene::pickQGraphicsItem
/// when its creator says so; look at the item before it can end.
class KYAPPLICATION_EXPORT KyQGraphicsItemIntersected : public KyIntersected {
public:
    static const KyType* getType();
    static KyQGraphicsItemIntersected* cast(KyObject* object);
    static KyObject* factory() { return new KyQGraphicsItemIntersected; }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    /// A KyIntersectedCreator::Function.
    static KyIntersected* create() { return new KyQGraphicsItemIntersected; }

    /// Not owned; null when there is none.
    QGraphicsItem* getQGraphicsItem() const { return mItem; }
    /// Not owned, and not told of its end.
    void setQGraphicsItem(QGraphicsItem* item) { mItem = item; }

private:
    QGraphicsItem* mItem = nullptr;

    static const KyType* msType;
};
