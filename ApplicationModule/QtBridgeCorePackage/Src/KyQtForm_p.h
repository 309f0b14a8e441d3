// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Builds the widgets of a form file, which is relative to the directory like the images in it. What is wrong goes to
/// the engine's output; null when nothing could be built.
QWidget* kyLoadQtForm(const QString& file, const QString& directory, QWidget* parent);
