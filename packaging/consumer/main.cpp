// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModuleManager.h"
#include "KyScriptEngine.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (!KyModuleManager::get().initialize())
        return 1;
    std::vector<KyField> results;
    const bool ran = KyScriptEngine::get().executeChunktWithReturnValues("return 6 * 7", results);
    const bool isRight = ran && results.size() == 1 && results.front().toInt() == 42;
    KyModuleManager::get().finalize();
    return isRight ? 0 : 1;
}
