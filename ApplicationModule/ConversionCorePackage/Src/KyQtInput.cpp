// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtInput.h"

#include "KyInputEvent.h"

#include <array>
#include <bit>

namespace {

constexpr std::uint32_t cButtonsToQt =
    KyInputEvent::cLeftButton | KyInputEvent::cRightButton | KyInputEvent::cMiddleButton;
constexpr std::uint32_t cButtonsFromQt = cButtonsToQt | KyInputEvent::cExtraButton1 | KyInputEvent::cExtraButton2;

// Both sides number the buttons alike.
static_assert(Qt::LeftButton == KyInputEvent::cLeftButton && Qt::RightButton == KyInputEvent::cRightButton &&
              Qt::MiddleButton == KyInputEvent::cMiddleButton && Qt::ExtraButton1 == KyInputEvent::cExtraButton1 &&
              Qt::ExtraButton2 == KyInputEvent::cExtraButton2);

struct Modifier {
    Qt::KeyboardModifier modifier;
    std::uint32_t bit;
};

constexpr std::array cModifiers{
    Modifier{Qt::ShiftModifier, KyInputEvent::cShift},
    Modifier{Qt::ControlModifier, KyInputEvent::cControl},
    Modifier{Qt::AltModifier, KyInputEvent::cAlt},
};

} // namespace

std::uint32_t KyApplication::toKyMouseButton(Qt::MouseButton button) {
    const auto bit = static_cast<std::uint32_t>(button);
    return std::has_single_bit(bit) ? bit & cButtonsFromQt : 0;
}

std::uint32_t KyApplication::toKyMouseButtons(Qt::MouseButtons buttons) {
    return static_cast<std::uint32_t>(int(buttons)) & cButtonsFromQt;
}

Qt::MouseButton KyApplication::toQMouseButton(std::uint32_t button) {
    const bool isKnown = std::has_single_bit(button) && (button & cButtonsToQt) != 0;
    return isKnown ? static_cast<Qt::MouseButton>(button) : Qt::NoButton;
}

Qt::MouseButtons KyApplication::toQMouseButtons(std::uint32_t state) {
    return Qt::MouseButtons(QFlag(static_cast<int>(state & cButtonsToQt)));
}

std::uint32_t KyApplication::toKyKeyboardModifiers(Qt::KeyboardModifiers modifiers) {
    std::uint32_t state = 0;
    for (const Modifier& entry : cModifiers)
        if (modifiers.testFlag(entry.modifier))
            state |= entry.bit;
    return state;
}

Qt::KeyboardModifiers KyApplication::toQKeyboardModifiers(std::uint32_t state) {
    Qt::KeyboardModifiers modifiers;
    for (const Modifier& entry : cModifiers)
        modifiers.setFlag(entry.modifier, (state & entry.bit) != 0);
    return modifiers;
}
