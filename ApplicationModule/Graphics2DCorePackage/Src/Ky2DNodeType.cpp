// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DNode.h"

#include "Ky2DScene.h"
#include "Ky2DStyle.h"

#include "KyCallSignatures.h"
#include "KyMat4.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <array>

const KyType* Ky2DNode::msType = nullptr;

namespace {

using Builder = KyTypeBuilder<Ky2DNode>;
using VectorSetter = void (Ky2DNode::*)(const KyVec2d&);
using TransformSetter = void (Ky2DNode::*)(const QTransform&);

Ky2DStyle* getStyleOf(Ky2DNode& node) {
    return const_cast<Ky2DStyle*>(node.getStyle());
}

KyMat4d toMatrix(const QTransform& t) {
    return KyMat4d::fromRows({t.m11(), t.m21(), 0, t.dx(), t.m12(), t.m22(), 0, t.dy(), 0, 0, 1, 0, 0, 0, 0, 1});
}

QTransform toTransform(const KyMat4d& m) {
    return QTransform(m.get(0, 0), m.get(1, 0), m.get(0, 1), m.get(1, 1), m.get(0, 3), m.get(1, 3));
}

int getOffsetZValue(Ky2DNode& node) {
    int z = 0;
    node.getOffsetZValue(z);
    return z;
}

/// Scripts write -1 for appending.
bool insertChild(Ky2DNode& node, Ky2DNode* child, int index) {
    return node.insertChild(child, static_cast<unsigned>(index));
}

bool insertElement(Ky2DNode& node, unsigned index, Ky2DNode* child) {
    return node.insertChild(child, index == node.getNbChildren() ? Ky2DNode::cAppend : index);
}

bool removeElement(Ky2DNode& node, unsigned index) {
    const unsigned count = node.getNbChildren();
    node.removeChildByIndex(index, false);
    return index < count;
}

void addTransformMethods(Builder& type) {
    static constexpr std::array<std::pair<const char*, VectorSetter>, 7> cVectors{{
        {"setTranslation", &Ky2DNode::setTranslation},
        {"translate", &Ky2DNode::translate},
        {"setScale", &Ky2DNode::setScale},
        {"scale", &Ky2DNode::scale},
        {"setShear", &Ky2DNode::setShear},
        {"shear", &Ky2DNode::shear},
        {"setTransformOriginPoint", &Ky2DNode::setTransformOriginPoint},
    }};
    for (const auto& [name, set] : cVectors)
        type.method(name, [set](Ky2DNode& n, const KyVec2d& v) { (n.*set)(v); })
            .method(name, [set](Ky2DNode& n, double x, double y) { (n.*set)(KyVec2d(x, y)); });
    static constexpr std::array<std::pair<const char*, TransformSetter>, 2> cTransforms{{
        {"setLocalTransform", &Ky2DNode::setLocalTransform},
        {"setInitialTransform", &Ky2DNode::setInitialTransform},
    }};
    for (const auto& [name, set] : cTransforms)
        type.method(name, [set](Ky2DNode& n, const KyMat4d& m) { (n.*set)(toTransform(m)); })
            .method(name, [set](Ky2DNode& n, double m11, double m12, double m21, double m22, double dx, double dy) {
                (n.*set)(QTransform(m11, m12, m21, m22, dx, dy));
            });
    type.method("rotate", &Ky2DNode::rotate)
        .method("getTranslation", &Ky2DNode::getTranslation)
        .method("getScale", &Ky2DNode::getScale)
        .method("getShear", &Ky2DNode::getShear)
        .method("getRotation", &Ky2DNode::getRotation)
        .method("setRotation", &Ky2DNode::setRotation)
        .method("getTransformOriginPoint", &Ky2DNode::getTransformOriginPoint)
        .method("getLocalTransform", [](Ky2DNode& n) { return toMatrix(n.getLocalTransform()); })
        .method("getInitialTransform", [](Ky2DNode& n) { return toMatrix(n.getInitialTransform()); });
}

void addChildMethods(Builder& type) {
    type.method("getNbChildren", &Ky2DNode::getNbChildren)
        .method("getChild", &Ky2DNode::editChild)
        .method("editChild", &Ky2DNode::editChild)
        .method("setChild", &Ky2DNode::setChild)
        .method("getChildByName", &Ky2DNode::editChildByName)
        .method("editChildByName", &Ky2DNode::editChildByName)
        .method("insertChild", &insertChild)
        .method("insertChild", [](Ky2DNode& n, Ky2DNode* child) { return insertChild(n, child, -1); })
        .method("removeChildByIndex", &Ky2DNode::removeChildByIndex)
        .method("removeChild", &Ky2DNode::removeChild)
        .method("removeAllChildren", &Ky2DNode::removeAllChildren)
        .method("find", [](Ky2DNode& n, const std::string& name) { return n.find(name); })
        .method("getIndex", &Ky2DNode::getIndex)
        .method("getParent", &Ky2DNode::editParent)
        .method("setParent", &Ky2DNode::setParent)
        .method("getScene", &Ky2DNode::editScene);
}

void addStateMethods(Builder& type) {
    type.method("clone", [](Ky2DNode& n) { return n.clone(); })
        .method("isVisible", &Ky2DNode::isVisible)
        .method("isOwnVisible", &Ky2DNode::isOwnVisible)
        .method("setVisible", &Ky2DNode::setVisible)
        .method("getZValue", &Ky2DNode::getZValue)
        .method("setZValue", &Ky2DNode::setZValue)
        .method("getOffsetZValue", &getOffsetZValue)
        .method("getQtOffset", &Ky2DNode::getQtOffset)
        .method("setQtOffset", [](Ky2DNode& n, const KyVec2d& v) { n.setQtOffset(v); })
        .method("setQtOffset", [](Ky2DNode& n, double x, double y) { n.setQtOffset(KyVec2d(x, y)); })
        .method("getStyle", &getStyleOf)
        .method("editStyle", &Ky2DNode::editStyle)
        .method("setStyle", &Ky2DNode::setStyle)
        .method("getBound", &Ky2DNode::getBound)
        .method("getLocalBound", &Ky2DNode::getLocalBound)
        .method("isModified", &Ky2DNode::isModified)
        .staticMethod("applyModification", &Ky2DNode::applyModification);
}

} // namespace

void Ky2DNode::initializeType() {
    if (msType)
        return;
    Builder type("Ky2DNode", KyObject::getType());
    type.factory()
        .attribute("Name", &Ky2DNode::getName, &Ky2DNode::setName)
        .attribute("Enabled", &Ky2DNode::isVisible, &Ky2DNode::setVisible)
        .attribute("Translation", &Ky2DNode::getTranslation, [](Ky2DNode& n, const KyVec2d& v) { n.setTranslation(v); })
        .attribute("Scale", &Ky2DNode::getScale, [](Ky2DNode& n, const KyVec2d& v) { n.setScale(v); })
        .attribute("TransformOriginPoint", &Ky2DNode::getTransformOriginPoint, &Ky2DNode::setTransformOriginPoint)
        .attribute("Rotation", &Ky2DNode::getRotation, &Ky2DNode::setRotation)
        .attribute("Shear", &Ky2DNode::getShear, [](Ky2DNode& n, const KyVec2d& v) { n.setShear(v); })
        .attribute("Style", &getStyleOf, &Ky2DNode::setStyle)
        .attribute("ZValue", &Ky2DNode::getZValue, &Ky2DNode::setZValue)
        .attribute("Bound", &Ky2DNode::getBound)
        .attribute("LocalBound", &Ky2DNode::getLocalBound)
        .container("Children", &Ky2DNode::getNbChildren, &Ky2DNode::editChild, &Ky2DNode::setChild, &insertElement,
                   &removeElement)
        .component<&Ky2DNode::editParent>("Parent");
    addTransformMethods(type);
    addChildMethods(type);
    addStateMethods(type);
    msType = type.build();
    KyCallSignatures::add("Ky2DNode", {"editChild(index)",
                                       "editChildByName(name)",
                                       "find(name)",
                                       "getChild(index)",
                                       "getChildByName(name)",
                                       "insertChild(child, index?)",
                                       "removeChild(child, destroy)",
                                       "removeChildByIndex(index, destroy)",
                                       "setChild(index, child)",
                                       "rotate(degrees)",
                                       "setRotation(degrees)",
                                       "scale(factors)",
                                       "scale(x, y)",
                                       "setScale(scale)",
                                       "setScale(x, y)",
                                       "shear(offset)",
                                       "shear(x, y)",
                                       "setShear(shear)",
                                       "setShear(x, y)",
                                       "translate(offset)",
                                       "translate(x, y)",
                                       "setTranslation(translation)",
                                       "setTranslation(x, y)",
                                       "setInitialTransform(transform)",
                                       "setLocalTransform(transform)",
                                       "setInitialTransform(m11, m12, m21, m22, dx, dy)",
                                       "setLocalTransform(m11, m12, m21, m22, dx, dy)",
                                       "setQtOffset(offset)",
                                       "setQtOffset(x, y)",
                                       "setTransformOriginPoint(point)",
                                       "setTransformOriginPoint(x, y)"});
}

void Ky2DNode::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DNode::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DNode::getObjectType() const {
    return getType();
}

Ky2DNode* Ky2DNode::cast(KyObject* object) {
    return kyCast<Ky2DNode>(object);
}

KyObject* Ky2DNode::factory() {
    return new Ky2DNode;
}
