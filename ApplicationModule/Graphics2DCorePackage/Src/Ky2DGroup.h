// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DNode.h"

#include <vector>

/// A node with children, which it owns and which move, hide and end with it. Its item shows nothing itself. Listeners
/// of "Children" are told of every child that enters or leaves.
///
/// ```
/// auto* hands = Ky2DGroup::create();
/// hands->insertChild(Ky2DLine::create(), Ky2DNode::cAppend);
/// hands->rotate(6);
/// ```
class KYAPPLICATION_EXPORT Ky2DGroup : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DGroup* cast(KyObject* object);
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    static Ky2DGroup* create() { return new Ky2DGroup; }
    const KyType* getObjectType() const override;

    Ky2DGroup();
    ~Ky2DGroup() override;
    /// With copies of the children.
    Ky2DGroup* clone() const override;

    /// The children follow.
    void setScene(Ky2DScene* scene) override;
    void removeAllChildren() override;
    /// Own children, those below them not counted.
    unsigned getNbChildren() const override { return static_cast<unsigned>(mChildren.size()); }
    bool setChild(unsigned index, Ky2DNode* child) override;
    Ky2DNode* editChild(unsigned index) override;
    const Ky2DNode* getChild(unsigned index) const override;
    const Ky2DNode* getChildByName(const std::string& name) const override;
    Ky2DNode* editChildByName(const std::string& name) override;
    Ky2DNode* removeChildByIndex(unsigned index, bool destroy) override;
    bool insertChild(Ky2DNode* child, unsigned index) override;
    /// What the children cover, hidden ones too, in coordinates of the Qt scene; null when there is nothing.
    KyRectd getBound() const override;
    /// The size of getBound, at (0, 0).
    KyRectd getLocalBound() const override;

protected:
    /// For groups without an item.
    enum class Bare { eBare };
    /// Makes a group that has no item yet.
    explicit Ky2DGroup(Bare) {}
    /// Copies all but the children.
    Ky2DGroup(const Ky2DGroup& other, Bare)
        : Ky2DNode(other) {}
    Ky2DGroup(const Ky2DGroup& other);

    /// Appends clones of the other group's children.
    void copyChildren(const Ky2DGroup& other);
    /// Called for a child that has entered, before anybody is told.
    virtual void attachItem(QGraphicsItem* item);

private:
    bool mayTake(const Ky2DNode* child) const;
    bool takeFromParent(Ky2DNode* child) const;
    void place(Ky2DNode* child, std::size_t position);
    void stack(const Ky2DNode* child) const;
    void renumber(std::size_t from);
    void raiseHeight(const Ky2DNode* child);
    Ky2DNode* takeOut(std::size_t index);
    Ky2DNode* letGo(Ky2DNode* child, std::size_t formerIndex, bool destroy);
    void lowerHeight(unsigned heightOfRemoved);
    void tellChildren(KyObjectModificationType kind, std::size_t index);

    std::vector<Ky2DNode*> mChildren;

    static const KyType* msType;
};
