// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyIntersected.h"

class Ky2DNode;

/// A hit in a 2D scene: the node that was found at the record's point. Made by Ky2DScene::pick when its creator says
/// so; the results belong to who asked.
///
/// ```
/// std::vector<KyIntersected*> results;
/// scene->pick(x, y, results, &Ky2DIntersected::create);
/// ```
class KYAPPLICATION_EXPORT Ky2DIntersected : public KyIntersected {
public:
    static const KyType* getType();
    static Ky2DIntersected* cast(KyObject* object);
    static KyObject* factory() { return new Ky2DIntersected; }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    /// A KyIntersectedCreator::Function.
    static KyIntersected* create() { return new Ky2DIntersected; }

    /// Null when no node drives the item that was hit, or when the node is gone.
    Ky2DNode* getElement() const;
    void setElement(Ky2DNode* element);

private:
    KyObjectReference mElement;

    static const KyType* msType;
};
