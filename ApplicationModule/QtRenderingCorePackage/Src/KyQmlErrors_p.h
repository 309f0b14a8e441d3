// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <string>

class KyQmlPass;
class QObject;
class QQmlError;

/// The errors of a QML as its report shows them: a list of maps.
class KyQmlErrors {
public:
    /// Each error once, and of many the first ones, with a last map that tells how many `more` there are; no errors at
    /// all are one, that the root is no item.
    static QVariantList toMaps(const QList<QQmlError>& errors, const QUrl& qml);
    /// A line each, as compilers write them.
    static std::string toText(const QVariantList& errors, const QUrl& qml);
    /// For people: without the folder.
    static QString getFileName(const QUrl& qml);
    /// The file that an error, given as its map, lies in: its own, else the QML's.
    static QUrl getFile(const QVariant& error, const QUrl& qml);
    /// Connects those signals of the report's root that it has.
    static void connectReport(QObject& root, KyQmlPass& pass);
};
