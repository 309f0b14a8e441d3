// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DNode.h"

#include "Ky2DUtil.h"
#include "Ky2DScene.h"
#include "Ky2DStyle.h"

#include <utility>

std::vector<Ky2DNode*>* Ky2DNode::msModifiedNodes = nullptr;

/// The walk over the list of modified nodes; calls from inside updates share its place.
class Ky2DNode::Walk {
public:
    Walk() { ++msDepth; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    /// The outermost one leaves in the list what was not reached, when an update threw, and what modified itself.
    ~Walk() {
        if (--msDepth > 0)
            return;
        if (hasNext() || (msAgain && !msAgain->empty()))
            keepRest(*msModifiedNodes);
        else
            msModifiedNodes->clear();
        msNext = 0;
        Ky2DScene::clearPendingChanges();
    }

    static bool isOver() { return msDepth == 0; }
    static bool hasNext() { return msNext < msModifiedNodes->size(); }

    static void updateNext() {
        const Place place;
        if (Ky2DNode* node = place.edit())
            node->update();
    }

    static constexpr std::int32_t cFirstAgain = -2;

    static void forgetAgain(std::int32_t slot) { (*msAgain)[static_cast<std::size_t>(cFirstAgain - slot)] = nullptr; }

private:
    static void keepRest(std::vector<Ky2DNode*>& nodes) {
        nodes.erase(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(msNext));
        if (msAgain) {
            nodes.insert(nodes.end(), msAgain->begin(), msAgain->end());
            msAgain->clear();
        }
        for (std::size_t i = 0; i < nodes.size(); ++i)
            if (nodes[i])
                nodes[i]->mModifiedSlot = static_cast<std::int32_t>(i);
    }

    static std::int32_t enterAgain(Ky2DNode* node) {
        if (!msAgain)
            msAgain = new std::vector<Ky2DNode*>;
        msAgain->push_back(node);
        return cFirstAgain - static_cast<std::int32_t>(msAgain->size() - 1);
    }

    /// The node under update keeps its place, which it leaves when it ends. What the update modifies of it, or leaves
    /// undone, waits for the next time: else it would never end.
    class Place {
    public:
        Place()
            : mSlot(msNext++) {}
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() {
            if (Ky2DNode* node = std::exchange(edit(), nullptr))
                node->mModifiedSlot = node->isModified() ? enterAgain(node) : -1;
        }
        Ky2DNode*& edit() const { return (*msModifiedNodes)[mSlot]; }

    private:
        std::size_t mSlot;
    };

    static int msDepth;
    static std::size_t msNext;
    // Made on first use and never destroyed: nodes may end after the statics.
    static std::vector<Ky2DNode*>* msAgain;
};

int Ky2DNode::Walk::msDepth = 0;
std::size_t Ky2DNode::Walk::msNext = 0;
std::vector<Ky2DNode*>* Ky2DNode::Walk::msAgain = nullptr;

void Ky2DNode::makeModifiedNodes() {
    // Never destroyed: nodes may end after the statics.
    msModifiedNodes = new std::vector<Ky2DNode*>;
}

void Ky2DNode::leaveModifiedNodes() {
    if (mModifiedSlot >= 0)
        (*msModifiedNodes)[static_cast<std::size_t>(mModifiedSlot)] = nullptr;
    else if (mModifiedSlot != -1)
        Walk::forgetAgain(mModifiedSlot);
    mModifiedSlot = -1;
}

bool Ky2DNode::nodeModified(Ky2DNode* node) {
    if (node->mModifiedSlot != -1)
        return true;
    node->enterModifiedNodes();
    if (!node->mScene || node->mScene->hasPendingChanges())
        return true;
    const Watch watch(node);
    node->mScene->onNodeModified();
    return watch.isAlive();
}

void Ky2DNode::tellOfModifiedNodes() {
    // Those who are told may apply at once, which may leave the same nodes again.
    static bool isTelling = false;
    if (std::exchange(isTelling, true))
        return;
    for (std::size_t i = 0; i < msModifiedNodes->size(); ++i)
        if (const Ky2DNode* node = (*msModifiedNodes)[i]; node && node->mScene)
            node->mScene->onNodeModified();
    isTelling = false;
}

void Ky2DNode::applyModification() {
    if (!msModifiedNodes || msModifiedNodes->empty() || !Ky2DUtil::hasApplication())
        return;
    {
        const Walk walk;
        while (Walk::hasNext())
            Walk::updateNext();
    }
    if (Walk::isOver() && !msModifiedNodes->empty())
        tellOfModifiedNodes();
}

void Ky2DNode::update() {
    const Watch watch(this);
    if (mIsPositionModified) {
        composeTransform();
        updateQGraphicsItemPosition();
        if (!watch.isAlive())
            return;
        mIsPositionModified = false;
    }
    if (mStyle && mStyle->isModified()) {
        updateQGraphicsItemStyle();
        if (!watch.isAlive())
            return;
        if (mStyle)
            mStyle->modified(false);
    }
    if (mIsGeometryModified) {
        updateQGraphicsItemGeometry();
        if (watch.isAlive())
            mIsGeometryModified = false;
    }
}
