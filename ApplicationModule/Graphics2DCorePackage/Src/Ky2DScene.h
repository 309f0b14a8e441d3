// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DGroup.h"

#include "KyIntersected.h"
#include "KySignal.h"

#include <QGraphicsScene>
#include <QPointer>

#include <unordered_map>
#include <utility>
#include <vector>

/// The top of a tree of 2D nodes, and the Qt scene in which their items live, its own or a borrowed one. Knows the node
/// of every item, and which nodes lie under a point. It owns its children; it has no item and can be no child. Nodes,
/// items, the Qt scene and the scene may end in any order.
///
/// ```
/// Ky2DScene* scene = Ky2DScene::create(nullptr, true);
/// scene->insertChild(dial, Ky2DNode::cAppend);
/// std::vector<KyIntersected*> hits;
/// scene->pick(40, 30, hits);
/// ```
class KYAPPLICATION_EXPORT Ky2DScene : public Ky2DGroup {
public:
    /// What picking goes by.
    enum PickMode : std::int32_t {
        /// All items whose shape meets the square of side 20 about the point, topmost first.
        eArea = 0,
        /// The topmost item at the point.
        eTopmost = 1,
        eNbPickModes
    };

    static const KyType* getType();
    static Ky2DScene* cast(KyObject* object);
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    static Ky2DScene* create(QGraphicsScene* scene = nullptr, bool own = true) { return new Ky2DScene(scene, own); }
    const KyType* getObjectType() const override;

    /// With null a Qt scene is made and owned whatever `own` says.
    explicit Ky2DScene(QGraphicsScene* scene = nullptr, bool own = true);
    ~Ky2DScene() override;
    /// Has a Qt scene of its own and copies of the children.
    Ky2DScene* clone() const override;

    /// Null when the Qt scene was deleted by others, and when none was made for want of a QApplication.
    QGraphicsScene* getQGraphicsScene() const { return mGraphicsScene; }
    /// Whether the Qt scene ends with this one.
    bool ownsQGraphicsScene() const { return mOwnsGraphicsScene; }

    /// A scene is its own scene, for good.
    void setScene(Ky2DScene*) override {}
    const Ky2DScene* getScene() const override { return this; }
    Ky2DScene* editScene() override { return this; }

    /// Remembers the node of its item, instead of any other one; nodes call it. Nothing for a node without item and for
    /// one that is not of this scene: nobody would tell of its end.
    void registerNode(Ky2DNode* node);
    /// Forgets the node's item, unless it is registered for another node.
    void unregisterNode(Ky2DNode* node);
    /// The node registered for the item; null when there is none. The item is not looked at.
    Ky2DNode* getNode(const QGraphicsItem* item) const;
    /// Nodes that have an item in the scene now.
    unsigned getNbRegisteredNodes() const { return static_cast<unsigned>(mNodes.size()); }
    /// All nodes whose scene this is, copies that are in no group too.
    unsigned getNbNodes() const { return static_cast<unsigned>(mMembers.size()); }

    /// The nodes at a point, topmost first, appended as valid records that the caller owns: Ky2DIntersected gets the
    /// node. Pending modifications are applied first. Hidden items and those that show a 3D view are never found.
    void pick(double x, double y, std::vector<KyIntersected*>& results, const KyIntersectedCreator& creator = {});
    /// The same for items, as they are: KyQGraphicsItemIntersected gets the item.
    void pickQGraphicsItem(double x, double y, std::vector<KyIntersected*>& results,
                           const KyIntersectedCreator& creator = {}) const;
    /// The topmost registered node that pick finds; null when there is none.
    Ky2DNode* pickNode(double x, double y);
    /// See setPickMode.
    PickMode getPickMode() const { return mPickMode; }
    /// Values that name no mode are refused with false.
    bool setPickMode(PickMode mode);

    /// Sent once when the first node of the scene becomes modified after applyModification.
    KySignal<Ky2DScene*>& changesPendingSignal() { return mChangesPendingSignal; }
    /// True between that signal and the end of applyModification.
    bool hasPendingChanges() const { return mHasPendingChanges; }

protected:
    Ky2DScene(const Ky2DScene& other);

    void attachItem(QGraphicsItem* item) override;

private:
    friend class Ky2DNode;

    void enterMember(Ky2DNode* node);
    void leaveMember(Ky2DNode* node);
    void leaveUnindexed();
    void releaseProxies();
    void onNodeModified() {
        if (mHasPendingChanges || isEnding())
            return;
        mHasPendingChanges = true;
        mNextPending = std::exchange(msFirstPending, this);
        mChangesPendingSignal.send(this);
    }
    void forgetPending();
    static void clearPendingChanges() {
        for (; msFirstPending; msFirstPending = msFirstPending->mNextPending)
            msFirstPending->mHasPendingChanges = false;
    }

    std::unordered_map<const QGraphicsItem*, Ky2DNode*> mNodes;
    // All nodes whose scene this is, in the tree or not.
    std::vector<Ky2DNode*> mMembers;
    QPointer<QGraphicsScene> mGraphicsScene;
    bool mOwnsGraphicsScene = true;
    bool mHasPendingChanges = false;
    // Of those whose flag waits for applyModification.
    Ky2DScene* mNextPending = nullptr;
    static Ky2DScene* msFirstPending;
    PickMode mPickMode = eArea;
    KySignal<Ky2DScene*> mChangesPendingSignal{"changesPendingSignal"};

    static const KyType* msType;
};
