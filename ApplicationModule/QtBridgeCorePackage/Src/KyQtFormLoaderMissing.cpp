// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtFormLoader_p.h"

#include "KyQtForm_p.h"

#include <QCoreApplication>

namespace {

QString getReason() {
    return QCoreApplication::translate("KyQtLuaBinding", "this build has no form loader");
}

} // namespace

QWidget* kyBuildQtForm(QIODevice&, const QString& file, const QDir&, QWidget*) {
    kyReportQtForm(file, getReason());
    return nullptr;
}

QWidget* kyBuildPlainForm(QIODevice&, QString& error) {
    error = getReason();
    return nullptr;
}
