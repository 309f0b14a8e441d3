// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlErrors_p.h"

#include "KyQmlPass.h"

#include <QFileInfo>
#include <QJSValue>
#include <QMetaObject>
#include <QQmlError>
#include <QSet>

namespace {

constexpr const char* cLine = "line";
constexpr const char* cColumn = "column";
constexpr const char* cDescription = "description";
constexpr const char* cFile = "file";
constexpr const char* cCanOpen = "canOpen";
constexpr const char* cMore = "more";

/// Nobody reads more.
constexpr int cLargestNumber = 100;

QString toPlace(const QUrl& url) {
    return url.isLocalFile() ? url.toLocalFile() : url.toString();
}

bool canOpen(const QUrl& file) {
    return file.isLocalFile() && QFileInfo::exists(file.toLocalFile());
}

QVariantMap toMap(const QQmlError& error, const QUrl& qml) {
    const bool isElsewhere = !error.url().isEmpty() && error.url() != qml;
    return {{cLine, error.line()},
            {cColumn, error.column()},
            {cDescription, error.description().trimmed()},
            {cFile, isElsewhere ? toPlace(error.url()) : QString()},
            {cCanOpen, canOpen(isElsewhere ? error.url() : qml)}};
}

/// Known to the report too, in the language of people; here they are for logs.
constexpr const char* cMoreErrors = QT_TRANSLATE_NOOP("KyQmlErrorsReport", "... and %1 more errors.");
constexpr const char* cNoItem =
    QT_TRANSLATE_NOOP("KyQmlErrorsReport", "The root of this QML is no Item, so there is nothing to show.");

/// Stands for the errors that are left out.
QVariantMap toRest(int number, const QUrl& qml) {
    QQmlError error;
    error.setDescription(QString::fromLatin1(cMoreErrors).arg(number));
    QVariantMap map = toMap(error, qml);
    map[cMore] = number;
    return map;
}

QString toLine(const QVariantMap& error, const QString& place) {
    const QString file = error[cFile].toString();
    QString text = file.isEmpty() ? place : file;
    for (const char* part : {cLine, cColumn})
        if (const int number = error[part].toInt(); number > 0)
            text += QStringLiteral(":%1").arg(number);
    return text + QStringLiteral(": ") + error[cDescription].toString();
}

} // namespace

QVariantList KyQmlErrors::toMaps(const QList<QQmlError>& errors, const QUrl& qml) {
    QVariantList maps;
    QSet<QString> lines;
    for (const QQmlError& error : errors) {
        const QVariantMap map = toMap(error, qml);
        const auto before = lines.size();
        lines.insert(toLine(map, toPlace(qml)));
        if (lines.size() > before && maps.size() < cLargestNumber)
            maps.append(map);
    }
    if (const int more = lines.size() - maps.size(); more > 0)
        maps.append(toRest(more, qml));
    if (maps.isEmpty()) {
        QQmlError error;
        error.setDescription(QString::fromLatin1(cNoItem));
        maps.append(toMap(error, qml));
    }
    return maps;
}

std::string KyQmlErrors::toText(const QVariantList& errors, const QUrl& qml) {
    QStringList lines;
    for (const QVariant& error : errors)
        lines.append(toLine(error.toMap(), toPlace(qml)));
    return lines.join(QLatin1Char('\n')).toStdString();
}

QString KyQmlErrors::getFileName(const QUrl& qml) {
    const QString name = qml.fileName();
    return name.isEmpty() ? qml.toString() : name;
}

QUrl KyQmlErrors::getFile(const QVariant& error, const QUrl& qml) {
    const bool isScript = error.userType() == qMetaTypeId<QJSValue>();
    const QVariantMap map = (isScript ? error.value<QJSValue>().toVariant() : error).toMap();
    const QString file = map[cFile].toString();
    return file.isEmpty() ? qml : QUrl::fromUserInput(file);
}

void KyQmlErrors::connectReport(QObject& root, KyQmlPass& pass) {
    struct Entry {
        const char* signature;
        const char* from;
        const char* to;
    };
    static const Entry cEntries[] = {
        {"openError(QVariant)", SIGNAL(openError(QVariant)), SLOT(onOpenError(QVariant))},
        {"reloadFile()", SIGNAL(reloadFile()), SLOT(onReloadCurrentQml())},
    };
    for (const Entry& entry : cEntries)
        if (root.metaObject()->indexOfSignal(entry.signature) >= 0)
            QObject::connect(&root, entry.from, &pass, entry.to);
}
