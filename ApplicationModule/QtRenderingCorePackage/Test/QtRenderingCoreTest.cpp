// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"

#include <gtest/gtest.h>

#include <QApplication>

#include <memory>

/// Contexts share only when that was asked for before the application was made. Some cases run without one.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    std::unique_ptr<QApplication> application;
    if (!qEnvironmentVariableIsSet("KY_TEST_WITHOUT_APPLICATION"))
        application = std::make_unique<QApplication>(argc, argv);
    // Presses in quick succession are presses.
    if (application)
        QApplication::setDoubleClickInterval(0);
    KyApplicationLibrary::initialize();
    const int result = RUN_ALL_TESTS();
    KyApplicationLibrary::finalize();
    return result;
}
