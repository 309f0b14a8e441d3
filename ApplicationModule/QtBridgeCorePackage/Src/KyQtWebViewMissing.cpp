// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtWebView_p.h"

#include <QWidget>

QWidget* kyMakeQtWebView(QWidget* parent) {
    return new QWidget(parent);
}
