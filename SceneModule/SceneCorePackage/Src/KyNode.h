// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyMat4.h"
#include "KyObject.h"
#include "KyQuat.h"
#include "KyReferenceCounted.h"
#include "KyVec3.h"
#include "KyVolume.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct KyNodeHit;
struct KySurfaceHit;
template <class T>
class KyRay;

/// A place in a scene: a frame relative to its parent's, and children that move with it. Reference counted; a node
/// holds a reference of each child. Every change is told to listeners under the attribute's name, and counted in the
/// revisions of the node and all above it, so that a view sees at the top whether anything changed below.
///
/// ```
/// KyHolder<KyNode> arm(new KyNode);
/// arm->addChild(hand);
/// arm->setPosition(KyVec3d(0, 1, 0));
/// ```
class KYSCENE_EXPORT KyNode : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyNode* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// How many levels a tree of nodes has at most below its top: what walks down a tree relies on it.
    static constexpr unsigned cMaxDepth = 1000;

    KyNode() = default;
    /// The children lose their parent and one reference each.
    ~KyNode() override;
    KyNode(const KyNode&) = delete;
    KyNode& operator=(const KyNode&) = delete;
    /// A node of the same class with copies of the children, without parent.
    KyNode* clone() const override;

    const std::string& getName() const override { return mName; }
    void setName(const std::string& name) override;
    bool hasNameAttribute() const override { return true; }
    /// Its own switch; a node is drawn when all above it are visible too.
    bool isVisible() const { return mIsVisible; }
    void setVisible(bool isVisible);

    /// Null at the top.
    KyNode* getParent() const { return mParent; }
    /// The topmost node above, this one when it has no parent.
    KyNode* getRoot();
    /// Own children, those below them not counted.
    unsigned getNbChildren() const { return static_cast<unsigned>(mChildren.size()); }
    /// Null when out of range.
    KyNode* getChild(unsigned index) const;
    /// The first node of that name, this one or below; null when there is none.
    KyNode* find(std::string_view name);

    /// Appends; the child leaves its former parent. False, and nothing changed, for null, this node and those above it,
    /// and where the tree would become deeper than cMaxDepth.
    bool addChild(KyNode* child) { return insertChild(getNbChildren(), child); }
    /// Inserts before the index (at the end when it is larger), as addChild otherwise.
    bool insertChild(unsigned index, KyNode* child);
    /// Gives back the reference, which may end the child. False when it is no child of this node.
    bool removeChild(KyNode* child);
    /// False when out of range.
    bool removeChildAt(unsigned index);
    /// Gives back the references of all children.
    void removeAllChildren();

    /// Translation, rotation, scale against the parent. Values that are not finite are ignored.
    const KyVec3d& getPosition() const { return mPosition; }
    /// @{
    /// See getPosition.
    const KyQuatd& getOrientation() const { return mOrientation; }
    const KyVec3d& getScale() const { return mScale; }
    /// @}
    void setPosition(const KyVec3d& position);
    /// Made length 1; the null quaternion is ignored.
    void setOrientation(const KyQuatd& orientation);
    /// Factors along the own axes.
    void setScale(const KyVec3d& scale);

    /// The frame against the parent: columns right, up, back, position.
    const KyMat4d& getLocalFrame() const { return mLocalFrame; }
    /// Position, orientation and scale follow; a shear is kept in the frame until one of them is set.
    void setLocalFrame(const KyMat4d& frame);
    /// The frame against the world: those of all above multiplied.
    const KyMat4d& getWorldFrame() const;
    /// Sets the local frame that gives this world frame under the present parent; ignored when that is singular.
    void setWorldFrame(const KyMat4d& frame);
    /// @{
    /// Of the origin of the node's frame.
    KyVec3d getWorldPosition() const { return getWorldFrame().translation(); }
    void setWorldPosition(const KyVec3d& position);
    /// @}

    /// Adds to the position, in the parent's coordinates.
    void translate(const KyVec3d& offset) { setPosition(mPosition + offset); }
    /// Turns about an axis of its own frame; radians, right-handed.
    void rotate(const KyVec3d& axis, double angle);
    /// Stands at `eye` and looks along -z at `centre`, with `up` upwards; world coordinates.
    void lookAt(const KyVec3d& eye, const KyVec3d& centre, const KyVec3d& up = KyVec3d(0, 1, 0));

    /// What this node and all visible ones below show, in world coordinates; null when nothing.
    KyVolumed getBoundingVolume() const;
    /// The nearest visible surface that a world ray meets, nearer than `hit.distance`.
    bool intersect(const KyRay<double>& ray, KyNodeHit& hit);

    /// A number that is another one after every change here or below. Numbers are never used twice.
    std::uint64_t getRevision() const { return mRevision; }

    /// Own geometry in the node's coordinates; null for a plain node.
    virtual KyVolumed getOwnVolume() const;

protected:
    /// Counts the change and tells the listeners.
    void markModified(std::string_view attribute);
    /// Counts a change, here and above, without telling the listeners.
    void touch();
    /// As intersect, for the own geometry, in the node's coordinates.
    virtual bool intersectOwn(const KyRay<double>& ray, KySurfaceHit& hit) const;

private:
    void composeLocalFrame();
    void frameModified(std::string_view attribute);
    void tellFrame();
    void invalidateWorldFrame();
    bool isBelow(const KyNode* node) const;
    bool mayTake(const KyNode* child) const;
    void raiseHeight();
    void lowerHeight();
    void detach(std::size_t index);
    void intersectHere(const KyRay<double>& ray, KyNodeHit& hit);

    std::string mName;
    bool mIsVisible = true;
    mutable bool mIsWorldFrameValid = false;
    KyNode* mParent = nullptr;
    std::vector<KyNode*> mChildren;
    // Levels below this node.
    unsigned mHeight = 0;
    KyVec3d mPosition;
    KyQuatd mOrientation;
    KyVec3d mScale{1.0, 1.0, 1.0};
    KyMat4d mLocalFrame;
    mutable KyMat4d mWorldFrame;
    std::uint64_t mRevision = 0;

    static const KyType* msType;
};
