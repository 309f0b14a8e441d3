// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsViewMultiPass.h"

#include "KyCanvas.h"
#include "KyRendererContext.h"
#include "KyRevision_p.h"

#include "KyCallSignatures.h"
#include "KyInputEvent.h"
#include "KyTypeBuilder.h"

#include <epoxy/gl.h>

#include <algorithm>

const KyType* KyGraphicsViewMultiPass::msType = nullptr;

namespace {

template <class T>
auto findIn(const std::vector<KyHolder<T>>& holders, const T* object) {
    return std::ranges::find_if(holders, [object](const KyHolder<T>& holder) { return holder == object; });
}

} // namespace

void KyGraphicsViewMultiPass::initializeType() {
    if (msType)
        return;
    using View = KyGraphicsViewMultiPass;
    msType =
        KyTypeBuilder<View>("KyGraphicsViewMultiPass", KyGraphicsView::getType())
            .factory()
            .attribute("ClearOrder", &View::getClearOrder, &View::setClearOrder)
            .attribute("ClearColor", &View::getClearColor, &View::setClearColor)
            .attribute("MainPass", &View::getMainPass, &View::setMainPass)
            .container("Passes", &View::getNbPasses, &View::getPass, nullptr, &View::insertPassAt, &View::removePassAt)
            .container("Views", &View::getNbViews, &View::getView, nullptr, &View::insertViewAt, &View::removeViewAt)
            .method("addPass", &View::addPass)
            .method("removePass", &View::removePass)
            .method("insert", &View::insert)
            .method("remove", &View::remove)
            .build();
    KyCallSignatures::add("KyGraphicsViewMultiPass",
                          {"insert(view, position)", "remove(view)", "addPass(pass)", "removePass(pass)"});
}

void KyGraphicsViewMultiPass::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyGraphicsViewMultiPass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyGraphicsViewMultiPass::getObjectType() const {
    return getType();
}

KyGraphicsViewMultiPass* KyGraphicsViewMultiPass::cast(KyObject* object) {
    return kyCast<KyGraphicsViewMultiPass>(object);
}

KyObject* KyGraphicsViewMultiPass::factory() {
    return new KyGraphicsViewMultiPass;
}

KyGraphicsViewMultiPass::~KyGraphicsViewMultiPass() {
    notifyEnd();
    leave();
    for (const auto& view : mViews)
        view->mParent = nullptr;
}

KyBaseGraphicsPass* KyGraphicsViewMultiPass::getPass(unsigned index) const {
    return index < mPasses.size() ? mPasses[index].get() : nullptr;
}

KyGraphicsViewMultiPass* KyGraphicsViewMultiPass::getView(unsigned index) const {
    return index < mViews.size() ? mViews[index].get() : nullptr;
}

void KyGraphicsViewMultiPass::setMainPass(KyBaseGraphicsPass* pass) {
    if (pass == mMainPass)
        return;
    const KyHolder<KyBaseGraphicsPass> kept(pass);
    KyBaseGraphicsPass* former = mMainPass;
    mMainPass = nullptr;
    if (former)
        removePass(former);
    if (pass)
        removePass(pass);
    if (pass)
        mPasses.insert(mPasses.begin(), kept);
    mMainPass = pass;
    markModified("MainPass");
}

bool KyGraphicsViewMultiPass::addPass(KyBaseGraphicsPass* pass) {
    return insertPassAt(getNbPasses(), pass);
}

bool KyGraphicsViewMultiPass::insertPassAt(unsigned index, KyBaseGraphicsPass* pass) {
    if (!pass || findIn(mPasses, pass) != mPasses.end())
        return false;
    index = std::min(index, getNbPasses());
    mPasses.insert(mPasses.begin() + index, KyHolder(pass));
    touch();
    notifyModified(eElementInserted, "Passes", static_cast<int>(index));
    return true;
}

bool KyGraphicsViewMultiPass::removePass(KyBaseGraphicsPass* pass) {
    const auto found = findIn(mPasses, pass);
    return found != mPasses.end() && removePassAt(static_cast<unsigned>(found - mPasses.begin()));
}

bool KyGraphicsViewMultiPass::removePassAt(unsigned index) {
    if (index >= mPasses.size())
        return false;
    const KyHolder<KyBaseGraphicsPass> kept = mPasses[index];
    mPasses.erase(mPasses.begin() + index);
    if (kept == mMainPass)
        mMainPass = nullptr;
    touch();
    notifyModified(eElementRemoved, "Passes", static_cast<int>(index));
    return true;
}

bool KyGraphicsViewMultiPass::insert(KyGraphicsViewMultiPass* view, int position) {
    for (const KyGraphicsView* above = this; above; above = above->getParent())
        if (!view || above == view)
            return false;
    const KyHolder<KyGraphicsViewMultiPass> kept(view);
    view->leave();
    const auto count = static_cast<int>(mViews.size());
    const int index = position < 0 ? count : std::min(position, count);
    mViews.insert(mViews.begin() + index, kept);
    view->mParent = this;
    touch();
    notifyModified(eElementInserted, "Views", index);
    return true;
}

bool KyGraphicsViewMultiPass::remove(KyGraphicsViewMultiPass* view) {
    const auto found = findIn(mViews, view);
    return found != mViews.end() && removeViewAt(static_cast<unsigned>(found - mViews.begin()));
}

bool KyGraphicsViewMultiPass::removeViewAt(unsigned index) {
    if (index >= mViews.size())
        return false;
    KyCanvas* canvas = getCanvas();
    // A slot may drop both; what nobody holds must not end with this.
    const KyHolder<KyGraphicsViewMultiPass> self(getNbReferences() > 0 ? this : nullptr), kept = mViews[index];
    const KyHolder<KyCanvas> keptCanvas(canvas && canvas->getNbReferences() > 0 ? canvas : nullptr);
    mViews.erase(mViews.begin() + index);
    kept->mParent = nullptr;
    touch();
    if (canvas)
        kept->tellRemoval(*canvas);
    notifyModified(eElementRemoved, "Views", static_cast<int>(index));
    return true;
}

void KyGraphicsViewMultiPass::tellRemoval(KyCanvas& canvas) {
    for (const KyHolder<KyGraphicsViewMultiPass>& view : std::vector(mViews))
        view->tellRemoval(canvas);
    canvas.viewRemovedSignal().send(this);
}

void KyGraphicsViewMultiPass::leave() {
    if (auto* parent = static_cast<KyGraphicsViewMultiPass*>(mParent))
        parent->remove(this);
    else if (mCanvas)
        mCanvas->removeView(this);
}

void KyGraphicsViewMultiPass::setClearOrder(int order) {
    if (order < 0 || order >= eNbClearOrders || order == mClearOrder)
        return;
    mClearOrder = order;
    markModified("ClearOrder");
}

void KyGraphicsViewMultiPass::setClearColor(const KyColor& color) {
    if (color == mClearColor)
        return;
    mClearColor = color;
    markModified("ClearColor");
}

KyGraphicsViewMultiPass::Passes KyGraphicsViewMultiPass::getSortedPasses() const {
    Passes sorted;
    std::ranges::copy_if(mPasses, std::back_inserter(sorted), &KyBaseGraphicsPass::isEnabled,
                         [](const auto& pass) -> const KyBaseGraphicsPass& { return *pass; });
    std::ranges::stable_sort(sorted, {}, [](const auto& pass) { return pass->getPriority(); });
    return sorted;
}

bool KyGraphicsViewMultiPass::handleEvent(const KyInputEvent& event) {
    if (!isEnabled())
        return false;
    // A handler may take the view away; one that nobody holds must not end with this.
    const KyHolder<KyGraphicsViewMultiPass> kept(getNbReferences() > 0 ? this : nullptr);
    Passes passes = getSortedPasses();
    std::ranges::reverse(passes);
    return std::ranges::any_of(passes, [this, &event](const KyHolder<KyBaseGraphicsPass>& pass) {
        const KyHolder<KyPassEventHandler> handler(pass->getEventHandler());
        event.setInternalEventReturn(false);
        return handler && (handler->handleEvent(event, this, pass.get()) || event.getInternalEventReturn());
    });
}

bool KyGraphicsViewMultiPass::pickPoint(int x, int y, KyVec3d& world) const {
    if (!containsPixel(x, y))
        return false;
    Passes passes = getSortedPasses();
    std::ranges::reverse(passes);
    return std::ranges::any_of(passes, [&](const auto& pass) { return pass->pickPoint(*this, x, y, world); });
}

void KyGraphicsViewMultiPass::render(KyRendererContext& context) {
    const KyRect<int> area = getAreaPixels();
    if (!isEnabled() || area.getWidth() < 1 || area.getHeight() < 1)
        return;
    clear(context);
    for (const KyHolder<KyBaseGraphicsPass>& pass : getSortedPasses())
        renderPass(*pass, context);
    for (const KyHolder<KyGraphicsViewMultiPass>& view : std::vector(mViews))
        view->render(context);
}

void KyGraphicsViewMultiPass::renderPass(KyBaseGraphicsPass& pass, KyRendererContext& context) {
    pass.adaptView(*this);
    pass.preRender(context);
    pass.doRender(context, *this);
    pass.postRender(context);
}

void KyGraphicsViewMultiPass::clear(KyRendererContext& context) const {
    if (mClearOrder == eClearNothing || !context.bind(nullptr, getAreaPixels()))
        return;
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClearColor(mClearColor.red, mClearColor.green, mClearColor.blue, mClearColor.alpha);
    glClearDepth(1.0);
    const GLbitfield color = mClearOrder & eClearColor ? GL_COLOR_BUFFER_BIT : 0;
    const GLbitfield depth = mClearOrder & eClearDepth ? GL_DEPTH_BUFFER_BIT : 0;
    glClear(color | depth);
}

std::uint64_t KyGraphicsViewMultiPass::getRevision() const {
    std::uint64_t revision = KyGraphicsView::getRevision();
    for (const auto& pass : mPasses)
        revision = kyMixRevision(revision, pass->getRevision());
    for (const auto& view : mViews)
        revision = kyMixRevision(revision, view->getRevision());
    return revision;
}

void KyGraphicsViewMultiPass::pick(int x, int y, std::vector<KyGraphicsViewMultiPass*>& found) {
    if (!containsPixel(x, y))
        return;
    for (auto view = mViews.rbegin(); view != mViews.rend(); ++view)
        (*view)->pick(x, y, found);
    found.push_back(this);
}
