// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFailure_p.h"

#include "KyException.h"

#include <QJSEngine>

namespace {

/// The engine knows the callers of what it evaluates; idle, there is this evaluation only.
bool isRunningScript(QJSEngine& engine) {
    const QString depth = QStringLiteral("new Error().stack.split('\\n').length");
    return engine.evaluate(depth).toInt() > 1;
}

} // namespace

// With several engines the object may be used from another one than that which it first met: an error left in an idle
// engine would come up in unrelated code.
void kyQmlFail(const QObject* used, const std::string& text) {
    QJSEngine* engine = used ? qjsEngine(used) : nullptr;
    if (engine && isRunningScript(*engine))
        engine->throwError(QString::fromStdString(text));
    else
        KyException::create(text);
}
