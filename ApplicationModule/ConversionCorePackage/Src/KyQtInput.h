// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <Qt>

#include <cstdint>

/// Mouse buttons and keyboard modifiers between the bits of KyInputEvent's state word and Qt's flags. The two extra
/// buttons go one way only: toward Qt they are no button.
namespace KyApplication {

/// 0 for none and for a button beyond the five.
KYAPPLICATION_EXPORT std::uint32_t toKyMouseButton(Qt::MouseButton button);
/// The button bits of KyInputEvent's state word, see KyInputEvent::cMouseButtons; other buttons are left out.
KYAPPLICATION_EXPORT std::uint32_t toKyMouseButtons(Qt::MouseButtons buttons);
/// Left, right or middle; none for anything else, also for more than one.
KYAPPLICATION_EXPORT Qt::MouseButton toQMouseButton(std::uint32_t button);
/// Left, right and middle out of a state word.
KYAPPLICATION_EXPORT Qt::MouseButtons toQMouseButtons(std::uint32_t state);

/// Shift, Control and Alt; Meta and the keypad are dropped.
KYAPPLICATION_EXPORT std::uint32_t toKyKeyboardModifiers(Qt::KeyboardModifiers modifiers);
/// Shift, Control and Alt out of a state word.
KYAPPLICATION_EXPORT Qt::KeyboardModifiers toQKeyboardModifiers(std::uint32_t state);

} // namespace KyApplication
