// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtWebView_p.h"

#include <QWebView>

QWidget* kyMakeQtWebView(QWidget* parent) {
    return new QWebView(parent);
}
