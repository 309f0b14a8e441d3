// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySpaceMouseSource_p.h"

#include "KyDevice.h"

#include <chrono>

/// One 3D mouse. It stays when its unit vanishes, at rest, and can be given the unit again.
class KySpaceMouseDevice : public KyDevice {
public:
    /// `turnSpeed` is in radians a second.
    KySpaceMouseDevice(const KySpaceMouseUnit& unit, std::unique_ptr<KySpaceMouseSource> source, float turnSpeed);

    const KySpaceMouseUnit& getUnit() const { return mUnit; }
    bool isPresent() const { return mSource != nullptr; }
    void setSource(const KySpaceMouseUnit& unit, std::unique_ptr<KySpaceMouseSource> source);
    /// Closes the unit, and brings the channels to rest.
    void detach();
    /// For a disabled device, which execute() does not serve: it rests when its unit is gone, and what the unit sends
    /// is not left to pile up.
    void checkUnit();

    bool execute() override;

private:
    using Clock = std::chrono::steady_clock;

    void nameAxes();
    void nameButtons();
    /// False when the unit has gone, and the device was brought to rest, just now.
    bool poll();
    void pushReadings();
    KyQuat<float> getTurn(float seconds) const;
    float measureCycle();

    KySpaceMouseUnit mUnit;
    std::unique_ptr<KySpaceMouseSource> mSource;
    KySpaceMouseState mState;
    float mTurnSpeed;
    Clock::time_point mLastCycle = Clock::now();
};
