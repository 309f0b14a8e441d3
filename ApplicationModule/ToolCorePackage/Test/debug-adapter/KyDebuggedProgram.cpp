// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapter.h"
#include "KyScriptEngine.h"

#include <QCoreApplication>

#include <cstdio>

/// Serves one client of the debugger, and ends after it.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    KyScriptEngine::initializeClass();
    bool isListening = false;
    {
        KyDebugAdapter adapter(KyScriptEngine::get());
        isListening = adapter.listen();
        std::fprintf(stderr, "port %d\n", adapter.getPort());
        QObject::connect(&adapter, &KyDebugAdapter::clientDisconnected, &application, &QCoreApplication::quit,
                         Qt::QueuedConnection);
        if (isListening)
            QCoreApplication::exec();
    }
    KyScriptEngine::finalizeClass();
    return isListening ? 0 : 1;
}
