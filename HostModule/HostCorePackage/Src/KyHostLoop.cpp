// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostLoop.h"

#include "KyHost.h"
#include "KyHostDrawing.h"
#include "KyHostStage.h"
#include "KyHostSurface.h"

#include "KyNetworkConnectionObject.h"
#include "KyScriptEngine.h"

#include "KyMainTaskManager.h"
#include "KyTimer.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr int cNominalInterval = 1000000 / 60;
/// A window that is covered or minimised may never be drawn: its frames go on all the same after this many
/// milliseconds.
constexpr int cLongestWait = 100;

/// For a script, whether or not one of its coroutines waits for it.
bool isDownloading() {
    const KyNetworkConnectionObject* const network = KyNetworkConnectionObject::find();
    return network && network->isDownloading();
}

/// A download ends with the event loops. Nobody is told: what scripts have drawn stays until the picture is taken.
void abandonDownload() {
    if (KyNetworkConnectionObject* const network = KyNetworkConnectionObject::find())
        network->abandon();
}

} // namespace

KyHostSurface::~KyHostSurface() = default;

void KyHostSurface::open() {
    if (!std::exchange(mIsOpen, true))
        onOpened();
}

KyHostLoop::KyHostLoop(KyHost& host, KyHostStage& stage, KyHostSurface* surface, const Limits& limits)
    : mHost(host)
    , mStage(stage)
    , mSurface(surface)
    , mLimits(limits) {
    mTimer.setSingleShot(true);
    mTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&mTimer, &QTimer::timeout, [this] { runFrame(); });
    if (mSurface)
        mSurface->setListeners({[this] { onDrawn(); },
                                [this] {
                                    mHost.quit();
                                    wake();
                                }});
}

void KyHostLoop::run() {
    mIsOver = isOver();
    if (mIsOver)
        return;
    mDue = KyTimer::getCurrentUS();
    mTimer.start(0);
    QCoreApplication::exec();
    mTimer.stop();
}

void KyHostLoop::wake() {
    if (mIsOver || mIsRunningFrame)
        return;
    if (isOver()) {
        mIsOver = true;
        abandonDownload();
        QCoreApplication::quit();
    } else if (!mIsWaitingForDisplay) {
        startTimerUntilDue();
    }
}

/// A script may run an event loop of its own, in which the timer fires again.
void KyHostLoop::runFrame() {
    if (mIsRunningFrame || mIsOver)
        return;
    mIsRunningFrame = true;
    mIsWaitingForDisplay = false;
    const long long now = KyTimer::getCurrentUS();
    KyMainTaskManager::get().update();
    if (mFlush)
        mFlush();
    else
        std::fflush(stdout);
    // A scene may come later than the windows, and what was shown instead of it may end.
    if (mSurface && !mSurface->isOpen() && (!mStage.isEmpty() || !KyHostDrawing::findShownView()))
        mSurface->open();
    const bool draws = mSurface && mSurface->isOpen() && (mStage.needsDrawing() || mSurface->needsDrawing());
    mHost.countFrame(now);
    mDue = std::max(mDue + (mSurface ? mSurface->getFrameInterval() : cNominalInterval), now);
    mIsWaitingForDisplay = draws;
    if (draws)
        mSurface->draw();
    mIsRunningFrame = false;
    if (isOver())
        wake();
    else
        scheduleNext(mIsWaitingForDisplay);
}

void KyHostLoop::redraw() {
    if (!mSurface)
        return;
    if (!mSurface->isOpen() && !mStage.isEmpty())
        mSurface->open();
    if (mSurface->isOpen() && (mStage.needsDrawing() || mSurface->needsDrawing()))
        mSurface->draw();
}

void KyHostLoop::processEvents() {
    const bool isWithinFrame = std::exchange(mIsRunningFrame, true);
    redraw();
    QCoreApplication::processEvents();
    mIsRunningFrame = isWithinFrame;
    if (isWithinFrame || mIsOver)
        return;
    // The frame that was due may have been passed over.
    mIsWaitingForDisplay = false;
    wake();
}

void KyHostLoop::onDrawn() {
    if (!std::exchange(mIsWaitingForDisplay, false) || mIsRunningFrame)
        return;
    scheduleNext(false);
}

void KyHostLoop::scheduleNext(bool waitsForDisplay) {
    if (mIsOver)
        return;
    if (waitsForDisplay)
        mTimer.start(cLongestWait);
    else
        startTimerUntilDue();
}

void KyHostLoop::startTimerUntilDue() {
    const long long wait = isPaced() ? mDue - KyTimer::getCurrentUS() : 0;
    mTimer.start(static_cast<int>(std::max(wait + 500, 0LL) / 1000));
}

bool KyHostLoop::isOver() const {
    if (mHost.isQuitting())
        return true;
    if (mLimits.nbFrames && mHost.getFrameCount() >= static_cast<unsigned>(*mLimits.nbFrames))
        return true;
    return mLimits.endsWithCoroutines && KyScriptEngine::get().getNbCoroutines() == 0 && !isDownloading();
}

bool KyHostLoop::isPaced() const {
    return mLimits.isOpenEnded || KyScriptEngine::get().getNbCoroutines() > 0 || isDownloading();
}
