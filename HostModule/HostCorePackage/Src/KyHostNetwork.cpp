// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostNetwork.h"

#include "KyHostSettings.h"

#include "KyNetworkConnection.h"
#include "KySettings.h"

#include <QFileInfo>

void KyHostNetwork::load(const QString& path) {
    KyNetworkConnection& connection = KyNetworkConnection::get();
    connection.editSettings()->setFilePath(path);
    connection.editSettings()->open();
    connection.updateDataFromSettings();
}

QString KyHostNetwork::getDefaultPath() {
    return QFileInfo(KyHostSettings::getDefaultPath()).dir().filePath("network.xml");
}
