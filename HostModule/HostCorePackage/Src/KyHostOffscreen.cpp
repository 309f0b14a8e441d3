// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostOffscreen.h"

#include "KyHostStage.h"

#include "KyFrameBuffer.h"
#include "KyOffscreenContext.h"

#include "KyTimer.h"

namespace {

constexpr int cMicrosecondsPerFrame = 1000000 / 60;

} // namespace

std::unique_ptr<KyHostOffscreen> KyHostOffscreen::create(KyHostStage& stage, int width, int height,
                                                         std::string& error) {
    std::unique_ptr<KyOffscreenContext> context = KyOffscreenContext::create(error);
    if (!context)
        return nullptr;
    return std::unique_ptr<KyHostOffscreen>(new KyHostOffscreen(stage, std::move(context), width, height));
}

KyHostOffscreen::KyHostOffscreen(KyHostStage& stage, std::unique_ptr<KyOffscreenContext> context, int width, int height)
    : mStage(stage)
    , mContext(std::move(context))
    , mTarget(KyFrameBuffer::create()) {
    mTarget->setSize(width, height);
}

KyHostOffscreen::~KyHostOffscreen() {
    KyHostOffscreen::makeCurrent();
}

void KyHostOffscreen::draw() {
    const long long begin = KyTimer::getCurrentUS();
    if (begin >= mEarliestDrawing && makeCurrent()) {
        mStage.draw(*mContext, mTarget.get());
        const long long end = KyTimer::getCurrentUS();
        const long long took = end - begin;
        mEarliestDrawing = took > cMicrosecondsPerFrame ? end + took : end;
    }
    mListeners.drawn();
}

int KyHostOffscreen::getFrameInterval() const {
    return cMicrosecondsPerFrame;
}

bool KyHostOffscreen::makeCurrent() {
    return mContext->makeCurrent();
}

bool KyHostOffscreen::savePicture(const std::string& path, std::string& error) {
    makeCurrent();
    return mStage.savePicture(*mContext, path, error);
}
