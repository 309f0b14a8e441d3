// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSettingsPage.h"

#include <array>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;

/// The page of the settings for what the hand does to the view: the page "navigation" of the group View.
class KyHostNavigationPage : public KyHostSettingsPage {
    Q_OBJECT

public:
    KyHostNavigationPage(KyHostSettings& settings, std::function<void()> applied);

    void reset() override;

protected:
    bool takeChanges() override;
    void updateTranslations() override;

private:
    std::array<QLabel*, KyHostSettings::cNbSpeeds> mLabels{};
    std::array<QDoubleSpinBox*, KyHostSettings::cNbSpeeds> mSpeeds{};
    std::array<QCheckBox*, KyHostSettings::cNbInversions> mInversions{};
    /// What the page showed before a hand touched it, as its widgets round it.
    std::array<double, KyHostSettings::cNbSpeeds> mShownSpeeds{};
    std::array<bool, KyHostSettings::cNbInversions> mShownInversions{};
};
