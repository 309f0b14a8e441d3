// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DGroup.h"

#include "Ky2DEmptyItem_p.h"
#include "Ky2DScene.h"

#include "KyTypeBuilder.h"

#include <algorithm>
#include <cmath>
#include <utility>

const KyType* Ky2DGroup::msType = nullptr;

namespace {

bool isFinite(const KyRectd& rect) {
    return rect.origin.isFinite() && std::isfinite(rect.width) && std::isfinite(rect.height);
}

} // namespace

void Ky2DGroup::initializeType() {
    if (!msType)
        msType = KyTypeBuilder<Ky2DGroup>("Ky2DGroup", Ky2DNode::getType()).factory().build();
}

void Ky2DGroup::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DGroup::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DGroup::getObjectType() const {
    return getType();
}

Ky2DGroup* Ky2DGroup::cast(KyObject* object) {
    return kyCast<Ky2DGroup>(object);
}

KyObject* Ky2DGroup::factory() {
    return new Ky2DGroup;
}

Ky2DGroup::Ky2DGroup() {
    createItem<Ky2DEmptyItem>();
}

Ky2DGroup::Ky2DGroup(const Ky2DGroup& other)
    : Ky2DNode(other) {
    createItem<Ky2DEmptyItem>();
    copyChildren(other);
}

Ky2DGroup::~Ky2DGroup() {
    // From now on nobody can insert.
    notifyEnd();
    Ky2DGroup::removeAllChildren();
}

Ky2DGroup* Ky2DGroup::clone() const {
    return new Ky2DGroup(*this);
}

void Ky2DGroup::copyChildren(const Ky2DGroup& other) {
    const Watch watch(&other);
    for (std::size_t i = 0; watch.isAlive() && i < other.mChildren.size(); ++i) {
        Ky2DNode* copy = other.mChildren[i]->clone();
        if (copy && !Ky2DGroup::insertChild(copy, cAppend))
            copy->destroy();
    }
}

void Ky2DGroup::setScene(Ky2DScene* scene) {
    const Watch watch(this);
    Ky2DNode::setScene(scene);
    for (std::size_t i = 0; watch.isAlive() && i < mChildren.size(); ++i)
        mChildren[i]->setScene(mScene);
}

void Ky2DGroup::removeAllChildren() {
    const Watch watch(this);
    // Those who are told may insert again: that stays.
    for (std::size_t left = mChildren.size(); left > 0 && watch.isAlive() && !mChildren.empty(); --left) {
        const std::size_t last = mChildren.size() - 1;
        letGo(takeOut(last), last, true);
    }
    // Once for all: each one alone would look at those that are left.
    if (watch.isAlive() && mHeight > 0)
        lowerHeight(mHeight - 1);
}

Ky2DNode* Ky2DGroup::editChild(unsigned index) {
    return index < mChildren.size() ? mChildren[index] : nullptr;
}

const Ky2DNode* Ky2DGroup::getChild(unsigned index) const {
    return index < mChildren.size() ? mChildren[index] : nullptr;
}

const Ky2DNode* Ky2DGroup::getChildByName(const std::string& name) const {
    const auto found =
        std::ranges::find_if(mChildren, [&name](const Ky2DNode* child) { return child->getName() == name; });
    return found == mChildren.end() ? nullptr : *found;
}

Ky2DNode* Ky2DGroup::editChildByName(const std::string& name) {
    return const_cast<Ky2DNode*>(getChildByName(name));
}

bool Ky2DGroup::mayTake(const Ky2DNode* child) const {
    if (!child || child->isEnding() || isEnding() || child->getScene() == child)
        return false;
    if (mScene && mScene->isEnding())
        return false;
    unsigned depth = 0;
    for (const Ky2DNode* above = this; above; above = above->mParent, ++depth)
        if (above == child)
            return false;
    return depth + child->mHeight <= cMaxDepth;
}

bool Ky2DGroup::takeFromParent(Ky2DNode* child) const {
    if (!child->mParent)
        return true;
    const Watch watch(this), watchedChild(child);
    child->mParent->removeChild(child, false);
    // Those who were told of it may have moved or ended either.
    return watch.isAlive() && watchedChild.isAlive() && !child->mParent && mayTake(child);
}

bool Ky2DGroup::insertChild(Ky2DNode* child, unsigned index) {
    if (!mayTake(child) || !takeFromParent(child))
        return false;
    if (index != cAppend && index >= mChildren.size())
        return false;
    place(child, std::min<std::size_t>(index, mChildren.size()));
    return true;
}

void Ky2DGroup::place(Ky2DNode* child, std::size_t position) {
    mChildren.insert(mChildren.begin() + static_cast<std::ptrdiff_t>(position), child);
    renumber(position);
    const Watch watch(this), watchedChild(child);
    child->internalSetParent(this);
    const auto isHere = [&] { return watch.isAlive() && watchedChild.isAlive() && child->mParent == this; };
    if (isHere()) {
        raiseHeight(child);
        if (child->mItem)
            attachItem(child->mItem);
    }
    if (isHere())
        stack(child);
    if (watch.isAlive())
        tellChildren(eElementInserted, position);
}

void Ky2DGroup::attachItem(QGraphicsItem*) {}

void Ky2DGroup::stack(const Ky2DNode* child) const {
    QGraphicsItem* item = child->mItem;
    if (!item || (!item->parentItem() && !item->scene()))
        return;
    const auto isSibling = [item](const Ky2DNode* node) {
        const QGraphicsItem* other = node->mItem;
        return other && other != item && other->parentItem() == item->parentItem() && other->scene() == item->scene();
    };
    const auto next = std::find_if(mChildren.begin() + child->getIndex() + 1, mChildren.end(), isSibling);
    if (next != mChildren.end())
        item->stackBefore((*next)->mItem);
}

bool Ky2DGroup::setChild(unsigned index, Ky2DNode* child) {
    Ky2DNode* former = editChild(index);
    if (!former || !mayTake(child))
        return false;
    if (former == child)
        return true;
    // Out of its parent first: it may lie below the one that ends, or before it.
    const Watch watch(this), watchedChild(child), watchedFormer(former);
    if (!takeFromParent(child))
        return false;
    std::size_t position = index;
    if (watchedFormer.isAlive() && former->mParent == this) {
        position = static_cast<std::size_t>(former->getIndex());
        removeChild(former, true);
    }
    if (!watch.isAlive() || !watchedChild.isAlive() || child->mParent || !mayTake(child))
        return false;
    place(child, std::min(position, mChildren.size()));
    return true;
}

Ky2DNode* Ky2DGroup::removeChildByIndex(unsigned index, bool destroy) {
    if (index >= mChildren.size())
        return nullptr;
    Ky2DNode* child = takeOut(index);
    lowerHeight(child->mHeight);
    return letGo(child, index, destroy);
}

Ky2DNode* Ky2DGroup::takeOut(std::size_t index) {
    Ky2DNode* child = mChildren[index];
    mChildren.erase(mChildren.begin() + static_cast<std::ptrdiff_t>(index));
    renumber(index);
    return child;
}

Ky2DNode* Ky2DGroup::letGo(Ky2DNode* child, std::size_t formerIndex, bool destroy) {
    const Watch watch(this), watchedChild(child);
    child->internalSetParent(nullptr);
    if (watch.isAlive())
        tellChildren(eElementRemoved, formerIndex);
    // Ended or taken elsewhere by those who were told.
    if (!watchedChild.isAlive() || child->mParent)
        return nullptr;
    if (!destroy)
        return child;
    child->destroy();
    return nullptr;
}

void Ky2DGroup::renumber(std::size_t from) {
    for (std::size_t i = from; i < mChildren.size(); ++i)
        mChildren[i]->setIndex(static_cast<std::int32_t>(i));
}

void Ky2DGroup::raiseHeight(const Ky2DNode* child) {
    const Ky2DNode* below = child;
    for (Ky2DNode* node = this; node && node->mHeight <= below->mHeight; below = node, node = node->mParent)
        node->mHeight = below->mHeight + 1;
}

void Ky2DGroup::lowerHeight(unsigned heightOfRemoved) {
    unsigned former = heightOfRemoved;
    for (Ky2DNode* node = this; node && former + 1 == node->mHeight; node = node->mParent) {
        unsigned height = 0;
        // The first child of the old height tells that nothing changes, here and above.
        for (unsigned i = 0; i < node->getNbChildren() && height < node->mHeight; ++i)
            height = std::max(height, node->editChild(i)->mHeight + 1);
        if (height == node->mHeight)
            return;
        former = std::exchange(node->mHeight, height);
    }
}

void Ky2DGroup::tellChildren(KyObjectModificationType kind, std::size_t index) {
    if (isWatched() && !isEnding())
        notifyModified(kind, "Children", static_cast<int>(index));
}

KyRectd Ky2DGroup::getBound() const {
    const Watch watch(this);
    applyModification();
    KyRectd bound;
    for (std::size_t i = 0; watch.isAlive() && i < mChildren.size(); ++i)
        if (const KyRectd part = mChildren[i]->getBound(); isFinite(part))
            bound.merge(part);
    return bound;
}

KyRectd Ky2DGroup::getLocalBound() const {
    KyRectd bound = getBound();
    if (!bound.isNull())
        bound.setOrigin(KyVec2d());
    return bound;
}
