// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyStyleParameters.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// The default parameters, made anew for every case, and what was reported.
class KyStyleParametersFixture : public testing::Test {
protected:
    void SetUp() override {
        KyStyleParameters::initializeClass();
        msReports.clear();
        mHandler = KyException::setReportHandler([](const std::string& text) { msReports.push_back(text); });
    }
    void TearDown() override {
        KyException::setReportHandler(mHandler);
        KyStyleParameters::finalizeClass();
    }

    static KyStyleParameters& style() { return KyStyleParameters::get(); }

    static inline std::vector<std::string> msReports;

private:
    KyException::ReportHandler mHandler = nullptr;
};
