// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The program that unpacks 7-Zip archives.
namespace KyArchiveTool {
/// What to start; empty when there is none.
QString find();
} // namespace KyArchiveTool
