// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The browser widget, which is an optional part of the build: without it a plain widget takes its place.
QWidget* kyMakeQtWebView(QWidget* parent);
