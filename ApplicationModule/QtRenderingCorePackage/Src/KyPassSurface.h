// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyCanvas.h"
#include "KyGraphicsPass.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyMeshNode.h"

#include "KyObjectReference.h"
#include "KySignal.h"
#include "KyVec2.h"

#include <array>
#include <cstdint>

class KyInputEvent;
struct KyNodeHit;
template <class T>
class KyRay;

/// Puts the picture of another pass on a node of a 3D scene: a widget, a 2D scene or QML on a wall. A pass of the view
/// that draws the 3D scene, before it (priority -1). The pass that is shown stands in a small view of its own, of a
/// size of its own, and draws only when it has something new; the node shows it by its texture coordinates, (0, 0) at
/// the picture's lower left corner, unlit and white unless that is changed afterwards.
///
/// Holds references of the pass and of the node. A node shows one pass. Events reach the pass by a
/// KySurfacePassEventHandler of the scene pass. The thread that renders and runs Qt's event loop.
///
/// ```
/// KyPassSurface::show(pass, wall, view, 640, 480);  // surface and event handler in one
/// ```
class KYAPPLICATION_EXPORT KyPassSurface : public KyGraphicsPass, public KyHasSlots {
public:
    /// Pixels along a side; larger numbers count as this one.
    static constexpr int cLargestPicture = 16384;

    static const KyType* getType();
    static KyPassSurface* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static KyPassSurface* create() { return new KyPassSurface; }
    KyPassSurface();
    /// The node shows the pass no more.
    ~KyPassSurface() override;
    /// The size only.
    KyPassSurface* clone() const override;

    /// A surface with these, in the view; when the view's main pass is a scene pass whose event handler is no
    /// KySurfacePassEventHandler it gets one, which goes before the former handler. Null when one of them is null. The
    /// view holds the surface.
    static KyPassSurface* show(KyBaseGraphicsPass* pass, KyMeshNode* node, KyGraphicsViewMultiPass* view, int width,
                               int height);

    /// Null when there is none.
    KyBaseGraphicsPass* getPass() const { return mPictureView->getMainPass(); }
    /// The mesh that shows the picture; null when there is none.
    KyMeshNode* getNode() const { return mNode.get(); }
    /// Pixels of the picture, 512 x 512 at the start.
    int getPictureWidth() const { return mPicture->getWidth(); }
    /// See getPictureWidth.
    int getPictureHeight() const { return mPicture->getHeight(); }
    /// The view in which the pass stands: what its functions ask for. Positions in it are pixels of the picture, from
    /// its top left corner.
    KyGraphicsViewMultiPass* getPictureView() const { return mPictureView.get(); }
    std::uint64_t getRevision() const override;

    /// A Qt or QML pass, which gets an event handler when it has none; of another kind only the picture is shown, the
    /// colour texture of its frame buffer. It leaves no other view by itself.
    void setPass(KyBaseGraphicsPass* pass);
    /// Its texture, colour and shading are set.
    void setNode(KyMeshNode* node);
    /// Limited to 1 ... cLargestPicture.
    void setPictureSize(int width, int height);

    /// Whether something of the pass is where a ray met the node; then its pixel. What is fully transparent is not.
    bool findPixel(const KyNodeHit& hit, KyVec2<int>& pixel);
    /// The pixel where a ray in world coordinates meets the node, or else the plane of the triangle that findPixel()
    /// met last: beside the picture too. False, and nothing set, when there is none.
    bool followPixel(const KyRay<double>& ray, KyVec2<int>& pixel) const;
    /// Gives the pass an event whose positions are pixels of the picture; true when it was used.
    bool send(const KyInputEvent& event);
    /// Whether a press or touch that the pass used has not ended.
    bool isGrabbing() const;
    /// Tells the pass that the pointer is elsewhere.
    void leave();

    bool adaptView(const KyGraphicsViewMultiPass& view) override;
    void preRender(KyRendererContext& context) override;

private:
    KyTexture* getPictureTexture() const;
    bool toPixel(const KyVec2d& texCoord, KyVec2<int>& pixel) const;
    void dressNode();
    void updateNode();
    void undressNode();
    void listenTo(KyCanvas* canvas);

    KyHolder<KyCanvas> mPicture;
    KyHolder<KyGraphicsViewMultiPass> mPictureView;
    KyHolder<KyMeshNode> mNode;
    // Of the 3D view.
    KyObjectReference mCanvas;
    std::array<KyConnection, 4> mConnections;
    unsigned mTriangle = 0;
    std::uint64_t mDrawnRevision = 0;

    static const KyType* msType;
};
