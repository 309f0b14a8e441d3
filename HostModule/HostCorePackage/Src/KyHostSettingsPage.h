// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSettings.h"

#include "KyQSettingsEditor.h"

#include <functional>

/// A page of the settings whose values KyHostSettings keeps. A class tells what a hand has changed on it.
class KyHostSettingsPage : public KyQSettingsEditor {
    Q_OBJECT

public:
    /// `applied` is called after the settings have taken what was changed on the page. The settings outlive the page.
    KyHostSettingsPage(const QString& name, KyHostSettings& settings, std::function<void()> applied);

    /// Takes over what was changed on the page and nothing else. True when all is saved; the values hold in any case.
    bool accept() override;

protected:
    /// Gives the settings what was changed on the page; true when anything was.
    virtual bool takeChanges() = 0;
    KyHostSettings& editSettings() { return mSettings; }

private:
    KyHostSettings& mSettings;
    std::function<void()> mApplied;
    bool mIsUnsaved = false;
};
