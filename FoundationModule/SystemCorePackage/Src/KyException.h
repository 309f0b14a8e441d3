// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <string>

/// The report of a run-time error. Nothing is thrown: `create` hands the text to the
/// installed handler and returns, and the caller goes on with false, null or an empty value.
/// Any thread may report; the handler runs on the reporting thread.
///
///     if (!file.isOpened())
///     {
///       KyException::create("KyThing::load(): cannot open the file.");
///       return false;
///     }
class KYFOUNDATION_EXPORT KyException {
public:
    /// Gets the text of each report.
    using ReportHandler = void (*)(const std::string& text);

    KyException() = delete;

    /// Reports and returns. A report made inside the handler, and the text of a handler that
    /// throws, go to standard error.
    static void create(const std::string& text);

    /// Installs the handler and returns the one before; null stands for the default, which writes
    /// the text and a line end to standard error.
    static ReportHandler setReportHandler(ReportHandler handler);
};
