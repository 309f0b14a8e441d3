// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNode.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

const KyType* KyNode::msType = nullptr;

void KyNode::initializeType() {
    if (msType)
        return;
    msType =
        KyTypeBuilder<KyNode>("KyNode", KyObject::getType())
            .factory()
            .attribute("Name", &KyNode::getName, &KyNode::setName)
            .attribute("Visible", &KyNode::isVisible, &KyNode::setVisible)
            .attribute("Position", &KyNode::getPosition, [](KyNode& n, const KyVec3d& p) { n.setPosition(p); })
            .attribute("Orientation", &KyNode::getOrientation, &KyNode::setOrientation)
            .attribute("Scale", &KyNode::getScale, [](KyNode& n, const KyVec3d& s) { n.setScale(s); })
            .attribute("WorldPosition", &KyNode::getWorldPosition, &KyNode::setWorldPosition)
            .attribute("BoundingVolume", &KyNode::getBoundingVolume)
            .container("Children", &KyNode::getNbChildren, &KyNode::getChild, nullptr, &KyNode::insertChild,
                       &KyNode::removeChildAt)
            .component<&KyNode::getParent>("Parent")
            .method("addChild", &KyNode::addChild)
            .method("insertChild", &KyNode::insertChild)
            .method("removeChild", &KyNode::removeChild)
            .method("removeAllChildren", &KyNode::removeAllChildren)
            .method("getNbChildren", &KyNode::getNbChildren)
            .method("getChild", &KyNode::getChild)
            .method("getParent", &KyNode::getParent)
            .method("getRoot", &KyNode::getRoot)
            .method("find", [](KyNode& n, const std::string& name) { return n.find(name); })
            .method("clone", [](KyNode& n) { return n.clone(); })
            .method("setPosition", [](KyNode& n, double x, double y, double z) { n.setPosition(KyVec3d(x, y, z)); })
            .method("setPosition", [](KyNode& n, const KyVec3d& p) { n.setPosition(p); })
            .method("setWorldPosition",
                    [](KyNode& n, double x, double y, double z) { n.setWorldPosition(KyVec3d(x, y, z)); })
            .method("setScale", [](KyNode& n, double x, double y, double z) { n.setScale(KyVec3d(x, y, z)); })
            .method("setScale", [](KyNode& n, double s) { n.setScale(KyVec3d(s, s, s)); })
            .method("translate", [](KyNode& n, double x, double y, double z) { n.translate(KyVec3d(x, y, z)); })
            .method("rotate",
                    [](KyNode& n, double x, double y, double z, double angle) { n.rotate(KyVec3d(x, y, z), angle); })
            .method("rotate", [](KyNode& n, const KyVec3d& axis, double angle) { n.rotate(axis, angle); })
            .method("lookAt", [](KyNode& n, double ex, double ey, double ez, double cx, double cy,
                                 double cz) { n.lookAt(KyVec3d(ex, ey, ez), KyVec3d(cx, cy, cz)); })
            .method("lookAt", [](KyNode& n, double cx, double cy,
                                 double cz) { n.lookAt(n.getWorldPosition(), KyVec3d(cx, cy, cz)); })
            .method("getWorldPosition", &KyNode::getWorldPosition)
            .method("getWorldFrame", &KyNode::getWorldFrame)
            .method("getLocalFrame", &KyNode::getLocalFrame)
            .method("setWorldFrame", &KyNode::setWorldFrame)
            .method("setLocalFrame", &KyNode::setLocalFrame)
            .method("getBoundingVolume", &KyNode::getBoundingVolume)
            .build();
    KyCallSignatures::add("KyNode",
                          {"addChild(child)", "insertChild(index, child)", "removeChild(child)", "getChild(index)",
                           "find(name)", "setPosition(x, y, z)", "setWorldPosition(x, y, z)", "setScale(x, y, z)",
                           "translate(x, y, z)", "rotate(x, y, z, angle)", "rotate(axis, angle)",
                           "lookAt(eyeX, eyeY, eyeZ, centreX, centreY, centreZ)", "lookAt(centreX, centreY, centreZ)",
                           "setLocalFrame(frame)", "setWorldFrame(frame)"});
}

void KyNode::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyNode::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyNode::getObjectType() const {
    return getType();
}

KyNode* KyNode::cast(KyObject* object) {
    return kyCast<KyNode>(object);
}

KyObject* KyNode::factory() {
    return new KyNode;
}
