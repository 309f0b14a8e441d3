// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DNode.h"

#include "Ky2DScene.h"
#include "Ky2DStyle.h"

#include <algorithm>
#include <limits>
#include <utility>

Ky2DNode::Watch* Ky2DNode::Watch::msInnermost = nullptr;

void Ky2DNode::Watch::onEnded(const Ky2DNode* node) {
    for (Watch* watch = msInnermost; watch; watch = watch->mOuter)
        if (watch->mNode == node)
            watch->mNode = nullptr;
}

Ky2DItemLink::~Ky2DItemLink() {
    if (mNode)
        mNode->itemDestroyed();
}

Ky2DNode::Ky2DNode() {
    takeStyle(new Ky2DStyle);
    enterModifiedNodes();
}

Ky2DNode::Ky2DNode(const Ky2DNode& other)
    : KyObject(other)
    , mName(other.mName)
    , mLocalTransform(other.mLocalTransform)
    , mInitialTransform(other.mInitialTransform ? std::make_unique<QTransform>(*other.mInitialTransform) : nullptr)
    , mTranslation(other.mTranslation)
    , mScale(other.mScale)
    , mShear(other.mShear)
    , mRotation(other.mRotation)
    , mQtOffset(other.mQtOffset)
    , mZValue(other.mZValue)
    , mIsVisible(other.mIsVisible) {
    takeStyle(other.mStyle ? other.mStyle->clone() : nullptr);
    // The copied style may have been applied already, but to the other item.
    Ky2DNode::styleModified();
    setSceneMember(other.mScene);
    enterModifiedNodes();
}

Ky2DNode::~Ky2DNode() {
    Watch::onEnded(this);
    // Listeners are told while the node is still one.
    notifyEnd();
    if (mParent)
        mParent->removeChild(this, false);
    takeStyle(nullptr);
    Ky2DNode::setScene(nullptr);
    dropItem();
    // Last: those who were told may have marked the node again.
    leaveModifiedNodes();
}

Ky2DNode* Ky2DNode::clone() const {
    return new Ky2DNode(*this);
}

void Ky2DNode::setName(const std::string& name) {
    if (name == mName)
        return;
    mName = name;
    tell("Name");
}

void Ky2DNode::tell(std::string_view attribute) {
    if (isWatched())
        notifyModified(attribute);
}

void Ky2DNode::internalSetParent(Ky2DNode* parent) {
    if (parent == mParent)
        return;
    mParent = parent;
    if (!parent)
        setIndex(-1);
    const Watch watch(this);
    Ky2DScene* scene = parent ? parent->editScene() : nullptr;
    if (scene != mScene)
        setScene(scene);
    else if (scene)
        enterSceneAgain();
    if (watch.isAlive() && mParent == parent)
        attachToItem(parent ? parent->mItem : nullptr);
}

void Ky2DNode::attachToItem(QGraphicsItem* parentItem) {
    if (!mItem || mItem->parentItem() == parentItem)
        return;
    // A proxy's item can be any, one above too.
    const bool isAbove = parentItem && !mOwnsItem && (mItem == parentItem || mItem->isAncestorOf(parentItem));
    if (!isAbove && leaveForeignQtScene(parentItem))
        mItem->setParentItem(parentItem);
}

bool Ky2DNode::leaveForeignQtScene(const QGraphicsItem* parentItem) {
    if (!parentItem || !mItem->scene() || mItem->scene() == parentItem->scene())
        return true;
    // Qt crashes when an item is put below one of another Qt scene.
    const Watch watch(this);
    mItem->scene()->removeItem(mItem);
    return watch.isAlive() && mItem && mParent && mParent->mItem == parentItem;
}

void Ky2DNode::setParent(Ky2DNode* parent) {
    if (parent == mParent)
        return;
    const Watch watch(this), watchedParent(parent);
    if (mParent)
        mParent->removeChild(this, false);
    // Those who were told of it may have moved or ended either.
    if (watchedParent.isAlive() && watch.isAlive() && !mParent)
        parent->insertChild(this, cAppend);
}

void Ky2DNode::setScene(Ky2DScene* scene) {
    if (scene == mScene || (scene && (isEnding() || scene->isEnding())))
        return;
    const Watch watch(this);
    Ky2DScene* former = mScene;
    if (former)
        former->unregisterNode(this);
    setSceneMember(scene);
    // From here on others may have been told.
    if (former && mItem && mItem->scene())
        mItem->scene()->removeItem(mItem);
    if (scene && watch.isAlive() && mScene == scene)
        enterSceneAgain();
}

void Ky2DNode::enterSceneAgain() {
    mScene->registerNode(this);
    if (isModified())
        mScene->onNodeModified();
}

void Ky2DNode::setSceneMember(Ky2DScene* scene) {
    if (mScene)
        mScene->leaveMember(this);
    mScene = scene;
    if (scene)
        scene->enterMember(this);
}

Ky2DNode* Ky2DNode::removeChild(Ky2DNode* child, bool destroy) {
    if (!child || child->mParent != this)
        return nullptr;
    return removeChildByIndex(static_cast<unsigned>(child->mIndex), destroy);
}

bool Ky2DNode::setChild(unsigned, Ky2DNode*) {
    return false;
}

Ky2DNode* Ky2DNode::editChild(unsigned) {
    return nullptr;
}

const Ky2DNode* Ky2DNode::getChild(unsigned) const {
    return nullptr;
}

const Ky2DNode* Ky2DNode::getChildByName(const std::string&) const {
    return nullptr;
}

Ky2DNode* Ky2DNode::editChildByName(const std::string&) {
    return nullptr;
}

Ky2DNode* Ky2DNode::removeChildByIndex(unsigned, bool) {
    return nullptr;
}

bool Ky2DNode::insertChild(Ky2DNode*, unsigned) {
    return false;
}

Ky2DNode* Ky2DNode::find(std::string_view name) {
    if (getName() == name)
        return this;
    for (unsigned i = 0; i < getNbChildren(); ++i)
        if (Ky2DNode* found = editChild(i)->find(name))
            return found;
    return nullptr;
}

void Ky2DNode::getOffsetZValue(int& z) const {
    std::int64_t sum = z;
    for (const Ky2DNode* node = this; node->mParent; node = node->mParent)
        sum += node->mZValue;
    using Limits = std::numeric_limits<int>;
    z = static_cast<int>(std::clamp<std::int64_t>(sum, Limits::min(), Limits::max()));
}

bool Ky2DNode::isVisible() const {
    const Ky2DNode* node = this;
    while (node && node->mIsVisible)
        node = node->mParent;
    return !node;
}

void Ky2DNode::setVisible(bool isVisible) {
    if (isVisible != mIsVisible)
        setPosition(mIsVisible, isVisible, "Enabled");
}

void Ky2DNode::setQtOffset(const KyVec2d& offset) {
    mQtOffset = offset;
    if (geometryModified())
        positionModified();
}

void Ky2DNode::takeStyle(Ky2DStyle* style) {
    Ky2DStyle* former = std::exchange(mStyle, style);
    if (style)
        style->setOwner(this);
    if (!former)
        return;
    former->setOwner(nullptr);
    former->destroy();
}

void Ky2DNode::setStyle(Ky2DStyle* style) {
    if (style == mStyle || isEnding() || (style && style->isEnding()))
        return;
    const Watch watch(this);
    takeStyle(style && style->getOwner() ? style->clone() : style);
    if (!watch.isAlive())
        return;
    if (mStyle) {
        // A new style is modified without having told a node.
        if (!nodeModified(this) || !styleModified())
            return;
    }
    tell("Style");
}

Ky2DStyle* Ky2DNode::editStyle() {
    return styleModified() ? mStyle : nullptr;
}

bool Ky2DNode::styleModified() {
    if (!mStyle)
        return true;
    const Watch watch(this);
    mStyle->modified(true);
    return watch.isAlive();
}

bool Ky2DNode::isStyleModified() const {
    return mStyle && mStyle->isModified();
}

bool Ky2DNode::isModified() const {
    return mIsPositionModified || mIsGeometryModified || (mStyle && mStyle->isModified());
}

void Ky2DNode::setItem(QGraphicsItem* item, Ky2DItemLink* link, bool ownsItem) {
    dropItem();
    mItem = item;
    mLink = link;
    mOwnsItem = ownsItem;
    link->mNode = this;
}

void Ky2DNode::dropItem() {
    if (!mLink)
        return;
    Ky2DItemLink* link = mLink;
    itemDestroyed();
    link->mNode = nullptr;
    delete link;
}

void Ky2DNode::itemDestroyed() {
    if (mScene)
        mScene->unregisterNode(this);
    mItem = nullptr;
    mLink = nullptr;
}
