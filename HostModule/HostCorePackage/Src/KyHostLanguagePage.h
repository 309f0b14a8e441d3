// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSettingsPage.h"

class QComboBox;
class QLabel;

/// The page of the settings for the language: the page "language" of the group View.
class KyHostLanguagePage : public KyHostSettingsPage {
    Q_OBJECT

public:
    KyHostLanguagePage(KyHostSettings& settings, std::function<void()> applied);

    void reset() override;

protected:
    bool takeChanges() override;
    void updateTranslations() override;

private:
    QLabel* mLabel;
    /// The system's language and then those of KyLanguage.
    QComboBox* mLanguages;
};
