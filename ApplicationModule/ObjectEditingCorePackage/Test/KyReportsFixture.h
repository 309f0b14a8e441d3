// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyException.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// What was reported during a test.
class KyReportsFixture : public testing::Test {
protected:
    KyReportsFixture()
        : mHandler(KyException::setReportHandler([](const std::string& text) { msReports.push_back(text); })) {
        msReports.clear();
    }
    ~KyReportsFixture() override { KyException::setReportHandler(mHandler); }

    static inline std::vector<std::string> msReports;

private:
    KyException::ReportHandler mHandler;
};
