// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyPassEventHandler.h"

#include "KyHolder.h"
#include "KyObjectReference.h"
#include "KyVec2.h"

#include <vector>

class KyPassSurface;
class KyScenePass;

/// Makes the widgets, 2D items and QML interactive that KyPassSurface puts on nodes: the event handler of the scene
/// pass that shows the nodes. It serves the surfaces of the scene pass's view, however many.
///
/// The pointer reaches what is seen under it, in perspective and from either side of a node; what another node hides is
/// not reached, and through the fully transparent pixels of a surface the pointer reaches what is behind. A press that
/// was used keeps the pointer to its release, beside the node too. What no surface uses goes to the next handler, such
/// as one that turns the camera. How events are delivered is KyQtPassEventHandler's part.
///
/// ```
/// KyHolder<KySurfacePassEventHandler> handler(KySurfacePassEventHandler::create());
/// handler->setNextHandler(scenePass->getEventHandler());
/// scenePass->setEventHandler(handler.get());
/// ```
class KYAPPLICATION_EXPORT KySurfacePassEventHandler : public KyPassEventHandler {
public:
    static const KyType* getType();
    static KySurfacePassEventHandler* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static KySurfacePassEventHandler* create() { return new KySurfacePassEventHandler; }

    KySurfacePassEventHandler() = default;
    ~KySurfacePassEventHandler() override;

    /// Gets what no surface used; null for none. Holds a reference. One that leads back to this one, by next handlers
    /// of next handlers, is ignored.
    KyPassEventHandler* getNextHandler() const { return mNextHandler.get(); }
    void setNextHandler(KyPassEventHandler* handler);

    using KyPassEventHandler::handleEvent;
    /// True when the event was used, which its internal return holds as well.
    bool handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view, KyBaseGraphicsPass* pass) override;

private:
    struct Target;
    using Surfaces = std::vector<KyHolder<KyPassSurface>>;

    bool sendToSurfaces(const KyInputEvent& event, const KyGraphicsViewMultiPass& view, const KyScenePass& scene);
    bool sendToTarget(const KyInputEvent& event, const Target& target);
    void hover(KyPassSurface* surface);

    KyHolder<KyPassEventHandler> mNextHandler;
    KyObjectReference mHovered;
    /// Of the surface that was sent to last.
    KyVec2<int> mLastPixel;

    static const KyType* msType;
};
