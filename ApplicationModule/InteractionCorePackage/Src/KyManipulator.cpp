// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyManipulator.h"

#include "KyGraphicsViewMultiPass.h"

#include "KyError.h"
#include "KyTypeBuilder.h"
#include "KyVec3.h"

#include <utility>

const KyType* KyManipulator::msType = nullptr;

namespace {

// Marks in the state words of a touch sequence's first two updates: an end right after one of them is a tap.
constexpr std::uint32_t cFirstUpdate = 0xFFFFFFFFu;
constexpr std::uint32_t cSecondUpdate = 31u;

} // namespace

KyManipulator::KyManipulator() = default;

KyManipulator::~KyManipulator() {
    if (mIsGone)
        *mIsGone = true;
}

void KyManipulator::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyManipulator>("KyManipulator", KyObject::getType())
                 .factory()
                 .attribute("Object", &KyManipulator::getObject, &KyManipulator::setObject)
                 .attribute("View", &KyManipulator::getView, &KyManipulator::setView)
                 .attribute("ViewMultiPass", &KyManipulator::editViewMultiPass, &KyManipulator::setViewMultiPass)
                 .attribute("Enabled", &KyManipulator::getIsEnabled, &KyManipulator::setIsEnabled)
                 .method("reset", &KyManipulator::reset)
                 .build();
}

void KyManipulator::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyManipulator::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyManipulator::getObjectType() const {
    return getType();
}

KyManipulator* KyManipulator::cast(KyObject* object) {
    return kyCast<KyManipulator>(object);
}

KyObject* KyManipulator::factory() {
    return create();
}

KyGraphicsView* KyManipulator::getView() const {
    return static_cast<KyGraphicsView*>(getLiving(mView));
}

KyGraphicsViewMultiPass* KyManipulator::editViewMultiPass() const {
    return static_cast<KyGraphicsViewMultiPass*>(getLiving(mViewMultiPass));
}

void KyManipulator::setObject(KyObject* object) {
    if (object && !acceptObject(object)) {
        KyError::create("KyManipulator: setObject(): object do not fit requirements");
        return;
    }
    const bool isOther = object != getObject();
    mObject = KyObjectReference(object);
    if (object)
        initialize();
    if (isOther)
        notifyModified("Object");
}

void KyManipulator::setView(KyGraphicsView* view) {
    if (view == getView())
        return;
    mView = KyObjectReference(view);
    notifyModified("View");
}

void KyManipulator::setViewMultiPass(KyGraphicsViewMultiPass* view) {
    if (view == editViewMultiPass())
        return;
    mViewMultiPass = KyObjectReference(view);
    notifyModified("ViewMultiPass");
}

void KyManipulator::setIsEnabled(bool isEnabled) {
    if (isEnabled == mIsEnabled)
        return;
    mIsEnabled = isEnabled;
    mHasMissedEvents = true;
    handleIsEnabled();
    notifyModified("Enabled");
}

template <class Handle>
bool KyManipulator::handle(const KyInputEvent& event, Handle handle) {
    if (!mIsEnabled || !acceptEvent(event))
        return false;
    bool isGone = false;
    bool* const outer = std::exchange(mIsGone, &isGone);
    pushEvent(event);
    // Not before: the event may be one of the two.
    if (mHasMissedEvents)
        forgetPrevious();
    const bool isUsed = handle();
    if (!isGone) {
        mIsGone = outer;
        editInputEvent().setNativeEvent(nullptr);
    } else if (outer) {
        *outer = true;
    }
    return isUsed;
}

bool KyManipulator::setInputEvent(const KyInputEvent& event) {
    return handle(event, [this] { return handleEvents(); });
}

bool KyManipulator::setInputEvent(const KyInputEvent& event, const KyVec3d& point) {
    return handle(event, [this, &point] { return handleEvents(point); });
}

void KyManipulator::pushEvent(const KyInputEvent& event) {
    if (&event == mCurrent || &event == mPrevious)
        return pushCopy(event);
    if (mPrevious->getType() == KyInputEvent::eTouchUpdated && mPrevious->getState() == cFirstUpdate)
        mCurrent->setState(cSecondUpdate);
    if (mPrevious->getType() == KyInputEvent::eTouchBegan)
        mCurrent->setState(cFirstUpdate);
    // An event that comes in while another one is handled finds that one's still there.
    mCurrent->setNativeEvent(nullptr);
    std::swap(mCurrent, mPrevious);
    *mCurrent = event;
}

void KyManipulator::pushCopy(const KyInputEvent& event) {
    pushEvent(KyInputEvent(event));
}

void KyManipulator::forgetPrevious() {
    mHasMissedEvents = false;
    *mPrevious = KyInputEvent();
}

void KyManipulator::flushEventStack() {
    mHasMissedEvents = false;
    mEvents = {};
}

bool KyManipulator::acceptObject(KyObject*) const {
    return true;
}

bool KyManipulator::handleEvents() {
    return false;
}

bool KyManipulator::handleEvents(const KyVec3d&) {
    return handleEvents();
}

void KyManipulator::initialize() {}

void KyManipulator::reset() {
    flushEventStack();
}
