// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyManipulatorEventHandler.h"

#include "KyManipulator.h"

#include "KyCallSignatures.h"
#include "KyInputEvent.h"
#include "KyTypeBuilder.h"

#include <algorithm>

const KyType* KyManipulatorEventHandler::msType = nullptr;
bool KyManipulatorEventHandler::msIsClassInitialized = false;

namespace {

KyManipulator* getLiving(const KyObjectReference& reference) {
    KyObject* object = reference.get();
    return object && !object->isEnding() ? static_cast<KyManipulator*>(object) : nullptr;
}

} // namespace

void KyManipulatorEventHandler::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
}

void KyManipulatorEventHandler::initializeType() {
    if (msType)
        return;
    using Handler = KyManipulatorEventHandler;
    msType = KyTypeBuilder<Handler>("KyManipulatorEventHandler", KyPassEventHandler::getType())
                 .factory()
                 .attribute("Manipulator", &Handler::editManipulator, &Handler::setManipulator)
                 .container("Manipulators", &Handler::getNbManipulators, &Handler::editElementManipulator, nullptr,
                            &Handler::insertManipulator, &Handler::removeManipulator)
                 .method("setManipulator", &Handler::setManipulator)
                 .method("getManipulator", &Handler::editManipulator)
                 .method("setMultipleManipulators", &Handler::setMultipleManipulators)
                 .method("getNbManipulators", &Handler::getNbManipulators)
                 .method("getElementManipulator", &Handler::editElementManipulator)
                 .method("removeManipulator", &Handler::removeManipulator)
                 .build();
    KyCallSignatures::add("KyManipulatorEventHandler", {"getElementManipulator(index)", "removeManipulator(index)",
                                                        "setMultipleManipulators(manipulator)"});
}

void KyManipulatorEventHandler::finalizeType() {
    msIsClassInitialized = false;
    KyType::remove(msType);
}

const KyType* KyManipulatorEventHandler::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyManipulatorEventHandler::getObjectType() const {
    return getType();
}

KyManipulatorEventHandler* KyManipulatorEventHandler::cast(KyObject* object) {
    return kyCast<KyManipulatorEventHandler>(object);
}

KyObject* KyManipulatorEventHandler::factory() {
    return create();
}

KyManipulator* KyManipulatorEventHandler::editManipulator() const {
    return getLiving(mManipulator);
}

void KyManipulatorEventHandler::setManipulator(KyManipulator* manipulator) {
    if (manipulator == editManipulator())
        return;
    mManipulator = KyObjectReference(manipulator);
    notifyModified("Manipulator");
}

KyManipulator* KyManipulatorEventHandler::editElementManipulator(unsigned index) const {
    return index < mManipulators.size() ? getLiving(mManipulators[index]) : nullptr;
}

void KyManipulatorEventHandler::setMultipleManipulators(KyManipulator* manipulator) {
    if (!manipulator)
        return;
    const KyObjectReference self(this), given(manipulator);
    removeGone();
    if (self.get() && given.get())
        insertManipulator(getNbManipulators(), manipulator);
}

void KyManipulatorEventHandler::removeGone() {
    const auto isGone = [](const KyObjectReference& reference) { return !getLiving(reference); };
    // Anew each time: a listener may change the list, or end this.
    for (const KyObjectReference self(this); self.get();) {
        const auto found = std::ranges::find_if(mManipulators, isGone);
        if (found == mManipulators.end())
            return;
        removeManipulator(static_cast<unsigned>(found - mManipulators.begin()));
    }
}

bool KyManipulatorEventHandler::insertManipulator(unsigned index, KyManipulator* manipulator) {
    if (!manipulator)
        return false;
    index = std::min(index, getNbManipulators());
    mManipulators.insert(mManipulators.begin() + index, KyObjectReference(manipulator));
    notifyModified(eElementInserted, "Manipulators", static_cast<int>(index));
    return true;
}

bool KyManipulatorEventHandler::removeManipulator(unsigned index) {
    if (index >= mManipulators.size())
        return false;
    mManipulators.erase(mManipulators.begin() + index);
    notifyModified(eElementRemoved, "Manipulators", static_cast<int>(index));
    return true;
}

bool KyManipulatorEventHandler::handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass*, KyBaseGraphicsPass*) {
    const KyObjectReference self(this);
    const auto offer = [&event](KyManipulator* manipulator) {
        const bool isUsed = manipulator && manipulator->setInputEvent(event);
        if (manipulator)
            event.setInternalEventReturn(isUsed);
        return isUsed;
    };
    if (offer(editManipulator()))
        return true;
    if (!self.get())
        return false;
    // A copy: a manipulator may change the list, or end this.
    const std::vector<KyObjectReference> listed = mManipulators;
    return std::ranges::any_of(listed, [&](const KyObjectReference& reference) {
        const bool isListed = self.get() && std::ranges::find(mManipulators, reference) != mManipulators.end();
        return isListed && offer(getLiving(reference));
    });
}
