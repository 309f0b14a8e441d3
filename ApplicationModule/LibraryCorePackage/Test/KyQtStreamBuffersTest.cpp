// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"
#include "KyException.h"
#include "KyModuleManager.h"
#include "KyResource.h"

#include <gtest/gtest.h>

#include <istream>
#include <string>

namespace {

std::string gReport;

class KyQtStreamBuffersTest : public testing::Test {
protected:
    void SetUp() override {
        gReport.clear();
        KyException::setReportHandler([](const std::string& text) { gReport = text; });
        KyApplicationLibrary::registerModule();
        KyModuleManager::get().initialize();
    }
    void TearDown() override {
        KyModuleManager::get().finalize();
        KyException::setReportHandler(nullptr);
    }
    const KyURL mURL{"qrc:/test/LibraryTest.txt"};
};

TEST_F(KyQtStreamBuffersTest, ReadsACompiledInResourceWhole) {
    KyResource resource(mURL);
    ASSERT_TRUE(resource.openStreamBuffer(KyResource::eRead)) << gReport;
    std::istream stream(resource.getStreamBuffer());
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(text, "one\ntwo\n");
    stream.clear();
    stream.seekg(4);
    std::string word;
    EXPECT_TRUE(stream >> word && word == "two");
}

TEST_F(KyQtStreamBuffersTest, RefusesWritingAndMissingFilesByReport) {
    KyResource written(mURL);
    EXPECT_FALSE(written.openStreamBuffer(KyResource::eWrite));
    EXPECT_EQ(gReport, "qtStreamBufferCreator(): Qt resource files support Read mode only.");
    KyResource missing(KyURL("qrc:/test/none.txt"));
    EXPECT_FALSE(missing.openStreamBuffer(KyResource::eRead));
    EXPECT_EQ(gReport, "qtStreamBufferCreator(): Unable to open the file.");
}

TEST_F(KyQtStreamBuffersTest, ClosesWhatIsOpenWhenTheLibraryIsFinalised) {
    KyResource first(mURL);
    ASSERT_TRUE(first.openStreamBuffer(KyResource::eRead));
    KyModuleManager::get().finalize();
    EXPECT_FALSE(first.isOpened());
    EXPECT_TRUE(gReport.empty()) << gReport;
    KyResource late(mURL);
    EXPECT_FALSE(late.openStreamBuffer(KyResource::eRead)) << "the scheme is gone";
}

} // namespace
