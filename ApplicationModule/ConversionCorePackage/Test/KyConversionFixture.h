// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQtConversion.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <QString>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// Collects what is reported during a test, and sets the default character set back after it.
class KyConversionFixture : public testing::Test {
protected:
    KyConversionFixture()
        : mHandler(KyException::setReportHandler([](const std::string& text) { msReports.push_back(text); })) {
        msReports.clear();
    }
    ~KyConversionFixture() override {
        KyException::setReportHandler(mHandler);
        KyApplication::setDefaultCharSet(4);
    }

    using Texts = std::vector<std::string>;
    static Texts takeReports() { return std::exchange(msReports, {}); }

private:
    KyException::ReportHandler mHandler;
    static inline Texts msReports;
};

inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const KyField& field, std::ostream* stream) {
    *stream << field.getFieldType().getName() << ' ' << field.toString(17);
}
