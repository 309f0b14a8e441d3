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

TEST_F(KyExceptionTest, AReportReachesTheHandlerAndReturns) {
    KyException::setReportHandler(&remember);
    KyException::create("first");
    KyError::create("second");
    EXPECT_EQ(gReports, (std::vector<std::string>{"first", "second"}));
}

TEST_F(KyExceptionTest, WithoutAHandlerOneLineGoesToStandardError) {
    KyException::setReportHandler(nullptr);
    testing::internal::CaptureStderr();
    KyException::create("KyThing: failed");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "KyThing: failed\n");
}

TEST_F(KyExceptionTest, InstallingGivesTheHandlerBefore) {
    const auto byDefault = KyException::setReportHandler(&remember);
    EXPECT_EQ(KyException::setReportHandler(byDefault), &remember);
}

TEST_F(KyExceptionTest, AReportInsideTheHandlerDoesNotCallItAgain) {
    KyException::setReportHandler([](const std::string& text) {
        remember(text);
        KyException::create("inside");
    });
    testing::internal::CaptureStderr();
    KyException::create("outside");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "inside\n");
    EXPECT_EQ(gReports, std::vector<std::string>{"outside"});
}

TEST_F(KyExceptionTest, AHandlerThatThrowsLosesNoReport) {
    KyException::setReportHandler([](const std::string&) { throw std::runtime_error("handler"); });
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(KyException::create("text"));
    KyException::setReportHandler(&remember);
    KyException::create("after");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "text\n");
    EXPECT_EQ(gReports, std::vector<std::string>{"after"});
}
