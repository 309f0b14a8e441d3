// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyError.h"
#include "KyException.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {
std::vector<std::string> gReports;

void remember(const std::string& text) {
    gReports.push_back(text);
}

class KyExceptionTest : public ::testing::Test {
protected:
    void SetUp() override { gReports.clear(); }
    void TearDown() override { KyException::setReportHandler(nullptr); }
};
} // namespace

TEST_F(KyExceptionTest, AReportReachesTheHandlerOrStandardError) {
    testing::internal::CaptureStderr();
    const auto byDefault = KyException::setReportHandler(&remember);
    KyException::create("first");
    KyError::create("second");
    EXPECT_EQ(KyException::setReportHandler(byDefault), &remember);
    KyException::create("KyThing: failed");
    EXPECT_EQ(gReports, (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "KyThing: failed\n");
}

TEST_F(KyExceptionTest, AHandlerThatThrowsOrReportsItselfLosesNoReport) {
    testing::internal::CaptureStderr();
    KyException::setReportHandler([](const std::string&) { throw std::runtime_error("handler"); });
    EXPECT_NO_THROW(KyException::create("text"));
    KyException::setReportHandler([](const std::string& text) {
        remember(text);
        KyException::create("inside");
    });
    KyException::create("outside");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "text\ninside\n");
    EXPECT_EQ(gReports, std::vector<std::string>{"outside"});
}
