// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResource.h"

#include "KyTemporaryDirectory.h"

#include "KyException.h"

#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {
std::vector<std::string> gReports;
std::map<KyResource*, std::unique_ptr<std::stringbuf>> gBuffers;

std::streambuf* createMemory(KyResource& resource, int mode) {
    if (mode != KyResource::eRead || resource.isOpened())
        return nullptr;
    auto& buffer = gBuffers[&resource];
    buffer = std::make_unique<std::stringbuf>("memory of " + resource.getURL().getDecodedPath());
    return buffer.get();
}

void destroyMemory(KyResource& resource) {
    EXPECT_TRUE(resource.isOpened());
    gBuffers.erase(&resource);
    resource.closeStreamBuffer();
}

class KyResourceTest : public KyTemporaryDirectory {
protected:
    void SetUp() override {
        KyTemporaryDirectory::SetUp();
        gReports.clear();
        KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
        KyResource::addBufferCreator("memory", &createMemory, &destroyMemory);
    }
    void TearDown() override {
        KyResource::removeBufferCreator("memory");
        KyException::setReportHandler(nullptr);
        KyTemporaryDirectory::TearDown();
    }
};
} // namespace

TEST_F(KyResourceTest, FilesAreWrittenAppendedAndReadAndNothingElseOpens) {
    for (const int mode : {KyResource::eAppend, KyResource::eWrite, KyResource::eAppend}) {
        KyResource resource(getURL("a file.txt"));
        ASSERT_TRUE(resource.openStreamBuffer(mode));
        resource.getStreamBuffer()->sputn("a\r\n", 3);
        resource.closeStreamBuffer();
    }
    EXPECT_EQ(read("a file.txt"), "a\r\na\r\n");
    const std::string large(100'001, 'x');
    write("large", large);
    std::string bytes = "before";
    EXPECT_TRUE(KyResource::readBytes(getURL("large"), bytes));
    EXPECT_EQ(bytes, large);
    std::filesystem::create_directory(mRoot / "directory");
    for (const char* name : {"missing", "directory"})
        EXPECT_FALSE(KyResource::readBytes(getURL(name), bytes)) << name;
    EXPECT_EQ(bytes, large);
    KyResource resource(getURL("file"));
    for (const int mode : {-1, static_cast<int>(KyResource::eNbModes), 1000})
        EXPECT_FALSE(resource.openStreamBuffer(mode));
    EXPECT_FALSE(KyResource().openStreamBuffer(KyResource::eRead));
}

TEST_F(KyResourceTest, UnknownSchemesAndCreatorsThatThrowAreReported) {
    const auto creator = [](KyResource&, int) -> std::streambuf* { throw std::runtime_error("no"); };
    KyResource::addBufferCreator("broken", creator, &destroyMemory);
    for (const char* url : {"nowhere:/a", "broken:/x"})
        EXPECT_FALSE(KyResource(KyURL(url)).openStreamBuffer(KyResource::eRead));
    KyResource::removeBufferCreator("broken");
    ASSERT_EQ(gReports.size(), 2U);
    EXPECT_NE(gReports[0].find("nowhere:/a"), std::string::npos);
}

TEST_F(KyResourceTest, AnOpenedResourceKeepsTheDestructorItWasOpenedWith) {
    static int replaced = 0;
    {
        KyResource first(KyURL("memory:/x"));
        KyResource second(KyURL("memory:/y"));
        ASSERT_TRUE(first.openStreamBuffer(KyResource::eRead));
        ASSERT_TRUE(second.openStreamBuffer(KyResource::eRead));
        EXPECT_FALSE(second.openStreamBuffer(KyResource::eRead));
        KyResource::addBufferCreator("memory", &createMemory, [](KyResource&) { ++replaced; });
        first.closeStreamBuffer();
        first.closeStreamBuffer();
        KyResource::removeBufferCreator("memory");
        EXPECT_EQ(gBuffers.size(), 1U);
    }
    EXPECT_TRUE(gBuffers.empty());
    EXPECT_EQ(replaced, 0);
}

TEST_F(KyResourceTest, TheCurrentDirectoryIsPushedAndRestored) {
    std::filesystem::create_directories(mRoot / "a b" / "c");
    EXPECT_TRUE(KyResource::pushCurrentDirectory(getPath("a b")));
    EXPECT_EQ(std::filesystem::current_path(), mRoot / "a b");
    EXPECT_TRUE(KyResource::pushCurrentDirectory("c/"));
    EXPECT_EQ(KyResource::getCurrentDirectory(), getURL("a b/c/"));
    EXPECT_TRUE(KyResource::popCurrentDirectory());
    EXPECT_EQ(std::filesystem::current_path(), mRoot / "a b");
    EXPECT_TRUE(KyResource::popCurrentDirectory());
    for (const auto& impossible : {getPath("missing"), std::string(), std::string("http://h/")})
        EXPECT_FALSE(KyResource::pushCurrentDirectory(impossible)) << impossible;
    EXPECT_EQ(std::filesystem::current_path(), mBefore);
    EXPECT_FALSE(KyResource::popCurrentDirectory());
}

TEST_F(KyResourceTest, TheThreadsDirectoryComesBeforeTheCurrentOne) {
    write("thread/both", "thread");
    write("current/both", "current");
    write("current/other", "current");
    KyResource::setCurrentDirectory(getURL("current"));
    EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("current/both"));
    ASSERT_TRUE(KyResource::pushThreadDirectory(KyThread::getCurrentThreadID(), getPath("thread")));
    EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("thread/both"));
    EXPECT_EQ(KyResource::resolve(KyURL("other")), getURL("current/other"));
    EXPECT_EQ(KyResource::resolve(KyURL("nowhere")), getURL("thread/nowhere"));
    std::thread([&] { EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("current/both")); }).join();
    EXPECT_FALSE(KyResource::pushThreadDirectory(KyURL()));
    EXPECT_TRUE(KyResource::popThreadDirectory());
    EXPECT_FALSE(KyResource::popThreadDirectory());
    EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("current/both"));
    KyResource::pushThreadDirectory(KyURL("memory:/scripts"));
    std::string bytes;
    EXPECT_TRUE(KyResource::readBytes(KyURL("lib/a.lua"), bytes));
    EXPECT_EQ(bytes, "memory of /scripts/lib/a.lua") << "one of another scheme opens its resources";
    KyResource::popThreadDirectory();
}
