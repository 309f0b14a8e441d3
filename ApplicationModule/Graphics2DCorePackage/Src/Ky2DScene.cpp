// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DScene.h"

#include "Ky2DUtil.h"

#include "Ky2DIntersected.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <memory>
#include <utility>

const KyType* Ky2DScene::msType = nullptr;
Ky2DScene* Ky2DScene::msFirstPending = nullptr;

namespace {

/// Null without application: Qt would take whatever there is for one.
QGraphicsScene* makeGraphicsScene() {
    return Ky2DUtil::hasApplication() ? new QGraphicsScene : nullptr;
}

} // namespace

void Ky2DScene::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<Ky2DScene>("Ky2DScene", Ky2DGroup::getType())
                 .factory()
                 .attribute(
                     "PickMode", [](Ky2DScene& s) { return static_cast<std::int32_t>(s.getPickMode()); },
                     [](Ky2DScene& s, std::int32_t mode) { return s.setPickMode(static_cast<PickMode>(mode)); })
                 .method("getPickMode", [](Ky2DScene& s) { return static_cast<std::int32_t>(s.getPickMode()); })
                 .method("setPickMode",
                         [](Ky2DScene& s, std::int32_t mode) { return s.setPickMode(static_cast<PickMode>(mode)); })
                 .method("pickNode", &Ky2DScene::pickNode)
                 .method("hasPendingChanges", &Ky2DScene::hasPendingChanges)
                 .signal<&Ky2DScene::changesPendingSignal>("changesPendingSignal")
                 .enumeration({{"eArea", eArea}, {"eTopmost", eTopmost}})
                 .build();
    KyCallSignatures::add("Ky2DScene", {"pickNode(x, y)", "changesPendingSignal(scene)"});
}

void Ky2DScene::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DScene::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DScene::getObjectType() const {
    return getType();
}

Ky2DScene* Ky2DScene::cast(KyObject* object) {
    return kyCast<Ky2DScene>(object);
}

KyObject* Ky2DScene::factory() {
    return new Ky2DScene;
}

Ky2DScene::Ky2DScene(QGraphicsScene* scene, bool own)
    : Ky2DGroup(Bare::eBare)
    , mGraphicsScene(scene ? scene : makeGraphicsScene())
    , mOwnsGraphicsScene(own || !scene) {
    leaveUnindexed();
}

Ky2DScene::Ky2DScene(const Ky2DScene& other)
    : Ky2DGroup(other, Bare::eBare)
    , mGraphicsScene(makeGraphicsScene())
    , mPickMode(other.mPickMode) {
    leaveUnindexed();
    copyChildren(other);
}

Ky2DScene::~Ky2DScene() {
    // From now on nobody can insert.
    notifyEnd();
    forgetPending();
    releaseProxies();
    if (mOwnsGraphicsScene)
        delete mGraphicsScene.data();
    mNodes.clear();
    for (Ky2DNode* node : std::exchange(mMembers, {})) {
        node->mScene = nullptr;
        node->mSceneSlot = -1;
    }
    forgetPending();
}

/// Items move often: an index would be built anew at every look.
void Ky2DScene::leaveUnindexed() {
    if (mGraphicsScene)
        mGraphicsScene->setItemIndexMethod(QGraphicsScene::NoIndex);
}

Ky2DScene* Ky2DScene::clone() const {
    return new Ky2DScene(*this);
}

void Ky2DScene::releaseProxies() {
    const auto isForeign = [this](const Ky2DNode* node) {
        return node->mItem && !node->mOwnsItem && node->mItem->scene() == mGraphicsScene;
    };
    // Removing may tell others, who may end nodes: then the members have moved.
    for (bool isDone = !mGraphicsScene; !isDone && mGraphicsScene;) {
        isDone = true;
        for (std::size_t i = 0; mGraphicsScene && i < mMembers.size(); ++i)
            if (isForeign(mMembers[i])) {
                mGraphicsScene->removeItem(mMembers[i]->mItem);
                isDone = false;
            }
    }
}

void Ky2DScene::attachItem(QGraphicsItem* item) {
    if (mGraphicsScene && item->scene() != mGraphicsScene)
        mGraphicsScene->addItem(item);
}

void Ky2DScene::registerNode(Ky2DNode* node) {
    if (node && node->mScene == this && node->mItem)
        mNodes.insert_or_assign(node->mItem, node);
}

void Ky2DScene::unregisterNode(Ky2DNode* node) {
    // Two proxies may share an item: the entry is that of the later one.
    const auto found = node ? mNodes.find(node->getQGraphicsItem()) : mNodes.end();
    if (found != mNodes.end() && found->second == node)
        mNodes.erase(found);
}

Ky2DNode* Ky2DScene::getNode(const QGraphicsItem* item) const {
    const auto found = mNodes.find(item);
    return found == mNodes.end() ? nullptr : found->second;
}

Ky2DNode* Ky2DScene::pickNode(double x, double y) {
    std::vector<KyIntersected*> results;
    pick(x, y, results, &Ky2DIntersected::create);
    Ky2DNode* node = nullptr;
    for (KyIntersected* result : results) {
        if (!node)
            node = static_cast<Ky2DIntersected*>(result)->getElement();
        result->destroy();
    }
    return node;
}

void Ky2DScene::enterMember(Ky2DNode* node) {
    node->mSceneSlot = static_cast<std::int32_t>(mMembers.size());
    mMembers.push_back(node);
}

void Ky2DScene::leaveMember(Ky2DNode* node) {
    const auto slot = static_cast<std::size_t>(std::exchange(node->mSceneSlot, -1));
    if (mMembers[slot] != node)
        return;
    mMembers[slot] = mMembers.back();
    mMembers[slot]->mSceneSlot = static_cast<std::int32_t>(slot);
    mMembers.pop_back();
    node->mSceneSlot = -1;
}

void Ky2DScene::forgetPending() {
    Ky2DScene** link = &msFirstPending;
    while (*link && *link != this)
        link = &(*link)->mNextPending;
    if (*link)
        *link = mNextPending;
}
