// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAxisClampMode.h"
#include "KyDeviceChannel.h"

#include <cmath>
#include <limits>

/// One number of a device, conditioned: its readings are positions (absolute) or steps (relative), a position is
/// clamped to the range, and an absolute axis has a dead zone about the centre of its range, beyond which the rest is
/// stretched so that the bounds stay where they are. With a range whose centre is not 0 the stretching starts at the
/// width and not at the edge of the zone, so that values leave the range there.
///
///     axis.setAbsolute(true);
///     axis.setDeadZoneWidth(0.2f);   // 0.1 reads 0, 0.6 reads 0.5, 1 reads 1
///
/// The setters of the configuration store what they are given and take effect at the next reading. Readings that are
/// not finite are ignored.
class KYAPPLICATION_EXPORT KyDeviceAxisChannel : public KyDeviceChannel {
public:
    /// The bounds of a position, -1 and 1. With a minimum above the maximum every position is the maximum.
    void setMinimum(float minimum) { mMinimum = minimum; }
    /// See setMinimum.
    void setMaximum(float maximum) { mMaximum = maximum; }
    /// The way that one step of a relative axis goes, 0.1. With 0 it never moves and reads 0.
    void setStepFactor(float factor) { mStepFactor = factor; }
    /// Half of the dead zone, 0 for none. As wide as the range, there are only the dead zone and the bounds.
    void setDeadZoneWidth(float width) { mDeadZoneWidth = width; }
    /// What is read in the dead zone, 0.
    void setDeadZoneValue(float value) { mDeadZoneValue = value; }
    /// What happens to a position outside of the bounds.
    void setClampMode(KyAxisClampMode mode) { mClampMode = mode; }
    /// Whether the driver's readings are positions.
    void setAbsolute(bool absolute) { mIsAbsolute = absolute; }
    /// Whether the driver's readings are steps.
    void setRelative(bool relative) { mIsAbsolute = !relative; }

    float getMinimum() const { return mMinimum; }
    float getMaximum() const { return mMaximum; }
    float getStepFactor() const { return mStepFactor; }
    float getDeadZoneWidth() const { return mDeadZoneWidth; }
    float getDeadZoneValue() const { return mDeadZoneValue; }
    KyAxisClampMode getClampMode() const { return mClampMode; }
    bool isAbsolute() const { return mIsAbsolute; }

    /// The position when absolute; else the last step as far as the range allowed it, 0 at a bound.
    virtual float getValue() const;
    /// A reading from others than the driver; does nothing while the access mode is read-only.
    void setValue(float value);

protected:
    friend class KyDevice;

    /// The driver's reading: a position when absolute, else a step.
    void setDeviceValue(float value) {
        if (mIsAbsolute)
            setAbsoluteValue(value);
        else
            setDeltaValue(value);
    }
    /// A step, whatever the axis is.
    inline void setDeltaValue(float value);
    /// A position, whatever the axis is; a relative one reports the way to it in steps.
    inline void setAbsoluteValue(float value);
    float getAbsoluteValue() const { return mAbsoluteValue; }
    float getDeltaValue() const { return mDeltaValue; }
    /// The delta alone, without a movement.
    void overrideDeltaValue(float value) { mDeltaValue = value; }

private:
    inline void placeAt(float position);
    inline void moveTo(float position);
    inline float clamp(float position) const;
    inline float applyDeadZone(float position) const;
    /// The line that takes `edge` to the value of the dead zone and leaves the bound where it is.
    inline float stretch(float position, float bound, float edge) const;

    static constexpr float cEpsilon = std::numeric_limits<float>::epsilon();

    float mValue = 0.0F;
    float mAbsoluteValue = 0.0F;
    float mDeltaValue = 0.0F;
    float mMinimum = -1.0F;
    float mMaximum = 1.0F;
    float mStepFactor = 0.1F;
    float mDeadZoneWidth = 0.0F;
    float mDeadZoneValue = 0.0F;
    bool mIsAbsolute = false;
    KyAxisClampMode mClampMode = eClampAll;
};

// Drivers set axes by the hundred in every frame: what follows stands here to become part of their loops.

inline void KyDeviceAxisChannel::setDeltaValue(float value) {
    const float position = mAbsoluteValue + mStepFactor * value;
    if (!std::isfinite(position)) [[unlikely]] {
        // A bound that was infinite for a while must not hold the axis for ever.
        if (!std::isfinite(mAbsoluteValue))
            mAbsoluteValue = 0.0F;
        return;
    }
    if (!mIsAbsolute)
        return moveTo(position);
    mDeltaValue = value;
    placeAt(position);
}

inline void KyDeviceAxisChannel::setAbsoluteValue(float value) {
    if (!std::isfinite(value))
        return;
    if (mIsAbsolute)
        placeAt(value);
    else
        moveTo(value);
}

inline void KyDeviceAxisChannel::placeAt(float position) {
    const float clamped = clamp(position);
    mAbsoluteValue = mClampMode == eClampOutput ? position : clamped;
    mValue = applyDeadZone(clamped);
}

inline void KyDeviceAxisChannel::moveTo(float position) {
    const float clamped = clamp(position);
    const float way = clamped - (mClampMode == eClampOutput ? position : mAbsoluteValue);
    mDeltaValue = std::abs(mStepFactor) >= std::numeric_limits<float>::min() ? way / mStepFactor : 0.0F;
    mAbsoluteValue = clamped;
    mValue = clamped;
}

inline float KyDeviceAxisChannel::clamp(float position) const {
    if (mClampMode == eClampNone)
        return position;
    const float raised = mMinimum > position ? mMinimum : position;
    return raised > mMaximum ? mMaximum : raised;
}

inline float KyDeviceAxisChannel::applyDeadZone(float position) const {
    if (mDeadZoneWidth >= -cEpsilon && mDeadZoneWidth <= cEpsilon)
        return position;
    const float centre = (mMaximum + mMinimum) * 0.5F;
    const float lower = centre - mDeadZoneWidth, upper = centre + mDeadZoneWidth;
    if (lower < position && position < upper)
        return mDeadZoneValue;
    if (position > lower)
        return stretch(position, mMaximum, mDeadZoneWidth);
    if (upper > position)
        return stretch(position, mMinimum, -mDeadZoneWidth);
    return position;
}

inline float KyDeviceAxisChannel::stretch(float position, float bound, float edge) const {
    if (std::abs(edge - bound) <= cEpsilon)
        return bound;
    const float factor = (mDeadZoneValue - bound) / (edge - bound);
    return (1.0F - factor) * bound + factor * position;
}
