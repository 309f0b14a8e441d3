// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTouchPoint.h"

#include <cstdint>
#include <vector>

/// One input event: pointer, key, wheel or touch. A cheap value; positions are pixels from the view's top left corner.
///
/// The state word holds what was down when the event came: mouse buttons in the low bits (1 left, 2 right, 4 middle, 8
/// and 16 extra), Shift 0x20000000, Control 0x40000000, Alt 0x80000000.
class KyInputEvent {
public:
    /// Kinds of events by number; `cNbTypes` is the count and the value of an event without type.
    using Type = int;
    static constexpr Type cNbTypes = 14;

    static constexpr std::uint32_t cLeftButton = 1;
    static constexpr std::uint32_t cRightButton = 2;
    static constexpr std::uint32_t cMiddleButton = 4;
    static constexpr std::uint32_t cExtraButton1 = 8;
    static constexpr std::uint32_t cExtraButton2 = 16;
    static constexpr std::uint32_t cShift = 0x20000000u;
    static constexpr std::uint32_t cControl = 0x40000000u;
    static constexpr std::uint32_t cAlt = 0x80000000u;

    /// The toolkit's event, valid while this one is handled; null when there is none. Not owned.
    void* getNativeEvent() const { return mNativeEvent; }
    void setNativeEvent(void* event) { mNativeEvent = event; }

    Type getType() const { return mType; }
    void setType(Type type) { mType = type; }
    std::uint32_t getState() const { return mState; }
    void setState(std::uint32_t state) { mState = state; }
    /// The button or key that the event is about; 0 when it is about none.
    std::uint32_t getButton() const { return mButton; }
    void setButton(std::uint32_t button) { mButton = button; }
    int getX() const { return mX; }
    int getY() const { return mY; }
    void setPosition(int x, int y) {
        mX = x;
        mY = y;
    }
    /// Eighths of a degree, 120 a notch; away from the user is positive.
    int getWheelDelta() const { return mWheelDelta; }
    void setWheelDelta(int delta) { mWheelDelta = delta; }
    bool isWheelVertical() const { return mFlags & eWheelVertical; }
    void setWheelVertical(bool vertical) { setFlag(eWheelVertical, vertical); }
    /// What an event handler found out; settable on a constant event, because handlers get one.
    bool getInternalEventReturn() const { return mFlags & eInternalReturn; }
    void setInternalEventReturn(bool handled) const { setFlag(eInternalReturn, handled); }
    /// A mouse event that the toolkit made from a touch which was delivered too.
    bool repeatsTouch() const { return mFlags & eRepeatsTouch; }
    void setRepeatsTouch(bool repeats) { setFlag(eRepeatsTouch, repeats); }

    const std::vector<KyTouchPoint>& getTouchPoints() const { return mTouchPoints; }
    std::vector<KyTouchPoint>& editTouchPoints() { return mTouchPoints; }
    /// -1 when it is no gesture.
    int getGestureKind() const { return mGestureKind; }
    void setGestureKind(int kind) { mGestureKind = kind; }

private:
    enum Flag : std::uint8_t { eWheelVertical = 1, eInternalReturn = 2, eRepeatsTouch = 4 };

    void setFlag(Flag flag, bool on) const { mFlags = static_cast<std::uint8_t>(on ? mFlags | flag : mFlags & ~flag); }

    void* mNativeEvent = nullptr;
    Type mType = cNbTypes;
    std::uint32_t mState = 0;
    std::uint32_t mButton = 0;
    int mX = 0;
    int mY = 0;
    int mWheelDelta = 0;
    int mGestureKind = -1;
    mutable std::uint8_t mFlags = eWheelVertical;
    std::vector<KyTouchPoint> mTouchPoints;
};
