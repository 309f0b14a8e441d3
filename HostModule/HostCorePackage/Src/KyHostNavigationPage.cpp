// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostNavigationPage.h"

#include "KyHostErrors.h"

#include "KyQtText.h"
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
    KyHostNavigationPage::reset();
}

bool KyHostNavigationPage::accept() {
    setProblem(QString());
    if (takeChanges()) {
        mIsUnsaved = true;
        if (mApplied)
            mApplied();
    }
    if (!mIsUnsaved || mSettings.save()) {
        mIsUnsaved = false;
        return true;
    }
    const QString path = mSettings.getSettings()->getFilePath();
    setProblem(tr("The settings cannot be saved in \"%1\".").arg(path));
    KyHostErrors::write("cannot write the settings '" + path.toStdString() + "'");
    return false;
}

bool KyHostNavigationPage::takeChanges() {
    bool isChanged = false;
    for (std::size_t i = 0; i < mSpeeds.size(); ++i) {
        if (mSpeeds[i]->value() == mShownSpeeds[i])
            continue;
        mSettings.setSpeed(i, mShownSpeeds[i] = mSpeeds[i]->value());
        isChanged = true;
    }
    for (std::size_t i = 0; i < mInversions.size(); ++i) {
        if (mInversions[i]->isChecked() == mShownInversions[i])
            continue;
        mSettings.setInverted(i, mShownInversions[i] = mInversions[i]->isChecked());
        isChanged = true;
    }
    return isChanged;
}

void KyHostNavigationPage::updateTranslations() {
    setGroupName(KyApplication::toKyString(tr("View")));
    setItemName(KyApplication::toKyString(tr("Navigation")));
    for (std::size_t i = 0; i < mLabels.size(); ++i)
        mLabels[i]->setText(tr(KyHostSettings::getSpeeds()[i].label));
    for (std::size_t i = 0; i < mInversions.size(); ++i)
        mInversions[i]->setText(tr(KyHostSettings::getInversions()[i].label));
}

void KyHostNavigationPage::reset() {
    for (std::size_t i = 0; i < mSpeeds.size(); ++i) {
        mSpeeds[i]->setValue(mSettings.getSpeed(i));
        mShownSpeeds[i] = mSpeeds[i]->value();
    }
    for (std::size_t i = 0; i < mInversions.size(); ++i) {
        mInversions[i]->setChecked(mSettings.isInverted(i));
        mShownInversions[i] = mInversions[i]->isChecked();
    }
}
