// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBaseGraphicsPass.h"

#include "KyGraphicsViewMultiPass.h"

#include "KyTypeBuilder.h"

#include <cmath>

const KyType* KyBaseGraphicsPass::msType = nullptr;

void KyBaseGraphicsPass::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyBaseGraphicsPass>("KyBaseGraphicsPass", KyObject::getType())
                 .attribute("Name", &KyBaseGraphicsPass::getName, &KyBaseGraphicsPass::setName)
                 .attribute("Enabled", &KyBaseGraphicsPass::isEnabled, &KyBaseGraphicsPass::setEnabled)
                 .attribute("Priority", &KyBaseGraphicsPass::getPriority, &KyBaseGraphicsPass::setPriority)
                 .attribute("EventHandler", &KyBaseGraphicsPass::getEventHandler, &KyBaseGraphicsPass::setEventHandler)
                 .attribute("FrameBuffer", &KyBaseGraphicsPass::getFrameBuffer, &KyBaseGraphicsPass::setFrameBuffer)
                 .build();
}

void KyBaseGraphicsPass::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyBaseGraphicsPass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyBaseGraphicsPass::getObjectType() const {
    return getType();
}

KyBaseGraphicsPass* KyBaseGraphicsPass::cast(KyObject* object) {
    return kyCast<KyBaseGraphicsPass>(object);
}

KyBaseGraphicsPass::KyBaseGraphicsPass(const KyBaseGraphicsPass& other)
    : KyObject(other)
    , KyReferenceCounted(other)
    , mName(other.mName)
    , mPriority(other.mPriority)
    , mIsEnabled(other.mIsEnabled)
    , mEventHandler(other.mEventHandler) {}

void KyBaseGraphicsPass::setName(const std::string& name) {
    if (name == mName)
        return;
    mName = name;
    notifyModified("Name");
}

KyRect<int> KyBaseGraphicsPass::getAreaPixels(const KyGraphicsViewMultiPass* view) const {
    return view ? view->getAreaPixels() : KyRect<int>();
}

bool KyBaseGraphicsPass::pickPoint(const KyGraphicsViewMultiPass&, int, int, KyVec3d&) const {
    return false;
}

void KyBaseGraphicsPass::setEnabled(bool isEnabled) {
    if (isEnabled == mIsEnabled)
        return;
    mIsEnabled = isEnabled;
    markModified("Enabled");
}

void KyBaseGraphicsPass::setPriority(float priority) {
    if (std::isnan(priority) || priority == mPriority)
        return;
    mPriority = priority;
    markModified("Priority");
}

void KyBaseGraphicsPass::setEventHandler(KyPassEventHandler* handler) {
    mEventHandler.reset(handler);
}

void KyBaseGraphicsPass::setFrameBuffer(KyFrameBuffer* buffer) {
    if (mFrameBuffer == buffer)
        return;
    mFrameBuffer.reset(buffer);
    touch();
}

bool KyBaseGraphicsPass::adaptView(const KyGraphicsViewMultiPass& view) {
    const KyRect<int> area = getAreaPixels(&view);
    if (area.getWidth() == mViewportWidth && area.getHeight() == mViewportHeight)
        return false;
    mViewportWidth = area.getWidth();
    mViewportHeight = area.getHeight();
    return true;
}

void KyBaseGraphicsPass::preRender(KyRendererContext&) {}

void KyBaseGraphicsPass::doRender(KyRendererContext&, KyGraphicsViewMultiPass&) {}

void KyBaseGraphicsPass::postRender(KyRendererContext&) {}

void KyBaseGraphicsPass::markModified(std::string_view attribute) {
    touch();
    notifyModified(attribute);
}
