// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostLanguagePage.h"

#include "KyLanguage.h"
#include "KyQtText.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

#include <algorithm>

KyHostLanguagePage::KyHostLanguagePage(KyHostSettings& settings, std::function<void()> applied)
    : KyHostSettingsPage("language", settings, std::move(applied))
    , mLabel(new QLabel)
    , mLanguages(new QComboBox) {
    mLanguages->setObjectName("language");
    mLanguages->addItem({}, QString());
    for (const QString& language : KyLanguage::getAvailable())
        mLanguages->addItem(KyLanguage::getName(language), language);
    mLabel->setBuddy(mLanguages);
    auto* const layout = new QFormLayout(this);
    layout->addRow(mLabel, mLanguages);
    KyHostLanguagePage::updateTranslations();
    KyHostLanguagePage::reset();
}

bool KyHostLanguagePage::takeChanges() {
    const QString language = mLanguages->currentData().toString();
    if (language == editSettings().getLanguage())
        return false;
    editSettings().setLanguage(language);
    return true;
}

void KyHostLanguagePage::reset() {
    mLanguages->setCurrentIndex(std::max(mLanguages->findData(editSettings().getLanguage()), 0));
}

void KyHostLanguagePage::updateTranslations() {
    setGroupName(KyApplication::toKyString(tr("View")));
    setItemName(KyApplication::toKyString(tr("Language")));
    mLabel->setText(tr("&Language"));
    mLanguages->setToolTip(tr("Language of windows and dialogs"));
    mLanguages->setItemText(0, tr("As the system (%1)").arg(KyLanguage::getName(KyLanguage::getOfSystem())));
}
