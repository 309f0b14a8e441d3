// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventSession_p.h"

#include "KyPassEventUse_p.h"

#include <QGuiApplication>
#include <QInputMethod>

namespace {

/// There is one keyboard for all passes: what took it last.
std::weak_ptr<KyPassEventSession> gKeyboardSession;

} // namespace

void KyPassEventSession::onKeyboardFocus(bool isGained) {
    if (!isUsable())
        return;
    const Use use(*this);
    if (isGained) {
        if (std::exchange(mWantsKeyboard, false))
            setFocused(true);
        return;
    }
    mToolTip.hide();
    const bool hadKeyboard = mTarget->isFocused() || mWantsKeyboard;
    dropKeyboard();
    mWantsKeyboard = hadKeyboard;
}

void KyPassEventSession::takeKeyboard() {
    const auto other = std::exchange(gKeyboardSession, weak_from_this()).lock();
    if (other && other.get() != this)
        other->dropKeyboard();
    setFocused(true);
}

bool KyPassEventSession::takeKeyboard(KyGraphicsViewMultiPass& view) {
    if (!isUsable())
        return false;
    const Use use(*this);
    enter(view);
    const auto former = gKeyboardSession.lock();
    takeKeyboard();
    if (getPass() && mTarget->focusField())
        return true;
    dropKeyboard();
    gKeyboardSession.reset();
    if (former && former.get() != this && former->isUsable())
        former->takeKeyboard();
    return false;
}

/// Keys go to who was given them, wherever the pointer is.
void KyPassEventSession::missKey(const KyInputEvent& event) {
    if (!event.getInternalEventReturn() && gKeyboardSession.lock().get() == this && mTarget->isFocused())
        event.setInternalEventReturn(handleKey(event));
}

bool KyPassEventSession::dropLastKeyboard() {
    const auto session = gKeyboardSession.lock();
    if (!session || !session->isUsable() || !session->mTarget->isFocused() || !session->hasKeyboardFocus())
        return false;
    const Use use(*session);
    session->mToolTip.hide();
    session->dropKeyboard();
    return true;
}

void KyPassEventSession::dropKeyboard() {
    setFocused(false);
}

void KyPassEventSession::setFocused(bool isFocused) {
    mWantsKeyboard = false;
    if (getPass())
        mTarget->setFocused(isFocused);
    if (mIsInputMethodEnabled)
        QGuiApplication::inputMethod()->update(Qt::ImQueryAll);
}
