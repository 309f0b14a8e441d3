// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNode.h"

#include "KyHolder.h"
#include "KyNodeHit.h"

#include "KyRay.h"
#include "KyType.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

// Revisions handed out begin with 1: 0 is older than all.
std::uint64_t gLastRevision = 0;

bool isFinite(const KyMat4d& matrix) {
    return std::all_of(matrix.data(), matrix.data() + 16, [](double number) { return std::isfinite(number); });
}

/// Whether the ray passes the volume no farther than `distance`.
bool mayHit(const KyRayd& ray, const KyVolumed& volume, double distance) {
    const KyVec3d low = volume.getMin(), high = volume.getMax();
    double nearest = 0.0, farthest = distance;
    for (int i = 0; i < 3; ++i) {
        if (ray.direction[i] == 0.0) {
            if (ray.origin[i] < low[i] || ray.origin[i] > high[i])
                return false;
            continue;
        }
        const double a = (low[i] - ray.origin[i]) / ray.direction[i];
        const double b = (high[i] - ray.origin[i]) / ray.direction[i];
        nearest = std::max(nearest, std::min(a, b));
        farthest = std::min(farthest, std::max(a, b));
    }
    return nearest <= farthest * (1.0 + 1e-12);
}

} // namespace

KyNode::~KyNode() {
    // Listeners are told while the node is still one.
    notifyEnd();
    if (mParent) {
        auto& siblings = mParent->mChildren;
        const auto found = std::ranges::find(siblings, this);
        const auto index = static_cast<int>(found - siblings.begin());
        siblings.erase(found);
        mParent->lowerHeight();
        mParent->touch();
        mParent->notifyModified(eElementRemoved, "Children", index);
    }
    for (KyNode* child : std::exchange(mChildren, {})) {
        child->mParent = nullptr;
        child->invalidateWorldFrame();
        child->removeReference();
    }
}

KyNode* KyNode::clone() const {
    auto* copy = static_cast<KyNode*>(KyObject::clone());
    if (!copy)
        return nullptr;
    copy->setLocalFrame(mLocalFrame);
    for (const KyNode* child : mChildren)
        copy->addChild(child->clone());
    return copy;
}

void KyNode::setName(const std::string& name) {
    if (name == mName)
        return;
    mName = name;
    notifyModified("Name");
}

void KyNode::setVisible(bool isVisible) {
    if (isVisible == mIsVisible)
        return;
    mIsVisible = isVisible;
    markModified("Visible");
}

KyNode* KyNode::getRoot() {
    KyNode* root = this;
    while (root->mParent)
        root = root->mParent;
    return root;
}

KyNode* KyNode::getChild(unsigned index) const {
    return index < mChildren.size() ? mChildren[index] : nullptr;
}

KyNode* KyNode::find(std::string_view name) {
    if (mName == name)
        return this;
    for (KyNode* child : mChildren)
        if (KyNode* found = child->find(name))
            return found;
    return nullptr;
}

bool KyNode::isBelow(const KyNode* node) const {
    for (const KyNode* above = this; above; above = above->mParent)
        if (above == node)
            return true;
    return false;
}

bool KyNode::mayTake(const KyNode* child) const {
    if (child->isEnding() || isBelow(child))
        return false;
    unsigned depth = 0;
    for (const KyNode* above = mParent; above; above = above->mParent)
        ++depth;
    return depth + 1 + child->mHeight <= cMaxDepth;
}

void KyNode::raiseHeight() {
    for (KyNode* node = this; node->mParent && node->mParent->mHeight <= node->mHeight; node = node->mParent)
        node->mParent->mHeight = node->mHeight + 1;
}

void KyNode::lowerHeight() {
    for (KyNode* node = this; node; node = node->mParent) {
        unsigned height = 0;
        // The first child of the old height tells that nothing changes, here and above.
        for (auto child = node->mChildren.begin(); child != node->mChildren.end() && height < node->mHeight; ++child)
            height = std::max(height, (*child)->mHeight + 1);
        if (height == node->mHeight)
            return;
        node->mHeight = height;
    }
}

bool KyNode::insertChild(unsigned index, KyNode* child) {
    if (!child || !mayTake(child))
        return false;
    const KyHolder<KyNode> keep(child->mParent ? child : nullptr);
    if (child->mParent) {
        child->mParent->removeChild(child);
        // Those who were told of it may have moved either.
        if (child->mParent || !mayTake(child))
            return false;
    }
    child->addReference();
    const std::size_t position = std::min<std::size_t>(index, mChildren.size());
    mChildren.insert(mChildren.begin() + static_cast<std::ptrdiff_t>(position), child);
    child->mParent = this;
    child->raiseHeight();
    child->invalidateWorldFrame();
    touch();
    notifyModified(eElementInserted, "Children", static_cast<int>(position));
    return true;
}

bool KyNode::removeChild(KyNode* child) {
    const auto found = std::ranges::find(mChildren, child);
    if (found == mChildren.end())
        return false;
    detach(static_cast<std::size_t>(found - mChildren.begin()));
    return true;
}

bool KyNode::removeChildAt(unsigned index) {
    if (index >= mChildren.size())
        return false;
    detach(index);
    return true;
}

void KyNode::removeAllChildren() {
    while (!mChildren.empty())
        detach(mChildren.size() - 1);
}

void KyNode::detach(std::size_t index) {
    KyNode* child = mChildren[index];
    mChildren.erase(mChildren.begin() + static_cast<std::ptrdiff_t>(index));
    child->mParent = nullptr;
    lowerHeight();
    child->invalidateWorldFrame();
    touch();
    notifyModified(eElementRemoved, "Children", static_cast<int>(index));
    child->removeReference();
}

void KyNode::setPosition(const KyVec3d& position) {
    if (position == mPosition || !position.isFinite())
        return;
    mPosition = position;
    mLocalFrame.setColumn(3, position);
    frameModified("Position");
}

void KyNode::setOrientation(const KyQuatd& orientation) {
    KyQuatd unit = orientation;
    if (orientation == mOrientation || !unit.normalize())
        return;
    mOrientation = unit;
    composeLocalFrame();
    frameModified("Orientation");
}

void KyNode::setScale(const KyVec3d& scale) {
    if (scale == mScale || !scale.isFinite())
        return;
    mScale = scale;
    composeLocalFrame();
    frameModified("Scale");
}

void KyNode::setLocalFrame(const KyMat4d& frame) {
    if (frame == mLocalFrame || !isFinite(frame))
        return;
    mLocalFrame = frame;
    frame.decompose(mPosition, mOrientation, mScale);
    invalidateWorldFrame();
    touch();
    tellFrame();
}

/// All three, whether they are other ones now or not: comparing costs what telling costs. Who only refers to the node
/// is not told.
void KyNode::tellFrame() {
    if (!isWatched() || modifiedSignal().getNbConnections() == 0)
        return;
    const KyObjectReference self(this);
    for (const char* attribute : {"Position", "Orientation", "Scale"})
        if (self)
            notifyModified(attribute);
}

const KyMat4d& KyNode::getWorldFrame() const {
    if (!mIsWorldFrameValid) {
        mWorldFrame = mParent ? mParent->getWorldFrame() * mLocalFrame : mLocalFrame;
        mIsWorldFrameValid = true;
    }
    return mWorldFrame;
}

void KyNode::setWorldFrame(const KyMat4d& frame) {
    if (!mParent)
        return setLocalFrame(frame);
    KyMat4d toParent = mParent->getWorldFrame();
    if (toParent.invert())
        setLocalFrame(toParent * frame);
}

void KyNode::setWorldPosition(const KyVec3d& position) {
    KyMat4d toParent = mParent ? mParent->getWorldFrame() : KyMat4d();
    if (toParent.invert())
        setPosition(toParent.transformPoint(position));
}

void KyNode::rotate(const KyVec3d& axis, double angle) {
    if (std::isfinite(angle))
        setOrientation(mOrientation * KyQuatd(axis, angle));
}

void KyNode::lookAt(const KyVec3d& eye, const KyVec3d& centre, const KyVec3d& up) {
    if (!eye.isFinite() || !centre.isFinite() || !up.isFinite())
        return;
    setWorldFrame(KyMat4d::lookAt(eye, centre, up));
}

void KyNode::composeLocalFrame() {
    mLocalFrame = KyMat4d(mOrientation, mPosition) * KyMat4d::fromScale(mScale);
}

void KyNode::frameModified(std::string_view attribute) {
    invalidateWorldFrame();
    markModified(attribute);
}

void KyNode::invalidateWorldFrame() {
    // Below a frame that is not valid none is.
    if (!mIsWorldFrameValid)
        return;
    mIsWorldFrameValid = false;
    for (KyNode* child : mChildren)
        child->invalidateWorldFrame();
}

void KyNode::markModified(std::string_view attribute) {
    touch();
    notifyModified(attribute);
}

void KyNode::touch() {
    const std::uint64_t revision = ++gLastRevision;
    for (KyNode* node = this; node; node = node->mParent)
        node->mRevision = revision;
}

KyVolumed KyNode::getOwnVolume() const {
    return KyVolumed();
}

KyVolumed KyNode::getBoundingVolume() const {
    KyVolumed volume;
    if (!mIsVisible)
        return volume;
    volume = getOwnVolume();
    if (!volume.isNull())
        volume = volume.getTransformed(getWorldFrame());
    for (const KyNode* child : mChildren)
        volume.merge(child->getBoundingVolume());
    return volume;
}

bool KyNode::intersectOwn(const KyRayd&, KySurfaceHit&) const {
    return false;
}

bool KyNode::intersect(const KyRayd& ray, KyNodeHit& hit) {
    const double limit = hit.distance;
    if (mIsVisible)
        intersectHere(ray, hit);
    return hit.distance < limit;
}

void KyNode::intersectHere(const KyRayd& ray, KyNodeHit& hit) {
    const KyVolumed volume = getOwnVolume();
    KyMat4d toLocal = getWorldFrame();
    if (!volume.isNull() && toLocal.invert()) {
        // Distances count lengths of the direction, which the transformation keeps.
        const KyRayd local(toLocal.transformPoint(ray.origin), toLocal.transformVector(ray.direction));
        KySurfaceHit found;
        found.distance = hit.distance;
        if (mayHit(local, volume, found.distance) && intersectOwn(local, found) && found.distance < hit.distance) {
            toLocal.transpose();
            static_cast<KySurfaceHit&>(hit) = found;
            hit.node = this;
            hit.point = ray.getPoint(hit.distance);
            hit.normal = toLocal.transformVector(found.normal);
            hit.normal.normalize();
        }
    }
    for (KyNode* child : mChildren)
        child->intersect(ray, hit);
}
