// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QUrl;

/// Names for what comes from the network. Whatever the address, a name is one entry of a directory.
namespace KyDownloadName {

/// The last part of the path, decoded; "index" when that is none.
QString get(const QUrl& url);

/// The name with what the system gives a meaning of its own to replaced; may be empty.
QString makeValid(const QString& name);

} // namespace KyDownloadName
