// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Highest numbers of rows and columns that scripts and forms may ask for: the toolkit makes them all at once.
inline constexpr int cMaxQtRows = 100000;
inline constexpr int cMaxQtColumns = 1024;

/// The highest number that the property may have; 0 for one that is no such number.
inline int kyGetQtLimit(const QString& property) {
    if (property == QLatin1String("columnCount"))
        return cMaxQtColumns;
    return property == QLatin1String("rowCount") ? cMaxQtRows : 0;
}

/// Builds the widgets of a form file, which is relative to the directory like the images in it. What is wrong goes to
/// the engine's output; null when nothing could be built.
QWidget* kyLoadQtForm(const QString& file, const QString& directory, QWidget* parent);

/// Tells the engine's output why there is no form.
void kyReportQtForm(const QString& file, const QString& error);
/// Tells it what a form that is there has to do without: a warning, no error.
void kyWarnOfQtForm(const QString& file, const QString& text);
