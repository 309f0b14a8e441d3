// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QDir;
class QIODevice;
class QWidget;

// Qt's form loader, which is an optional part of the build: without it every form is refused, and the error says so.

/// Builds a script's form; images in it are relative to the directory. What is left out is told to the engine's output
/// as warnings, with the name of the file; null, reported as errors, when nothing could be built.
QWidget* kyBuildQtForm(QIODevice& source, const QString& file, const QDir& directory, QWidget* parent);

/// Builds a form as it comes, without a parent; null, with an error, when nothing could be built.
QWidget* kyBuildPlainForm(QIODevice& source, QString& error);
