// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTouchPoint.h"

#include <cstdint>
#include <vector>

/// One input event: pointer, key, wheel or touch. A cheap value; positions are device pixels from the canvas's top left
/// corner.
///
/// The state word holds what was down when the event came: mouse buttons in the low bits (1 left, 2 right, 4 middle, 8
/// and 16 extra), 32 on wheel events, keys that count as buttons in bits 6 to 26, Shift 0x20000000, Control 0x40000000,
/// Alt 0x80000000.
class KyInputEvent {
public:
    KyInputEvent() = default;
    KyInputEvent(const KyInputEvent&) = default;
    KyInputEvent(KyInputEvent&&) noexcept = default;
    KyInputEvent& operator=(KyInputEvent&&) noexcept = default;
    ~KyInputEvent() = default;
    /// Most events have no touch points: copying none costs more than all the rest.
    KyInputEvent& operator=(const KyInputEvent& other) {
        mValues = other.mValues;
        if (!mTouchPoints.empty() || !other.mTouchPoints.empty())
            mTouchPoints = other.mTouchPoints;
        return *this;
    }

    /// `eUndefined` is never sent; an empty event carries the count.
    enum Type : std::int32_t {
        eUndefined = 0,
        eKeyPressed = 1,
        eKeyReleased = 2,
        eMousePressed = 3,
        eMouseReleased = 4,
        eMouseDoubleClicked = 5,
        eWheel = 6,
        eMouseMoved = 7,
        eTouchBegan = 8,
        eTouchUpdated = 9,
        eTouchEnded = 10,
        eContextMenu = 11,
        eToolTip = 12,
        eInputMethodQuery = 13,
        eNbTypes = 14
    };

    /// @{
    /// Bits of the state word: buttons, wheel, modifiers.
    static constexpr std::uint32_t cLeftButton = 1;
    static constexpr std::uint32_t cRightButton = 2;
    static constexpr std::uint32_t cMiddleButton = 4;
    static constexpr std::uint32_t cExtraButton1 = 8;
    static constexpr std::uint32_t cExtraButton2 = 16;
    static constexpr std::uint32_t cMouseButtons = 31;
    static constexpr std::uint32_t cWheel = 32;
    static constexpr std::uint32_t cShift = 0x20000000u;
    static constexpr std::uint32_t cControl = 0x40000000u;
    static constexpr std::uint32_t cAlt = 0x80000000u;
    /// @}

    /// The toolkit's event, valid while this one is handled; null when there is none. Not owned.
    void* getNativeEvent() const { return mValues.nativeEvent; }
    void setNativeEvent(void* event) { mValues.nativeEvent = event; }

    /// eNbTypes for an event that stands for none.
    Type getType() const { return mValues.type; }
    /// True for an event as it is constructed.
    bool isEmpty() const { return mValues.type == eNbTypes; }
    /// True for the types of a touch sequence.
    bool isTouch() const { return mValues.type >= eTouchBegan && mValues.type <= eTouchEnded; }
    /// Sets the type; the rest stays.
    void setType(Type type) { mValues.type = type; }
    /// @{
    /// Buttons and modifiers held down, the bits above.
    std::uint32_t getState() const { return mValues.state; }
    void setState(std::uint32_t state) { mValues.state = state; }
    /// @}
    /// The button or key that the event is about; 0 when it is about none.
    std::uint32_t getButton() const { return mValues.button; }
    void setButton(std::uint32_t button) { mValues.button = button; }
    /// @{
    /// Pixels of the canvas, origin at the top left.
    int getX() const { return mValues.x; }
    int getY() const { return mValues.y; }
    /// @}
    /// Pixels of the canvas, origin at the top left.
    void setPosition(int x, int y) {
        mValues.x = x;
        mValues.y = y;
    }
    /// Eighths of a degree, 120 a notch, or pixels where the device tells no angle; away from the user is positive.
    int getWheelDelta() const { return mValues.wheelDelta; }
    void setWheelDelta(int delta) { mValues.wheelDelta = delta; }
    /// @{
    /// False for a wheel that turns sideways.
    bool isWheelVertical() const { return mValues.flags & cWheelVertical; }
    void setWheelVertical(bool vertical) { setFlag(cWheelVertical, vertical); }
    /// @}
    /// What an event handler found out; settable on a constant event, because handlers get one.
    bool getInternalEventReturn() const { return mValues.flags & cInternalReturn; }
    void setInternalEventReturn(bool handled) const { setFlag(cInternalReturn, handled); }
    /// Whether something was met that hides what is behind it, where the event may still go on to; settable like the
    /// above.
    bool isCovered() const { return mValues.flags & cCovered; }
    void setCovered(bool isCovered) const { setFlag(cCovered, isCovered); }
    /// A mouse event that the toolkit made from a touch which was delivered too.
    bool repeatsTouch() const { return mValues.flags & cRepeatsTouch; }
    void setRepeatsTouch(bool repeats) { setFlag(cRepeatsTouch, repeats); }

    /// @{
    /// Fingers of a touch event; empty for others.
    const std::vector<KyTouchPoint>& getTouchPoints() const { return mTouchPoints; }
    std::vector<KyTouchPoint>& editTouchPoints() { return mTouchPoints; }
    /// @}
    /// 0 pan, 1 pinch, 2 tap, 3 tilt; -1 when no gesture was recognised.
    int getGestureKind() const { return mValues.gestureKind; }
    void setGestureKind(int kind) { mValues.gestureKind = kind; }

private:
    static constexpr std::uint8_t cWheelVertical = 1;
    static constexpr std::uint8_t cInternalReturn = 2;
    static constexpr std::uint8_t cRepeatsTouch = 4;
    static constexpr std::uint8_t cCovered = 8;

    void setFlag(std::uint8_t flag, bool on) const {
        mValues.flags = static_cast<std::uint8_t>(on ? mValues.flags | flag : mValues.flags & ~flag);
    }

    struct Values {
        void* nativeEvent = nullptr;
        Type type = eNbTypes;
        std::uint32_t state = 0;
        std::uint32_t button = 0;
        int x = 0;
        int y = 0;
        int wheelDelta = 0;
        int gestureKind = -1;
        mutable std::uint8_t flags = 0;
    };

    Values mValues;
    std::vector<KyTouchPoint> mTouchPoints;
};
