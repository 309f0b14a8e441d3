// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSettingsPage.h"

#include "KyHostErrors.h"

#include "KySettings.h"

KyHostSettingsPage::KyHostSettingsPage(const QString& name, KyHostSettings& settings, std::function<void()> applied)
    : KyQSettingsEditor(name, {}, {}, &settings)
    , mSettings(settings)
    , mApplied(std::move(applied)) {}

bool KyHostSettingsPage::accept() {
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
    setProblem(cUnsaved, path);
    KyHostErrors::write("cannot write the settings '" + path.toStdString() + "'");
    return false;
}
