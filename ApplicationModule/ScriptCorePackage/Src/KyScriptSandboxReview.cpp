// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaClass_p.h"
#include "KyScriptEngine.h"
#include "KyScriptPublications_p.h"
#include "KyScriptSandbox_p.h"

#include "KyObject.h"
#include "KyType.h"

#include <algorithm>
#include <string_view>

namespace {

using Private = KyScriptSandbox::Private;
using Review = KyScriptReview;

struct Verdict {
    std::string_view type;
    Review review;
};

/// Open is what does nothing but change objects in memory. What reaches files, the network, the desktop, devices or the
/// graphics card as it is, or runs what no sandbox bounds, is held, or closed when nothing is left of it without.
constexpr Verdict cVerdicts[] = {
    {"Ky2DEllipse", Review::eOpen},
    {"Ky2DGroup", Review::eOpen},
    {"Ky2DImage", Review::eHeld},
    {"Ky2DIntersected", Review::eOpen},
    {"Ky2DLine", Review::eOpen},
    {"Ky2DNode", Review::eOpen},
    {"Ky2DPath", Review::eOpen},
    {"Ky2DProxy", Review::eOpen},
    {"Ky2DRect", Review::eOpen},
    {"Ky2DScene", Review::eOpen},
    {"Ky2DStyle", Review::eOpen},
    {"Ky2DSvgImage", Review::eHeld},
    {"Ky2DSvgImporter", Review::eClosed},
    {"Ky2DText", Review::eOpen},
    {"Ky2DView", Review::eOpen},
    {"KyAxisObject", Review::eOpen},
    {"KyBaseGraphicsPass", Review::eOpen},
    {"KyButtonObject", Review::eOpen},
    {"KyCamera", Review::eOpen},
    {"KyCameraManipulator", Review::eOpen},
    {"KyCanvas", Review::eHeld},
    {"KyChannelObject", Review::eOpen},
    {"KyCompositeAxisObject", Review::eOpen},
    {"KyCompositeButtonObject", Review::eOpen},
    {"KyCompositeOrientationObject", Review::eOpen},
    {"KyDeviceInfoObject", Review::eOpen},
    {"KyDeviceManagerObject", Review::eHeld},
    {"KyDeviceObject", Review::eOpen},
    {"KyDoxygenXmlDocMgr", Review::eClosed},
    {"KyDoxygenXmlDocReader", Review::eClosed},
    {"KyDynamicObject", Review::eOpen},
    {"KyFontFormat", Review::eOpen},
    {"KyFrameBuffer", Review::eHeld},
    {"KyGraphicsObject", Review::eOpen},
    {"KyGraphicsPass", Review::eOpen},
    {"KyGraphicsView", Review::eHeld},
    {"KyGraphicsViewMultiPass", Review::eHeld},
    {"KyHost", Review::eHeld},
    {"KyImage", Review::eHeld},
    {"KyIntersected", Review::eOpen},
    {"KyLight", Review::eOpen},
    {"KyLuaBinder", Review::eClosed},
    {"KyManipulator", Review::eOpen},
    {"KyManipulatorEventHandler", Review::eOpen},
    {"KyMesh", Review::eOpen},
    {"KyMeshNode", Review::eOpen},
    {"KyModelLoader", Review::eClosed},
    {"KyNetworkConnectionObject", Review::eClosed},
    {"KyNetworkPasswordManager", Review::eClosed},
    {"KyNode", Review::eOpen},
    {"KyObject", Review::eOpen},
    {"KyOrientationObject", Review::eOpen},
    {"KyPassEventHandler", Review::eOpen},
    {"KyPassSurface", Review::eHeld},
    {"KyProgress", Review::eHeld},
    {"KyQGLGraphicsView", Review::eHeld},
    {"KyQGLWindow", Review::eHeld},
    {"KyQGraphicsItemIntersected", Review::eOpen},
    {"KyQGraphicsSceneViewItem", Review::eHeld},
    {"KyQOpenGLWindow", Review::eHeld},
    {"KyQWindow", Review::eHeld},
    {"KyQmlPass", Review::eHeld},
    {"KyQtPass", Review::eHeld},
    {"KyQtPassEventHandler", Review::eOpen},
    {"KyScene", Review::eOpen},
    {"KyScenePass", Review::eOpen},
    {"KyScreenPass", Review::eOpen},
    {"KyScriptEngine", Review::eClosed},
    {"KyShader", Review::eHeld},
    {"KyShapeManipulator", Review::eOpen},
    // Their values stand in style sheets of widgets, which read files.
    {"KyStyleParameters", Review::eClosed},
    {"KySurfacePassEventHandler", Review::eOpen},
    {"KyTexture", Review::eHeld},
    {"KyTrackballManipulator", Review::eOpen},
    {"KyVirtualDevice", Review::eHeld},
    {"KyWindow", Review::eHeld},
};
static_assert(std::ranges::is_sorted(cVerdicts, {}, &Verdict::type));

struct Member {
    std::string_view name;
    std::string_view type;
};

/// Methods and attributes of objects that scripts are given, and static methods.
constexpr Member cMembers[] = {
    {"AutoRedraw", "KyWindow"},
    {"Canvas", "KyWindow"},
    {"FileLocalPath", "Ky2DImage"},
    {"FragmentProgram", "KyShader"},
    {"ImageURL", "Ky2DImage"},
    {"MouseFocusPolicy", "KyWindow"},
    {"Qml", "KyQmlPass"},
    {"Title", "KyWindow"},
    {"VertexProgram", "KyShader"},
    {"Visible", "KyWindow"},
    {"addImportPath", "KyQmlPass"},
    // Work of the host.
    {"cancel", "KyProgress"},
    {"clone", "Ky2DNode"},
    {"clone", "KyNode"},
    {"createQmlPassOverlayView", "KyQmlPass"},
    {"createQtPassOverlayView", "KyQtPass"},
    {"getWidgetProperty", "KyQtPass"},
    // The windows of the program, published or not.
    {"getWindow", "KyWindow"},
    {"grabPicture", "KyWindow"},
    {"load", "KyImage"},
    {"loadForm", "KyQtPass"},
    {"loadModel", "KyMeshNode"},
    {"openDevice", "KyDeviceManagerObject"},
    {"quit", "KyHost"},
    {"readPixels", "KyFrameBuffer"},
    {"releaseDevice", "KyDeviceManagerObject"},
    {"reload", "KyQmlPass"},
    {"rescanDevices", "KyDeviceManagerObject"},
    {"saveImage", "Ky2DView"},
    {"savePNG", "KyImage"},
    {"savePicture", "KyWindow"},
    {"setContextObject", "KyQmlPass"},
    {"setFboSize", "KyQmlPass"},
    {"setFileLocalPath", "Ky2DImage"},
    {"setImage", "KyTexture"},
    {"setImageURL", "Ky2DImage"},
    {"setPictureSize", "KyPassSurface"},
    {"setQml", "KyQmlPass"},
    {"setSize", "KyFrameBuffer"},
    {"setSize", "KyTexture"},
    {"setSize", "KyWindow"},
    {"setWidgetProperty", "KyQtPass"},
    {"show", "KyPassSurface"},
};
static_assert(std::ranges::is_sorted(cMembers, {}, &Member::name));

bool isA(const KyType& type, std::string_view name) {
    for (const KyType* known = &type; known; known = known->getParent())
        if (known->getName() == name)
            return true;
    return false;
}

} // namespace

KyScriptReview kyGetScriptReview(const KyType& type) {
    const auto* const found = std::ranges::lower_bound(cVerdicts, std::string_view(type.getName()), {}, &Verdict::type);
    return found != std::end(cVerdicts) && found->type == type.getName() ? found->review : Review::eNone;
}

namespace {

/// A type of the host is what it derives from.
bool isClosed(const KyType& type) {
    Review review = Review::eNone;
    for (const KyType* known = &type; known && review == Review::eNone; known = known->getParent())
        review = kyGetScriptReview(*known);
    return review == Review::eClosed;
}

} // namespace

bool KyScriptSandbox::isTypeReviewed(const KyType& type) {
    return kyGetScriptReview(type) != Review::eNone;
}

bool KyScriptSandbox::isTypeWithheld(const KyType& type) {
    return kyGetScriptReview(type) != Review::eOpen;
}

bool KyScriptSandbox::isMemberWithheld(const KyType& type, std::string_view name) {
    if (isClosed(type))
        return true;
    const auto [first, last] = std::ranges::equal_range(cMembers, name, {}, &Member::name);
    return std::any_of(first, last, [&type](const Member& member) { return isA(type, member.type); });
}

void KyScriptSandbox::allowType(const KyType& type) {
    mPrivate->allowedTypes.insert(type.getName());
}

bool KyScriptSandbox::isTypeAllowed(const KyType& type) const {
    return mPrivate->allowedTypes.contains(type.getName());
}

void KyScriptSandbox::allowGlobal(const std::string& name) {
    mPrivate->allowedGlobals.insert(name);
}

/// Whether scripts may use what the type itself declares, of an object of it if there is one.
bool Private::mayUse(const KyType& type, const KyObject* object) const {
    const Review review = kyGetScriptReview(type);
    if (review != Review::eNone)
        return review != Review::eClosed;
    return allowedTypes.contains(type.getName()) || (object && isPublished(*object));
}

bool Private::isPublished(const KyObject& object) const {
    return engine.mPublications->getAll().contains(const_cast<KyObject*>(&object));
}

/// The types from the object's own up which have the member: the one that declares it is among them.
template <class Declares>
bool Private::mayUseMember(const KyObject& object, Declares declares) const {
    const KyType* const own = object.getObjectType();
    if (!declares(*own))
        return mayUse(*own, &object);
    for (const KyType* type = own; type && declares(*type); type = type->getParent())
        if (mayUse(*type, &object))
            return true;
    return false;
}

bool Private::isReviewed(KyLuaClass& luaClass) const {
    if (!luaClass.isReviewed && !luaClass.isDropped)
        luaClass.isReviewed = mayUse(*luaClass.type, nullptr);
    return luaClass.isReviewed;
}

bool Private::mayRead(lua_State* state, KyLuaClass& luaClass, const KyObject& object,
                      const KyAttributeInterface& attribute) {
    const Private* const self = find(state);
    if (!self || self->isReviewed(luaClass))
        return true;
    const auto declares = [&](const KyType& type) { return type.getAttribute(attribute.getName()) == &attribute; };
    if (!self->mayUseMember(object, declares))
        return false;
    if (self->isPublished(object))
        luaClass.shared->granted = &object;
    return true;
}

bool Private::mayWrite(const KyObject& object, std::string_view name) const {
    const KyType& own = *object.getObjectType();
    const KyAttributeInterface* const attribute = own.getAttribute(name);
    const auto declares = [&](const KyType& type) { return attribute && type.getAttribute(name) == attribute; };
    return mayUseMember(object, declares);
}

bool Private::mayListen(lua_State* state, const KyObject& object, std::string_view signal) {
    const Private* const self = find(state);
    const auto declares = [signal](const KyType& type) {
        return std::ranges::count(type.getSignals(), signal, &KySignalEntry::name) > 0;
    };
    return !self || self->mayUseMember(object, declares);
}

void Private::withdraw(const KyObject& object) {
    if (shared && engine.mState && shared->granted == &object)
        shared->granted = nullptr;
}
