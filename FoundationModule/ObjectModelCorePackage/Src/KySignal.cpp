// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySignal.h"

#include <algorithm>

bool KyConnection::isConnected() const {
    const auto slot = mSlot.lock();
    return slot && slot->isConnected();
}

void KyConnection::disconnect() {
    const auto slot = mSlot.lock();
    if (slot && slot->signal)
        slot->signal->drop(*slot);
}

KyHasSlots::~KyHasSlots() {
    disconnectAll();
}

void KyHasSlots::disconnectAll() {
    const auto connections = std::exchange(mConnections, {});
    for (const auto& connection : connections) {
        const auto slot = connection.lock();
        if (slot && slot->signal)
            slot->signal->drop(*slot);
    }
}

void KyHasSlots::enter(const std::shared_ptr<KySlot>& slot) {
    if (mConnections.size() == mConnections.capacity())
        std::erase_if(mConnections, [](const std::weak_ptr<KySlot>& connection) {
            const auto known = connection.lock();
            return !known || !known->isConnected();
        });
    mConnections.emplace_back(slot);
}

KySignalBase::Emission::Emission(KySignalBase& signal)
    : mSignal(&signal)
    , mOuter(signal.mEmission) {
    signal.mEmission = this;
}

KySignalBase::Emission::~Emission() {
    if (!mSignal)
        return;
    mSignal->mEmission = mOuter;
    if (!mOuter && mSignal->mNeedsCompaction)
        mSignal->compact();
}

KySignalBase::~KySignalBase() {
    for (Emission* emission = mEmission; emission; emission = emission->mOuter)
        emission->mSignal = nullptr;
    for (const auto& slot : mSlots)
        slot->signal = nullptr;
}

unsigned KySignalBase::getNbConnections() const {
    return static_cast<unsigned>(
        std::count_if(mSlots.begin(), mSlots.end(), [](const auto& slot) { return slot->isConnected(); }));
}

void KySignalBase::disconnect(const KyHasSlots* receiver) {
    const Slots slots = mSlots;
    for (const auto& slot : slots)
        if (slot->receiver == receiver && slot->isConnected())
            drop(*slot);
}

void KySignalBase::disconnectAll() {
    const Slots slots = mSlots;
    for (const auto& slot : slots)
        drop(*slot);
}

KyConnection KySignalBase::enter(std::shared_ptr<KySlot> slot, KyHasSlots* receiver) {
    slot->signal = this;
    slot->receiver = receiver;
    if (receiver)
        receiver->enter(slot);
    KyConnection connection{std::weak_ptr<KySlot>(slot)};
    mSlots.push_back(std::move(slot));
    return connection;
}

void KySignalBase::drop(KySlot& slot) {
    slot.signal = nullptr;
    mNeedsCompaction = true;
    if (!mEmission)
        compact();
}

void KySignalBase::dropKey(const KyHasSlots* receiver, const KySlot::Key& key) {
    const auto found = std::find_if(mSlots.begin(), mSlots.end(), [&](const auto& slot) {
        return slot->isConnected() && slot->receiver == receiver && slot->key == key;
    });
    if (found != mSlots.end())
        drop(**found);
}

void KySignalBase::compact() {
    mNeedsCompaction = false;
    std::erase_if(mSlots, [](const auto& slot) { return !slot->isConnected(); });
}
