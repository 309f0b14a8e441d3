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
    /// `applied` is called after the settings have taken what the page shows. The settings outlive the page.
    KyHostNavigationPage(KyHostSettings& settings, std::function<void()> applied);

    /// True when it was saved; the values hold in any case.
    bool accept() override;

protected:
    void showEvent(QShowEvent* event) override;
    void updateTranslations() override;

private:
    void readSettings();

    KyHostSettings& mSettings;
    std::function<void()> mApplied;
    std::array<QLabel*, KyHostSettings::cNbSpeeds> mLabels{};
    std::array<QDoubleSpinBox*, KyHostSettings::cNbSpeeds> mSpeeds{};
    std::array<QCheckBox*, KyHostSettings::cNbInversions> mInversions{};
};
