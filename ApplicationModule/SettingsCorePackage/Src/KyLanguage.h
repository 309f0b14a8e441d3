// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QString>
#include <QStringList>

/// The language of windows and dialogs. Its translations lie inside the library, so that every program that links it
/// has them; those of Qt's own dialogs lie beside Qt. Texts that scripts, logs and terminals get are English in all of
/// them.
///
/// Widgets hear of a change by QEvent::LanguageChange when the event loop runs. For the user-interface thread, while
/// there is an application object.
///
/// ```
/// KyLanguage::set("de");
/// KyLanguage::set(KyLanguage::getOfSystem());
/// ```
class KYAPPLICATION_EXPORT KyLanguage {
public:
    /// Codes such as "de", in alphabetical order; English, in which the texts are written, is among them.
    static QStringList getAvailable();
    /// The available language that a name such as "de", "de_AT.UTF-8" or "DE-at" means; empty for none.
    static QString find(const QString& name);
    /// The first of the names that find() knows, else English.
    static QString choose(const QStringList& names);
    /// What is chosen of the languages that the system's locale names, best first.
    static QString getOfSystem();
    /// What a language is called by those who speak it, such as "Deutsch".
    static QString getName(const QString& language);

    /// False, and the language stays, when find() knows no such language.
    static bool set(const QString& name);
    /// English at first.
    static QString get();

    /// The code of the language in which the texts are written.
    static constexpr const char* cEnglish = "en";
};
