// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <memory>

class KySettings;
class QObject;

/// Base of what keeps settings. It owns their document for its whole life; whoever fills the document calls
/// updateDataFromSettings() afterwards, which is overridden to read the values, with those of now for defaults.
/// For the user-interface thread.
///
/// ```
/// void MyView::updateDataFromSettings() {
///     mZoom = getSettings()->getAttribute("View", "zoom", mZoom);
/// }
/// ```
class KYAPPLICATION_EXPORT KyHasSettings {
public:
    /// With an empty document without a file.
    KyHasSettings();
    KyHasSettings(const KyHasSettings&) = delete;
    KyHasSettings& operator=(const KyHasSettings&) = delete;
    /// Settings pages that edit it lose it.
    virtual ~KyHasSettings();

    /// Reads the values from the document; nothing here.
    virtual void updateDataFromSettings();

    /// @{
    /// Owned by the object; null while there is none.
    const KySettings* getSettings() const { return mSettings.get(); }
    KySettings* editSettings() { return mSettings.get(); }
    /// @}

private:
    friend class KyQSettingsEditor;

    /// Ends with this, which pages can watch.
    QObject* editLife();

    std::unique_ptr<KySettings> mSettings;
    /// None until the first page asks.
    std::unique_ptr<QObject> mLife;
};
