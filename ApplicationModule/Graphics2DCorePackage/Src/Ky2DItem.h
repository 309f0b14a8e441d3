// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <utility>

class Ky2DNode;

/// What a Qt item tells the node that drives it: that it ends, whoever deletes it. Qt deletes items with their scene
/// and with their parent item, so a node cannot rely on the pointer alone.
class KYAPPLICATION_EXPORT Ky2DItemLink {
public:
    Ky2DItemLink(const Ky2DItemLink&) = delete;
    Ky2DItemLink& operator=(const Ky2DItemLink&) = delete;
    /// The node loses its item.
    virtual ~Ky2DItemLink();

    /// The node that drives the item; null when the node is gone.
    Ky2DNode* getNode() const { return mNode; }

protected:
    Ky2DItemLink() = default;

private:
    friend class Ky2DNode;

    Ky2DNode* mNode = nullptr;
};

/// The Qt item of a node: a Qt item class with the way back to the node. A shape of its own makes it in all its
/// constructors, the copying one too, and overrides clone() with it; the node owns the item from then on.
///
/// ```
/// KyStar::KyStar() {
///     createItem<QGraphicsPolygonItem>();
/// }
/// KyStar::KyStar(const KyStar& other)
///     : Ky2DNode(other), mNbCorners(other.mNbCorners) {
///     createItem<QGraphicsPolygonItem>();
/// }
/// KyStar* KyStar::clone() const {
///     return new KyStar(*this);
/// }
/// void KyStar::updateQGraphicsItemGeometry() {
///     if (auto* item = editItem<QGraphicsPolygonItem>())
///         item->setPolygon(getCorners());
/// }
/// ```
template <class Base>
class Ky2DItem final : public Base, public Ky2DItemLink {
public:
    /// Hands the arguments to the Qt item's constructor.
    template <class... Arguments>
    explicit Ky2DItem(Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...) {}
};
