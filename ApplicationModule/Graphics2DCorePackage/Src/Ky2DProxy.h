// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DNode.h"

/// Lets a Qt item made elsewhere take part in the tree: it gets the node's transform, z-value and visibility. The item
/// is not owned: who made it, or the Qt parent or Qt scene that it is in, deletes it, before the node or after. When
/// the node leaves its parent or ends, the item leaves its Qt scene and is the maker's again.
///
/// ```
/// auto* proxy = Ky2DProxy::create(new QGraphicsProxyWidget);
/// ```
class KYAPPLICATION_EXPORT Ky2DProxy : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DProxy* cast(KyObject* object);
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    static Ky2DProxy* create(QGraphicsItem* item = nullptr) { return new Ky2DProxy(item); }
    const KyType* getObjectType() const override;

    /// Null makes a node without item.
    explicit Ky2DProxy(QGraphicsItem* item = nullptr);
    /// Has no item.
    Ky2DProxy* clone() const override;

protected:
    Ky2DProxy(const Ky2DProxy& other) = default;

private:
    static const KyType* msType;
};
