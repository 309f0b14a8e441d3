// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassSurface.h"

#include "KyQmlPass.h"
#include "KyQtPass.h"
#include "KyQtPassEventHandler.h"
#include "KySurfacePassEventHandler.h"

#include "KyNodeHit.h"
#include "KyScenePass.h"

#include "KyCallSignatures.h"
#include "KyInputEvent.h"
#include "KyRay.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <cmath>

const KyType* KyPassSurface::msType = nullptr;

namespace {

constexpr float cBeforeScenes = -1.0f;
constexpr int cFirstPictureSize = 512;
constexpr double cFarthestPixel = 1e6;

bool isInteractive(KyBaseGraphicsPass* pass) {
    return KyQtPass::cast(pass) || KyQmlPass::cast(pass);
}

/// Passes that tell nothing of their pixels count as opaque.
float getAlpha(KyBaseGraphicsPass* pass, const KyVec2f& pixel, const KyGraphicsViewMultiPass* view) {
    if (KyQtPass* const qtPass = KyQtPass::cast(pass))
        return qtPass->getPixelColor(pixel, view).alpha;
    if (const KyQmlPass* const qmlPass = KyQmlPass::cast(pass))
        return qmlPass->getPixelColor(pixel, view).alpha;
    return 1.0f;
}

int toColumn(double share, int size) {
    return static_cast<int>(std::floor(std::clamp(share * size, -cFarthestPixel, cFarthestPixel)));
}

} // namespace

void KyPassSurface::initializeType() {
    if (msType)
        return;
    using Surface = KyPassSurface;
    msType = KyTypeBuilder<Surface>("KyPassSurface", KyGraphicsPass::getType())
                 .factory()
                 .attribute("Pass", &Surface::getPass, &Surface::setPass)
                 .attribute("Node", &Surface::getNode, &Surface::setNode)
                 .attribute("PictureWidth", &Surface::getPictureWidth)
                 .attribute("PictureHeight", &Surface::getPictureHeight)
                 .component<&Surface::getPictureView>("PictureView")
                 .method("setPictureSize", &Surface::setPictureSize)
                 .staticMethod("show", &Surface::show)
                 .build();
    KyCallSignatures::add("KyPassSurface", {"setPictureSize(width, height)", "show(pass, node, view, width, height)"});
}

void KyPassSurface::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyPassSurface::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyPassSurface::getObjectType() const {
    return getType();
}

KyPassSurface* KyPassSurface::cast(KyObject* object) {
    return kyCast<KyPassSurface>(object);
}

KyObject* KyPassSurface::factory() {
    return new KyPassSurface;
}

KyPassSurface::KyPassSurface()
    : mPicture(new KyCanvas)
    , mPictureView(KyGraphicsViewMultiPass::create()) {
    setPriority(cBeforeScenes);
    mPictureView->setClearOrder(KyGraphicsViewMultiPass::eClearNothing);
    mPicture->setSize(cFirstPictureSize, cFirstPictureSize);
    mPicture->insertView(mPictureView.get());
}

KyPassSurface::~KyPassSurface() {
    undressNode();
}

KyPassSurface* KyPassSurface::clone() const {
    auto* const copy = new KyPassSurface;
    copy->setPictureSize(getPictureWidth(), getPictureHeight());
    return copy;
}

KyPassSurface* KyPassSurface::show(KyBaseGraphicsPass* pass, KyMeshNode* node, KyGraphicsViewMultiPass* view, int width,
                                   int height) {
    if (!pass || !node || !view)
        return nullptr;
    auto* const surface = new KyPassSurface;
    surface->setPictureSize(width, height);
    surface->setPass(pass);
    surface->setNode(node);
    view->addPass(surface);
    KyScenePass* const scene = KyScenePass::cast(view->getMainPass());
    if (!scene || KySurfacePassEventHandler::cast(scene->getEventHandler()))
        return surface;
    const KyHolder<KySurfacePassEventHandler> handler(KySurfacePassEventHandler::create());
    handler->setNextHandler(scene->getEventHandler());
    scene->setEventHandler(handler.get());
    return surface;
}

std::uint64_t KyPassSurface::getRevision() const {
    constexpr std::uint64_t cSpread = 0x9e3779b97f4a7c15u;
    return (KyGraphicsPass::getRevision() * cSpread) ^ mPicture->getRevision();
}

void KyPassSurface::setPass(KyBaseGraphicsPass* pass) {
    if (pass == getPass())
        return;
    undressNode();
    mPictureView->setMainPass(pass);
    if (isInteractive(pass) && !pass->getEventHandler())
        pass->setEventHandler(KyQtPassEventHandler::create());
    dressNode();
    markModified("Pass");
}

void KyPassSurface::setNode(KyMeshNode* node) {
    if (node == getNode())
        return;
    undressNode();
    mNode.reset(node);
    dressNode();
    markModified("Node");
}

void KyPassSurface::setPictureSize(int width, int height) {
    mPicture->setSize(std::clamp(width, 1, cLargestPicture), std::clamp(height, 1, cLargestPicture));
    markModified("PictureWidth");
    markModified("PictureHeight");
}

KyTexture* KyPassSurface::getPictureTexture() const {
    const KyBaseGraphicsPass* const pass = getPass();
    return pass && pass->getFrameBuffer() ? pass->getFrameBuffer()->getColorTexture() : nullptr;
}

void KyPassSurface::dressNode() {
    if (!mNode || !getPass())
        return;
    mNode->setColor(KyColor(KyColor::eWhite));
    mNode->setShading(KyMeshNode::eUnlit);
    mNode->setTextureAlpha(isInteractive(getPass()) ? KyMeshNode::ePremultiplied : KyMeshNode::eIgnored);
    mNode->setTextureFlipped(KyQtPass::cast(getPass()) != nullptr);
    updateNode();
}

void KyPassSurface::updateNode() {
    if (mNode && getPass())
        mNode->setTexture(getPictureTexture());
}

void KyPassSurface::undressNode() {
    if (mNode && mNode->getTexture() == getPictureTexture())
        mNode->setTexture(nullptr);
}

bool KyPassSurface::toPixel(const KyVec2d& texCoord, KyVec2<int>& pixel) const {
    if (!std::isfinite(texCoord.x) || !std::isfinite(texCoord.y))
        return false;
    // Textures count upwards, positions downwards.
    pixel = KyVec2<int>(toColumn(texCoord.x, getPictureWidth()), toColumn(1.0 - texCoord.y, getPictureHeight()));
    return true;
}

bool KyPassSurface::findPixel(const KyNodeHit& hit, KyVec2<int>& pixel) {
    KyVec2<int> found;
    if (!mNode || mNode.get() != hit.node || !getPass() || !hit.hasTexCoord || !toPixel(hit.texCoord, found))
        return false;
    const bool isInside = found.x >= 0 && found.y >= 0 && found.x < getPictureWidth() && found.y < getPictureHeight();
    if (!isInside || !(getAlpha(getPass(), KyVec2f(found), mPictureView.get()) > 0.0f))
        return false;
    pixel = found;
    mTriangle = hit.triangle;
    return true;
}

bool KyPassSurface::followPixel(const KyRayd& ray, KyVec2<int>& pixel) const {
    const KyMesh* const mesh = mNode ? mNode->getMesh() : nullptr;
    KyMat4d toNode = mesh ? mNode->getWorldFrame() : KyMat4d();
    if (!mesh || !toNode.invert())
        return false;
    const KyRayd local(toNode.transformPoint(ray.origin), toNode.transformVector(ray.direction));
    KySurfaceHit hit;
    if (mesh->intersect(local, hit) || mesh->projectToTriangle(local, mTriangle, hit.texCoord))
        return toPixel(hit.texCoord, pixel);
    return false;
}

bool KyPassSurface::send(const KyInputEvent& event) {
    const KyHolder<KyBaseGraphicsPass> pass(getPass());
    const KyHolder<KyPassEventHandler> handler(pass ? pass->getEventHandler() : nullptr);
    const KyHolder<KyGraphicsViewMultiPass> view = mPictureView;
    event.setInternalEventReturn(false);
    return handler && (handler->handleEvent(event, view.get(), pass.get()) || event.getInternalEventReturn());
}

bool KyPassSurface::isGrabbing() const {
    const auto* const handler = getPass() ? KyQtPassEventHandler::cast(getPass()->getEventHandler()) : nullptr;
    return handler && handler->isGrabbing(getPass());
}

void KyPassSurface::leave() {
    const KyHolder<KyBaseGraphicsPass> pass(getPass());
    const KyHolder<KyQtPassEventHandler> handler(pass ? KyQtPassEventHandler::cast(pass->getEventHandler()) : nullptr);
    if (handler)
        handler->leave(pass.get());
}

/// The picture's canvas is no window's: it tells what that of the 3D view tells.
void KyPassSurface::listenTo(KyCanvas* canvas) {
    for (KyConnection& connection : mConnections)
        connection.disconnect();
    mCanvas = KyObjectReference(canvas);
    if (!canvas)
        return;
    const auto pass = [this](auto& signal, auto& picture) {
        return signal.connect(*this, [&picture](auto... told) { picture.send(told...); });
    };
    mConnections = {pass(canvas->pointerLeftSignal(), mPicture->pointerLeftSignal()),
                    pass(canvas->eventSentSignal(), mPicture->eventSentSignal()),
                    pass(canvas->touchCanceledSignal(), mPicture->touchCanceledSignal()),
                    pass(canvas->keyboardFocusSignal(), mPicture->keyboardFocusSignal())};
}

bool KyPassSurface::adaptView(const KyGraphicsViewMultiPass& view) {
    if (view.getCanvas() != mCanvas.get())
        listenTo(view.getCanvas());
    return KyGraphicsPass::adaptView(view);
}

void KyPassSurface::preRender(KyRendererContext& context) {
    updateNode();
    if (!getPictureTexture())
        return;
    // Qt's passes know by themselves when there is nothing to do; others would draw, and the node change, every frame.
    const std::uint64_t revision = mPicture->getRevision();
    if (!isInteractive(getPass()) && revision == mDrawnRevision)
        return;
    mPictureView->render(context);
    mDrawnRevision = revision;
}
