// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostNavigationPage.h"

#include "KyHostErrors.h"

#include "KySettings.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>

namespace {

constexpr double cStep = 0.1;
constexpr int cDecimals = 2;

} // namespace

KyHostNavigationPage::KyHostNavigationPage(KyHostSettings& settings, std::function<void()> applied)
    : KyQSettingsEditor("navigation", "View", "Navigation", &settings)
    , mSettings(settings)
    , mApplied(std::move(applied)) {
    auto* const layout = new QFormLayout(this);
    for (std::size_t i = 0; i < mSpeeds.size(); ++i) {
        mLabels[i] = new QLabel;
        mSpeeds[i] = new QDoubleSpinBox;
        mSpeeds[i]->setObjectName(KyHostSettings::getSpeeds()[i].name);
        mSpeeds[i]->setRange(KyHostSettings::cSlowest, KyHostSettings::cFastest);
        mSpeeds[i]->setSingleStep(cStep);
        mSpeeds[i]->setDecimals(cDecimals);
        mLabels[i]->setBuddy(mSpeeds[i]);
        layout->addRow(mLabels[i], mSpeeds[i]);
    }
    for (std::size_t i = 0; i < mInversions.size(); ++i) {
        mInversions[i] = new QCheckBox;
        mInversions[i]->setObjectName(KyHostSettings::getInversions()[i].name);
        layout->addRow(mInversions[i]);
    }
    KyHostNavigationPage::updateTranslations();
    readSettings();
}

bool KyHostNavigationPage::accept() {
    for (std::size_t i = 0; i < mSpeeds.size(); ++i)
        mSettings.setSpeed(i, mSpeeds[i]->value());
    for (std::size_t i = 0; i < mInversions.size(); ++i)
        mSettings.setInverted(i, mInversions[i]->isChecked());
    if (mApplied)
        mApplied();
    if (mSettings.save())
        return true;
    KyHostErrors::write("cannot write the settings '" + mSettings.getSettings()->getFilePath().toStdString() + "'");
    return false;
}

void KyHostNavigationPage::showEvent(QShowEvent* event) {
    readSettings();
    KyQSettingsEditor::showEvent(event);
}

void KyHostNavigationPage::updateTranslations() {
    for (std::size_t i = 0; i < mLabels.size(); ++i)
        mLabels[i]->setText(tr(KyHostSettings::getSpeeds()[i].label));
    for (std::size_t i = 0; i < mInversions.size(); ++i)
        mInversions[i]->setText(tr(KyHostSettings::getInversions()[i].label));
}

void KyHostNavigationPage::readSettings() {
    for (std::size_t i = 0; i < mSpeeds.size(); ++i)
        mSpeeds[i]->setValue(mSettings.getSpeed(i));
    for (std::size_t i = 0; i < mInversions.size(); ++i)
        mInversions[i]->setChecked(mSettings.isInverted(i));
}
