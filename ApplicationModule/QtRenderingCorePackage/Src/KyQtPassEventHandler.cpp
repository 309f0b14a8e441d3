// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPassEventHandler.h"

#include "KyPassEventSession_p.h"

#include "KyBaseGraphicsPass.h"
#include "KyGraphicsViewMultiPass.h"

#include "KyCallSignatures.h"
#include "KyHolder.h"
#include "KyInputEvent.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <vector>

const KyType* KyQtPassEventHandler::msType = nullptr;

/// One for each pass that it serves.
class KyQtPassEventHandler::Sessions {
public:
    /// Null when there was no event for it yet.
    std::shared_ptr<KyPassEventSession> find(const KyBaseGraphicsPass* pass) const {
        const auto found =
            std::ranges::find(mSessions, static_cast<const KyObject*>(pass), &KyPassEventSession::getPass);
        return pass && found != mSessions.end() ? *found : nullptr;
    }
    /// Null for passes of other kinds.
    std::shared_ptr<KyPassEventSession> findOrCreate(KyBaseGraphicsPass* pass) {
        if (auto found = find(pass))
            return found;
        std::erase_if(mSessions, [](const auto& session) { return !session->getPass(); });
        auto session = KyPassEventSession::create(pass);
        if (session)
            mSessions.push_back(session);
        return session;
    }
    /// What `action` does with the session of the pass; false for passes of other kinds.
    template <class Action>
    bool use(KyBaseGraphicsPass& pass, bool isInputMethodEnabled, Action action) {
        // Its Qt view must not end in the middle of an event; one that nobody holds must not end with this.
        const KyHolder<KyBaseGraphicsPass> kept(pass.getNbReferences() > 0 ? &pass : nullptr);
        const auto session = findOrCreate(&pass);
        if (!session)
            return false;
        session->setInputMethodEnabled(isInputMethodEnabled);
        return action(*session);
    }

private:
    std::vector<std::shared_ptr<KyPassEventSession>> mSessions;
};

void KyQtPassEventHandler::initializeType() {
    if (msType)
        return;
    using Handler = KyQtPassEventHandler;
    msType = KyTypeBuilder<Handler>("KyQtPassEventHandler", KyPassEventHandler::getType())
                 .factory()
                 .attribute("InputMethodEnabled", &Handler::isInputMethodEnabled, &Handler::setInputMethodEnabled)
                 .method("isGrabbing", &Handler::isGrabbing)
                 .method("hasKeyboardFocus", &Handler::hasKeyboardFocus)
                 .method("leave", &Handler::leave)
                 .build();
    KyCallSignatures::add("KyQtPassEventHandler", {"hasKeyboardFocus(pass)", "isGrabbing(pass)", "leave(pass)"});
}

void KyQtPassEventHandler::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQtPassEventHandler::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQtPassEventHandler::getObjectType() const {
    return getType();
}

KyQtPassEventHandler* KyQtPassEventHandler::cast(KyObject* object) {
    return kyCast<KyQtPassEventHandler>(object);
}

KyObject* KyQtPassEventHandler::factory() {
    return create();
}

KyQtPassEventHandler::KyQtPassEventHandler()
    : mSessions(std::make_unique<Sessions>()) {}

KyQtPassEventHandler::~KyQtPassEventHandler() = default;

void KyQtPassEventHandler::setInputMethodEnabled(bool isEnabled) {
    if (isEnabled == mIsInputMethodEnabled)
        return;
    mIsInputMethodEnabled = isEnabled;
    notifyModified("InputMethodEnabled");
}

bool KyQtPassEventHandler::handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view,
                                       KyBaseGraphicsPass* pass) {
    event.setInternalEventReturn(false);
    if (!view || !pass)
        return false;
    const bool isUsed = mSessions->use(*pass, mIsInputMethodEnabled,
                                       [&](KyPassEventSession& session) { return session.handle(event, *view); });
    event.setInternalEventReturn(isUsed);
    return isUsed;
}

bool KyQtPassEventHandler::isGrabbing(const KyBaseGraphicsPass* pass) const {
    const auto session = mSessions->find(pass);
    return session && session->isGrabbing();
}

bool KyQtPassEventHandler::hasKeyboardFocus(const KyBaseGraphicsPass* pass) const {
    const auto session = mSessions->find(pass);
    return session && session->hasKeyboardFocus();
}

bool KyQtPassEventHandler::takeKeyboardFocus(KyBaseGraphicsPass* pass, KyGraphicsViewMultiPass* view) {
    return view && pass && mSessions->use(*pass, mIsInputMethodEnabled, [view](KyPassEventSession& session) {
        return session.takeKeyboard(*view);
    });
}

bool KyQtPassEventHandler::dropKeyboardFocus() {
    return KyPassEventSession::dropLastKeyboard();
}

void KyQtPassEventHandler::leave(KyBaseGraphicsPass* pass) {
    if (const auto session = mSessions->find(pass))
        session->leave();
}
