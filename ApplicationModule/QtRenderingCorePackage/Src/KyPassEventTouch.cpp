// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventSession_p.h"
#include "KyPassEventUse_p.h"

#include <algorithm>

bool KyPassEventSession::handleTouchBegin(const KyInputEvent& event) {
    mToolTip.hide();
    cancelTouch();
    if (event.getTouchPoints().empty())
        return false;
    if (!isReached(event)) {
        dropKeyboard();
        return false;
    }
    // Before: it may come to its end while it is delivered.
    mTouch = TouchUse::eTouch;
    const bool isUsed = deliver(event);
    if (!isUsed && mTouch == TouchUse::eTouch)
        mTouch = beginTouchAsMouse(event) ? TouchUse::eMouse : TouchUse::eNone;
    if (isUsed || mTouch != TouchUse::eNone)
        takeKeyboard();
    return isUsed || mTouch != TouchUse::eNone;
}

bool KyPassEventSession::beginTouchAsMouse(const KyInputEvent& event) {
    if (!getPass() || !mTarget->takesTouchAsMouse()) {
        cancelTouch();
        return false;
    }
    const int finger = event.getTouchPoints().front().id;
    mTouch = TouchUse::eMouse;
    mFinger = finger;
    if (deliver(KyPassEventMaker::toMouse(event, finger, KyInputEvent::eMousePressed)))
        return true;
    liftFinger(event);
    return false;
}

void KyPassEventSession::liftFinger(const KyInputEvent& event) {
    if (const auto finger = std::exchange(mFinger, std::nullopt))
        deliver(KyPassEventMaker::toMouse(event, *finger, KyInputEvent::eMouseReleased));
}

void KyPassEventSession::continueTouchAsMouse(const KyInputEvent& event) {
    const auto& points = event.getTouchPoints();
    const auto found = mFinger ? std::ranges::find(points, *mFinger, &KyTouchPoint::id) : points.end();
    if (found == points.end())
        return;
    if (found->state == KyTouchPoint::eReleased)
        liftFinger(event);
    else
        deliver(KyPassEventMaker::toMouse(event, *mFinger, KyInputEvent::eMouseMoved));
}

bool KyPassEventSession::handleTouchUpdate(const KyInputEvent& event) {
    if (mTouch == TouchUse::eTouch)
        deliver(event);
    else if (mTouch == TouchUse::eMouse)
        continueTouchAsMouse(event);
    return mTouch != TouchUse::eNone;
}

bool KyPassEventSession::handleTouchEnd(const KyInputEvent& event) {
    const TouchUse use = std::exchange(mTouch, TouchUse::eNone);
    if (use == TouchUse::eTouch)
        deliver(event);
    else if (use == TouchUse::eMouse)
        liftFinger(event);
    return use != TouchUse::eNone;
}

void KyPassEventSession::missTouch() {
    mToolTip.hide();
    cancelTouch();
    dropKeyboard();
}

/// Its end will not come: fingers are lifted where nothing is meant.
void KyPassEventSession::cancelTouch() {
    const TouchUse use = std::exchange(mTouch, TouchUse::eNone);
    if (std::exchange(mFinger, std::nullopt)) {
        mTarget->cancelMouse();
        release(KyInputEvent::cLeftButton);
    }
    if (use != TouchUse::eTouch || !isUsable())
        return;
    const QPointF outside = -mMap.scale;
    if (const auto made = mMaker.makeTouchCancel(mTarget->knowsTouchCancel(), outside, mMap.toDesktop(outside)))
        mTarget->deliver(*made);
}

void KyPassEventSession::onTouchCanceled(bool asMouse) {
    if (!isUsable())
        return;
    const Use use(*this);
    if (asMouse)
        cancelMouse();
    else
        cancelTouch();
    leave();
}
