// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>
#include <memory>

namespace {

const QString cFolder = QStringLiteral(":/kyapplication/translations");
const QString cStem = QStringLiteral("kyapplication_");
const QString cQtStem = QStringLiteral("qtbase_");
const QString cOurs = QStringLiteral("KyLanguage");
const QString cQts = QStringLiteral("KyLanguageOfQt");

struct NamedText {
    const char* text;
    const char* comment;
};
constexpr NamedText cOwnName =
    QT_TRANSLATE_NOOP3("KyLanguage", "English", "what the language of the translation calls itself");

/// Qt's own words on our buttons, for machines without Qt's translations.
[[maybe_unused]] constexpr const char* cButtonTexts[] = {
    QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),     QT_TRANSLATE_NOOP("QPlatformTheme", "Apply"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"), QT_TRANSLATE_NOOP("QGnomeTheme", "&OK"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "&Cancel"),
};

/// The application owns the translators, so that they end with it.
QTranslator* findTranslator(const QString& name) {
    const QCoreApplication* const application = QCoreApplication::instance();
    return application ? application->findChild<QTranslator*>(name, Qt::FindDirectChildrenOnly) : nullptr;
}

/// Takes the place of the translator of the same name; a file that is not there leaves none.
void install(const QString& name, const QString& file, const QString& folder) {
    QCoreApplication* const application = QCoreApplication::instance();
    const std::unique_ptr<QTranslator> former(findTranslator(name));
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(file, folder))
        return;
    translator->setObjectName(name);
    translator->setParent(application);
    QCoreApplication::installTranslator(translator.release());
}

} // namespace

QStringList KyLanguage::getAvailable() {
    QStringList languages{QLatin1String(cEnglish)};
    for (const QString& file : QDir(cFolder).entryList({cStem + "*.qm"}))
        languages.append(file.mid(cStem.size()).section('.', 0, 0));
    languages.sort();
    languages.removeDuplicates();
    return languages;
}

QString KyLanguage::find(const QString& name) {
    const QStringList available = getAvailable();
    const QString whole = name.section('.', 0, 0).section('@', 0, 0).replace('-', '_');
    for (const QString& wanted : {whole, whole.section('_', 0, 0)}) {
        const auto found = std::ranges::find_if(available, [&wanted](const QString& language) {
            return language.compare(wanted, Qt::CaseInsensitive) == 0;
        });
        if (found != available.end())
            return *found;
    }
    return {};
}

QString KyLanguage::getOfSystem() {
    return choose(QLocale::system().uiLanguages());
}

QString KyLanguage::choose(const QStringList& names) {
    for (const QString& name : names)
        if (const QString language = find(name); !language.isEmpty())
            return language;
    return QLatin1String(cEnglish);
}

QString KyLanguage::getName(const QString& language) {
    QTranslator translator;
    translator.load(cStem + language, cFolder);
    const QString name = translator.translate("KyLanguage", cOwnName.text, cOwnName.comment);
    return name.isEmpty() ? QLatin1String(cOwnName.text) : name;
}

bool KyLanguage::set(const QString& name) {
    const QString language = find(name);
    if (language.isEmpty() || !QCoreApplication::instance())
        return false;
    if (const QTranslator* const present = findTranslator(cOurs); present && present->language() == language)
        return true;
    // What was installed last is asked first.
    install(cQts, cQtStem + language, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(cOurs, cStem + language, cFolder);
    return true;
}

QString KyLanguage::get() {
    const QTranslator* const present = findTranslator(cOurs);
    return present ? present->language() : QLatin1String(cEnglish);
}
