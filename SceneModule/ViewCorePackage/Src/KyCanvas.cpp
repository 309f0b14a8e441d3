// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCanvas.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsStateScope.h"
#include "KyRendererContext.h"
#include "KyRevision_p.h"

#include "KyCallSignatures.h"
#include "KyInputEvent.h"
#include "KyTypeBuilder.h"

#include <epoxy/gl.h>

#include <algorithm>

const KyType* KyCanvas::msType = nullptr;

void KyCanvas::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyCanvas>("KyCanvas", KyObject::getType())
                 .factory()
                 .attribute("Width", &KyCanvas::getWidth)
                 .attribute("Height", &KyCanvas::getHeight)
                 .container("Views", &KyCanvas::getNbViews, &KyCanvas::getView, nullptr, &KyCanvas::insertViewAt,
                            &KyCanvas::removeViewAt)
                 .signal<&KyCanvas::viewRemovedSignal>("viewRemoved")
                 .signal<&KyCanvas::pointerLeftSignal>("pointerLeft")
                 .method("insertView", &KyCanvas::insertView)
                 .method("removeView", &KyCanvas::removeView)
                 .method("needsRedraw", &KyCanvas::needsRedraw)
                 .build();
    KyCallSignatures::add("KyCanvas", {"insertView(view, position)", "removeView(view)", "viewRemoved(view)"});
}

void KyCanvas::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyCanvas::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyCanvas::getObjectType() const {
    return getType();
}

KyCanvas* KyCanvas::cast(KyObject* object) {
    return kyCast<KyCanvas>(object);
}

KyObject* KyCanvas::factory() {
    return new KyCanvas;
}

KyCanvas::~KyCanvas() {
    notifyEnd();
    for (const auto& view : mViews)
        view->mCanvas = nullptr;
}

KyGraphicsViewMultiPass* KyCanvas::getView(unsigned index) const {
    return index < mViews.size() ? mViews[index].get() : nullptr;
}

std::vector<KyGraphicsViewMultiPass*> KyCanvas::pickViews(int x, int y) const {
    std::vector<KyGraphicsViewMultiPass*> found;
    for (auto view = mViews.rbegin(); view != mViews.rend(); ++view)
        (*view)->pick(x, y, found);
    return found;
}

void KyCanvas::transformStereoPoint(int&, int&) const {}

std::uint64_t KyCanvas::getRevision() const {
    std::uint64_t revision = mOwnRevision;
    for (const auto& view : mViews)
        revision = kyMixRevision(revision, view->getRevision());
    // 0 stands for never drawn.
    return std::max<std::uint64_t>(revision, 1);
}

void KyCanvas::setSize(int width, int height) {
    width = std::max(width, 0);
    height = std::max(height, 0);
    if (width == mWidth && height == mHeight)
        return;
    mWidth = width;
    mHeight = height;
    ++mOwnRevision;
    notifyModified("Width");
    notifyModified("Height");
}

bool KyCanvas::insertView(KyGraphicsViewMultiPass* view, int position) {
    if (!view)
        return false;
    const KyHolder<KyGraphicsViewMultiPass> kept(view);
    view->leave();
    const auto count = static_cast<int>(mViews.size());
    const int index = position < 0 ? count : std::min(position, count);
    mViews.insert(mViews.begin() + index, kept);
    view->mCanvas = this;
    ++mOwnRevision;
    notifyModified(eElementInserted, "Views", index);
    return true;
}

bool KyCanvas::removeView(KyGraphicsViewMultiPass* view) {
    const auto found = std::ranges::find_if(mViews, [view](const auto& holder) { return holder == view; });
    return found != mViews.end() && removeViewAt(static_cast<unsigned>(found - mViews.begin()));
}

bool KyCanvas::removeViewAt(unsigned index) {
    if (index >= mViews.size())
        return false;
    // A slot may drop the canvas; one that nobody holds must not end with this.
    const KyHolder<KyCanvas> self(getNbReferences() > 0 ? this : nullptr);
    const KyHolder<KyGraphicsViewMultiPass> kept = mViews[index];
    mViews.erase(mViews.begin() + index);
    kept->mCanvas = nullptr;
    ++mOwnRevision;
    kept->tellRemoval(*this);
    notifyModified(eElementRemoved, "Views", static_cast<int>(index));
    return true;
}

bool KyCanvas::handleEvent(const KyInputEvent& event) {
    // A handler may drop the canvas; one that nobody holds must not end with this.
    const KyHolder<KyCanvas> self(getNbReferences() > 0 ? this : nullptr);
    const KyHolder<KyEventHandler> handler = mEventHandler;
    event.setCovered(false);
    if (handler && handler->handleEvent(event)) {
        mEventSentSignal.send(&event);
        return true;
    }
    // Handlers may remove and disable views, those that others stand in too.
    std::vector<KyHolder<KyGraphicsViewMultiPass>> views;
    for (KyGraphicsViewMultiPass* view : pickViews(event.getX(), event.getY()))
        views.emplace_back(view);
    const bool isUsed = std::ranges::any_of(views, [this, &event](const auto& view) {
        return view->getCanvas() == this && view->isEnabledWithParents() && view->handleEvent(event);
    });
    mEventSentSignal.send(&event);
    return isUsed;
}

bool KyCanvas::render(KyRendererContext& context) {
    if (mWidth < 1 || mHeight < 1 || !context.begin())
        return false;
    // Before drawing: a pass may find a reason to be drawn again while it draws.
    mRenderedRevision = getRevision();
    const KyGraphicsStateScope state;
    context.setSize(mWidth, mHeight);
    glDisable(GL_FRAMEBUFFER_SRGB);
    glDisable(GL_STENCIL_TEST);
    glEnable(GL_MULTISAMPLE);
    for (const KyHolder<KyGraphicsViewMultiPass>& view : std::vector(mViews))
        view->render(context);
    if (context.getTarget())
        context.getTarget()->resolve();
    return true;
}
