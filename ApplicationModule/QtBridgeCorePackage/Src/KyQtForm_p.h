// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Highest number of rows or columns that scripts and forms may ask for: the toolkit makes them all at once.
inline constexpr int cMaxQtCount = 1024;

/// Whether the property is such a number.
inline bool kyIsQtCount(const QString& property) {
    return property == QLatin1String("columnCount") || property == QLatin1String("rowCount");
}

/// Builds the widgets of a form file, which is relative to the directory like the images in it. What is wrong goes to
/// the engine's output; null when nothing could be built.
QWidget* kyLoadQtForm(const QString& file, const QString& directory, QWidget* parent);
