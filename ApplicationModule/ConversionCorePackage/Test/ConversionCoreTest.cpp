// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QGuiApplication>

/// Fonts need an application, and test machines have no screen.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // A zone whose summer time skips the hour after 2:00 on the last Sunday of March.
    qputenv("TZ", "Europe/Berlin");
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
