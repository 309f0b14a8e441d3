// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSettings.h"

#include "KyQSettingsEditor.h"

#include <array>
#include <functional>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;

/// The page of the settings for what the hand does to the view: the page "navigation" of the group View.
class KyHostNavigationPage : public KyQSettingsEditor {
    Q_OBJECT

public:
    /// `applied` is called after the settings have taken what was changed on the page. The settings outlive the page.
    KyHostNavigationPage(KyHostSettings& settings, std::function<void()> applied);

    /// Takes over what was changed on the page and nothing else. True when all is saved; the values hold in any case.
    bool accept() override;
    void reset() override;

protected:
    void updateTranslations() override;

private:
    /// True when anything was changed on the page.
    bool takeChanges();

    KyHostSettings& mSettings;
    std::function<void()> mApplied;
    std::array<QLabel*, KyHostSettings::cNbSpeeds> mLabels{};
    std::array<QDoubleSpinBox*, KyHostSettings::cNbSpeeds> mSpeeds{};
    std::array<QCheckBox*, KyHostSettings::cNbInversions> mInversions{};
    /// What the page showed before a hand touched it, as its widgets round it.
    std::array<double, KyHostSettings::cNbSpeeds> mShownSpeeds{};
    std::array<bool, KyHostSettings::cNbInversions> mShownInversions{};
    bool mIsUnsaved = false;
};
