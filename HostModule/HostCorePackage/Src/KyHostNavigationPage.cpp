// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostNavigationPage.h"

#include "KyLanguage.h"
#include "KyQtText.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>

namespace {

constexpr double cStep = 0.1;
constexpr int cDecimals = 2;

} // namespace

KyHostNavigationPage::KyHostNavigationPage(KyHostSettings& settings, std::function<void()> applied)
    : KyHostSettingsPage("navigation", settings, std::move(applied)) {
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
    KyHostNavigationPage::reset();
}

bool KyHostNavigationPage::takeChanges() {
    bool isChanged = false;
    for (std::size_t i = 0; i < mSpeeds.size(); ++i) {
        if (mSpeeds[i]->value() == mShownSpeeds[i])
            continue;
        editSettings().setSpeed(i, mShownSpeeds[i] = mSpeeds[i]->value());
        isChanged = true;
    }
    for (std::size_t i = 0; i < mInversions.size(); ++i) {
        if (mInversions[i]->isChecked() == mShownInversions[i])
            continue;
        editSettings().setInverted(i, mShownInversions[i] = mInversions[i]->isChecked());
        isChanged = true;
    }
    return isChanged;
}

void KyHostNavigationPage::updateTranslations() {
    setGroupName(KyApplication::toKyString(tr("View")));
    setItemName(KyApplication::toKyString(tr("Navigation")));
    for (std::size_t i = 0; i < mLabels.size(); ++i) {
        mLabels[i]->setText(tr(KyHostSettings::getSpeeds()[i].label));
        mSpeeds[i]->setLocale(QLocale(KyLanguage::get()));
        mSpeeds[i]->setToolTip(tr("How fast the view follows the hand"));
    }
    for (std::size_t i = 0; i < mInversions.size(); ++i) {
        mInversions[i]->setText(tr(KyHostSettings::getInversions()[i].label));
        mInversions[i]->setToolTip(tr("Turns the direction round"));
    }
}

void KyHostNavigationPage::reset() {
    for (std::size_t i = 0; i < mSpeeds.size(); ++i) {
        mSpeeds[i]->setValue(editSettings().getSpeed(i));
        mShownSpeeds[i] = mSpeeds[i]->value();
    }
    for (std::size_t i = 0; i < mInversions.size(); ++i) {
        mInversions[i]->setChecked(editSettings().isInverted(i));
        mShownInversions[i] = mInversions[i]->isChecked();
    }
}
