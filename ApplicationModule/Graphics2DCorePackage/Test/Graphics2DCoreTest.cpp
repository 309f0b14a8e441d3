// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModuleManager.h"

#include <QApplication>

#include <gtest/gtest.h>

/// Nodes need Qt's application for fonts and pixmaps, and the type records of the library.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (!KyModuleManager::get().initialize())
        return 1;
    const int result = RUN_ALL_TESTS();
    KyModuleManager::get().finalize();
    return result;
}
