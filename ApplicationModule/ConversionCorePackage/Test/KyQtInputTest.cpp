// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtInput.h"

#include <gtest/gtest.h>

using namespace KyApplication;

TEST(KyQtInputTest, ButtonsAreTakenOutOfTheStateWordAndExtraOnesGoOneWayOnly) {
    EXPECT_EQ(toKyMouseButton(Qt::MiddleButton), 4u);
    EXPECT_EQ(toQMouseButton(4), Qt::MiddleButton);
    EXPECT_EQ(toKyMouseButton(Qt::ExtraButton2), 16u);
    EXPECT_EQ(toQMouseButton(16), Qt::NoButton);
    EXPECT_EQ(toKyMouseButton(Qt::MaxMouseButton), 0u);
    EXPECT_EQ(toQMouseButton(3), Qt::NoButton) << "two are not one";
    EXPECT_EQ(toKyMouseButtons(Qt::LeftButton | Qt::MiddleButton | Qt::ExtraButton2 | Qt::TaskButton), 21u);
    EXPECT_EQ(toQMouseButtons(0xFFFFFFFFu), Qt::LeftButton | Qt::RightButton | Qt::MiddleButton);
}

TEST(KyQtInputTest, ThreeModifiersCrossBothWays) {
    EXPECT_EQ(toKyKeyboardModifiers(Qt::ShiftModifier | Qt::MetaModifier | Qt::KeypadModifier), 1u << 29);
    EXPECT_EQ(toKyKeyboardModifiers(Qt::ControlModifier | Qt::AltModifier), 6u << 29);
    EXPECT_EQ(toQKeyboardModifiers(0x3FFFFFFFu), Qt::ShiftModifier);
    EXPECT_EQ(toQKeyboardModifiers(6u << 29), Qt::ControlModifier | Qt::AltModifier);
}
