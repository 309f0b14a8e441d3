// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindowEvents_p.h"

#include "KyWindow.h"

bool KyWindowEvents::eventFilter(QObject* watched, QEvent* event) {
    if (mWindow.mHasEnded || !mWindow.isForCanvas(watched, event))
        return false;
    const KyWindow::Busy busy(mWindow);
    mWindow.mUsedEvent = nullptr;
    setPixelRatio(mWindow.getPixelRatio());
    return KyQEventCanvasProvider::eventFilter(watched, event);
}

void KyWindowEvents::setInputEvent(KyInputEvent& event) {
    if (mWindow.mHasEnded)
        return;
    const KyObjectReference window(&mWindow);
    mWindow.fitCanvas();
    mWindow.placeEvent(event);
    KyQEventCanvasProvider::setInputEvent(event);
    if (window && event.getInternalEventReturn())
        mWindow.mUsedEvent = event.getNativeEvent();
}
