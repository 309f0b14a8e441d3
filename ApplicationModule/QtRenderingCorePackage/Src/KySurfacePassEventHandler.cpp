// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySurfacePassEventHandler.h"

#include "KyPassSurface.h"

#include "KyNodeHit.h"
#include "KyScenePass.h"

#include "KyInputEvent.h"
#include "KyRay.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <array>

const KyType* KySurfacePassEventHandler::msType = nullptr;

namespace {

using Surfaces = std::vector<KyHolder<KyPassSurface>>;

/// What the pointer looks through at most.
constexpr int cMaxLayers = 32;
constexpr int cOutside = -1;
/// Just behind something, and farther than that.
constexpr double cBehind = 1.0 + 1e-9;
constexpr double cFarther = 1.0 + 1e-6;

constexpr std::array cKeyEvents{KyInputEvent::eKeyPressed, KyInputEvent::eKeyReleased, KyInputEvent::eInputMethodQuery};
/// What tells other surfaces that something begins or ends elsewhere, or may be meant for what has the focus.
constexpr std::array cToldEverywhere{KyInputEvent::eMousePressed, KyInputEvent::eMouseReleased,
                                     KyInputEvent::eMouseDoubleClicked, KyInputEvent::eTouchBegan,
                                     KyInputEvent::eContextMenu};

bool isOneOf(KyInputEvent::Type type, const auto& types) {
    return std::ranges::find(types, type) != types.end();
}

Surfaces findSurfaces(const KyGraphicsViewMultiPass& view) {
    Surfaces found;
    for (unsigned i = 0; i < view.getNbPasses(); ++i)
        if (KyPassSurface* const surface = KyPassSurface::cast(view.getPass(i)); surface && surface->isEnabled())
            found.emplace_back(surface);
    return found;
}

/// As far as the farthest surface that a ray meets; 0 when it meets none.
double getReach(const Surfaces& surfaces, const KyRayd& ray) {
    double reach = 0.0;
    for (const auto& surface : surfaces)
        if (KyNodeHit hit; surface->getNode() && surface->getNode()->intersect(ray, hit))
            reach = std::max(reach, hit.distance * cFarther);
    return reach;
}

KyInputEvent moveTo(const KyInputEvent& event, const KyVec2<int>& pixel) {
    KyInputEvent moved = event;
    moved.setPosition(pixel.x, pixel.y);
    return moved;
}

KyInputEvent moveOutside(const KyInputEvent& event) {
    KyInputEvent moved = moveTo(event, {cOutside, cOutside});
    for (KyTouchPoint& point : moved.editTouchPoints())
        point.x = point.y = cOutside;
    return moved;
}

} // namespace

/// A surface, and how the pixels of the 3D view are seen on it.
struct KySurfacePassEventHandler::Target {
    KyPassSurface* surface = nullptr;
    KyVec2<int> pixel;
    const KyScenePass* scene = nullptr;
    const KyGraphicsViewMultiPass* view = nullptr;

    bool follow(int x, int y, KyVec2<int>& found) const {
        KyRayd ray;
        return scene->getRay(*view, x, y, ray) && surface->followPixel(ray, found);
    }

    /// The surface that is seen under a pixel; none behind what shows no pass.
    bool find(const Surfaces& surfaces, int x, int y) {
        KyRayd ray;
        KyNodeHit hit;
        if (!scene->getRay(*view, x, y, ray))
            return false;
        // Most of the time the pointer is over no surface: then the scene, which may be large, is not searched.
        double reach = getReach(surfaces, ray);
        hit.distance = reach;
        bool isHit = reach > 0.0 && scene->findHit(*view, x, y, hit);
        for (int layer = 0; isHit && layer < cMaxLayers; ++layer) {
            const auto found = std::ranges::find_if(
                surfaces, [&hit](const auto& candidate) { return candidate->getNode() == hit.node; });
            if (found == surfaces.end())
                return false;
            surface = found->get();
            if (surface->findPixel(hit, pixel))
                return true;
            const double passed = hit.distance * cBehind;
            ray.origin = ray.getPoint(passed);
            reach -= passed;
            hit = KyNodeHit();
            hit.distance = reach;
            isHit = reach > 0.0 && scene->getScene()->intersect(ray, hit);
        }
        return false;
    }
};

void KySurfacePassEventHandler::initializeType() {
    if (msType)
        return;
    using Handler = KySurfacePassEventHandler;
    msType = KyTypeBuilder<Handler>("KySurfacePassEventHandler", KyPassEventHandler::getType())
                 .factory()
                 .attribute("NextHandler", &Handler::getNextHandler, &Handler::setNextHandler)
                 .build();
}

void KySurfacePassEventHandler::finalizeType() {
    KyType::remove(msType);
}

const KyType* KySurfacePassEventHandler::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KySurfacePassEventHandler::getObjectType() const {
    return getType();
}

KySurfacePassEventHandler* KySurfacePassEventHandler::cast(KyObject* object) {
    return kyCast<KySurfacePassEventHandler>(object);
}

KyObject* KySurfacePassEventHandler::factory() {
    return new KySurfacePassEventHandler;
}

/// Link by link: a chain may be longer than ends of handlers in ends of handlers fit on the stack.
KySurfacePassEventHandler::~KySurfacePassEventHandler() {
    KyHolder<KyPassEventHandler> next = std::move(mNextHandler);
    for (auto* link = cast(next.get()); link && link->getNbReferences() == 1; link = cast(next.get())) {
        KyHolder<KyPassEventHandler> after = std::move(link->mNextHandler);
        next = std::move(after);
    }
}

void KySurfacePassEventHandler::setNextHandler(KyPassEventHandler* handler) {
    if (mNextHandler == handler)
        return;
    for (auto* link = cast(handler); link; link = cast(link->getNextHandler()))
        if (link == this)
            return;
    mNextHandler.reset(handler);
    notifyModified("NextHandler");
}

bool KySurfacePassEventHandler::handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view,
                                            KyBaseGraphicsPass* pass) {
    // What is reached may end all of these; one that nobody holds must not end with this.
    const KyHolder<KySurfacePassEventHandler> self(getNbReferences() > 0 ? this : nullptr);
    KyHolder<KyPassEventHandler> next = mNextHandler;
    const KyHolder<KyGraphicsViewMultiPass> keptView(view && view->getNbReferences() > 0 ? view : nullptr);
    const KyHolder<KyBaseGraphicsPass> keptPass(pass && pass->getNbReferences() > 0 ? pass : nullptr);
    const KyScenePass* const scene = KyScenePass::cast(pass);
    const auto isUsedBy = [&](KySurfacePassEventHandler& handler) {
        const bool isUsed = scene && view && handler.sendToSurfaces(event, *view, *scene);
        event.setInternalEventReturn(isUsed);
        return isUsed;
    };
    if (isUsedBy(*this))
        return true;
    while (auto* const link = cast(next.get())) {
        const KyHolder<KyPassEventHandler> kept = next;
        const KyHolder<KyPassEventHandler> after = link->mNextHandler;
        if (isUsedBy(*link))
            return true;
        next = after;
    }
    return next && next->handleEvent(event, view, pass);
}

bool KySurfacePassEventHandler::sendToSurfaces(const KyInputEvent& event, const KyGraphicsViewMultiPass& view,
                                               const KyScenePass& scene) {
    const Surfaces surfaces = findSurfaces(view);
    if (surfaces.empty())
        return false;
    if (isOneOf(event.getType(), cKeyEvents))
        return std::ranges::any_of(surfaces,
                                   [&event](const auto& surface) { return surface->send(moveOutside(event)); });
    Target target{nullptr, {cOutside, cOutside}, &scene, &view};
    const auto grabbing = std::ranges::find_if(surfaces, [](const auto& surface) { return surface->isGrabbing(); });
    if (grabbing != surfaces.end()) {
        target.surface = grabbing->get();
        // Past the line where the plane vanishes no place of it is seen.
        if (!target.follow(event.getX(), event.getY(), target.pixel))
            target.pixel = mLastPixel;
        return sendToTarget(event, target);
    }
    // Somebody else has the button.
    if (event.getType() == KyInputEvent::eMouseMoved && (event.getState() & KyInputEvent::cMouseButtons) != 0)
        return false;
    const bool isFound = target.find(surfaces, event.getX(), event.getY());
    hover(isFound ? target.surface : nullptr);
    bool isUsed = false;
    if (isOneOf(event.getType(), cToldEverywhere))
        for (const auto& surface : surfaces)
            if (!isFound || surface != target.surface)
                isUsed = surface->send(moveOutside(event)) || isUsed;
    return (isFound && sendToTarget(event, target)) || isUsed;
}

bool KySurfacePassEventHandler::sendToTarget(const KyInputEvent& event, const Target& target) {
    mLastPixel = target.pixel;
    KyInputEvent moved = moveTo(event, target.pixel);
    for (KyTouchPoint& point : moved.editTouchPoints()) {
        KyVec2<int> pixel;
        const bool isSeen = target.follow(point.x, point.y, pixel);
        point.x = isSeen ? pixel.x : target.pixel.x;
        point.y = isSeen ? pixel.y : target.pixel.y;
    }
    return target.surface->send(moved);
}

void KySurfacePassEventHandler::hover(KyPassSurface* surface) {
    auto* const former = static_cast<KyPassSurface*>(mHovered.get());
    if (former == surface)
        return;
    mHovered = KyObjectReference(surface);
    if (former)
        former->leave();
}
