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

TEST_F(KyResourceTest, FilesAreWrittenAppendedAndRead) {
    struct Step {
        int mode;
        const char* text;
        const char* expected;
    };
    constexpr Step cSteps[] = {{KyResource::eWrite, "one\r\n", "one\r\n"},
                               {KyResource::eAppend, "two", "one\r\ntwo"},
                               {KyResource::eWrite, "three", "three"}};
    for (const auto& [mode, text, expected] : cSteps) {
        KyResource resource(getURL("a file.txt"));
        ASSERT_TRUE(resource.openStreamBuffer(mode));
        resource.getStreamBuffer()->sputn(text, static_cast<std::streamsize>(std::string(text).size()));
        resource.closeStreamBuffer();
        EXPECT_EQ(read("a file.txt"), expected);
        std::string bytes;
        EXPECT_TRUE(KyResource::readBytes(getURL("a file.txt"), bytes));
        EXPECT_EQ(bytes, expected);
    }
}

TEST_F(KyResourceTest, LargeFilesAreReadWhole) {
    std::string text(100'001, '\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>(i * 7);
    write("large", text);
    std::string bytes = "before";
    EXPECT_TRUE(KyResource::readBytes(getURL("large"), bytes));
    EXPECT_EQ(bytes, text);
}

TEST_F(KyResourceTest, WhatIsNotThereDoesNotOpen) {
    std::filesystem::create_directory(mRoot / "directory");
    std::string bytes = "unchanged";
    EXPECT_FALSE(KyResource::readBytes(getURL("missing"), bytes));
    EXPECT_FALSE(KyResource::readBytes(getURL("directory"), bytes));
    EXPECT_EQ(bytes, "unchanged");
    KyResource resource(getURL("file"));
    for (const int mode : {-1, static_cast<int>(KyResource::eNbModes), 1000})
        EXPECT_FALSE(resource.openStreamBuffer(mode));
    EXPECT_FALSE(KyResource().openStreamBuffer(KyResource::eRead));
}

TEST_F(KyResourceTest, AnUnknownSchemeIsReported) {
    KyResource resource(KyURL("nowhere:/a"));
    EXPECT_FALSE(resource.openStreamBuffer(KyResource::eRead));
    ASSERT_EQ(gReports.size(), 1U);
    EXPECT_NE(gReports[0].find("nowhere:/a"), std::string::npos);
}

TEST_F(KyResourceTest, ARegisteredSchemeUsesItsCreatorAndDestructor) {
    std::string bytes;
    EXPECT_TRUE(KyResource::readBytes(KyURL("memory:/a%20b"), bytes));
    EXPECT_EQ(bytes, "memory of /a b");
    EXPECT_TRUE(gBuffers.empty());
}

TEST_F(KyResourceTest, AnOpenedResourceIsClosedAfterItsSchemeWasRemoved) {
    KyResource resource(KyURL("memory:/x"));
    ASSERT_TRUE(resource.openStreamBuffer(KyResource::eRead));
    KyResource::removeBufferCreator("memory");
    EXPECT_EQ(gBuffers.size(), 1U);
    resource.closeStreamBuffer();
    EXPECT_TRUE(gBuffers.empty());
    EXPECT_FALSE(resource.isOpened());
    resource.closeStreamBuffer();
}

TEST_F(KyResourceTest, AnOpenedResourceKeepsTheDestructorItWasOpenedWith) {
    static int replaced = 0;
    KyResource resource(KyURL("memory:/x"));
    ASSERT_TRUE(resource.openStreamBuffer(KyResource::eRead));
    KyResource::addBufferCreator("memory", &createMemory, [](KyResource&) { ++replaced; });
    resource.closeStreamBuffer();
    EXPECT_EQ(replaced, 0);
    EXPECT_TRUE(gBuffers.empty());
}

TEST_F(KyResourceTest, TheDestructorOfAResourceCloses) {
    {
        KyResource resource(KyURL("memory:/x"));
        ASSERT_TRUE(resource.openStreamBuffer(KyResource::eRead));
        EXPECT_EQ(gBuffers.size(), 1U);
    }
    EXPECT_TRUE(gBuffers.empty());
}

TEST_F(KyResourceTest, ARefusedSecondOpeningKeepsTheFirst) {
    KyResource resource(KyURL("memory:/x"));
    ASSERT_TRUE(resource.openStreamBuffer(KyResource::eRead));
    const auto* buffer = resource.getStreamBuffer();
    EXPECT_FALSE(resource.openStreamBuffer(KyResource::eRead));
    EXPECT_EQ(resource.getStreamBuffer(), buffer);
}

TEST_F(KyResourceTest, ACreatorThatThrowsIsReported) {
    const auto creator = [](KyResource&, int) -> std::streambuf* { throw std::runtime_error("no"); };
    KyResource::addBufferCreator("broken", creator, &destroyMemory);
    KyResource resource(KyURL("broken:/x"));
    EXPECT_FALSE(resource.openStreamBuffer(KyResource::eRead));
    EXPECT_EQ(gReports.size(), 1U);
    KyResource::removeBufferCreator("broken");
}

TEST_F(KyResourceTest, TheCurrentDirectoryIsPushedAndRestored) {
    std::filesystem::create_directories(mRoot / "a b" / "c");
    EXPECT_TRUE(KyResource::pushCurrentDirectory(getPath("a b")));
    EXPECT_EQ(std::filesystem::current_path(), mRoot / "a b");
    EXPECT_TRUE(KyResource::pushCurrentDirectory("c/"));
    EXPECT_EQ(std::filesystem::current_path(), mRoot / "a b" / "c");
    EXPECT_EQ(KyResource::getCurrentDirectory(), getURL("a b/c/"));
    EXPECT_TRUE(KyResource::popCurrentDirectory());
    EXPECT_EQ(std::filesystem::current_path(), mRoot / "a b");
    EXPECT_TRUE(KyResource::pushCurrentDirectory(getURL("a b/c").toString()));
    EXPECT_TRUE(KyResource::popCurrentDirectory());
    EXPECT_TRUE(KyResource::popCurrentDirectory());
    EXPECT_EQ(std::filesystem::current_path(), mBefore);
    EXPECT_FALSE(KyResource::popCurrentDirectory());
}

TEST_F(KyResourceTest, AnImpossibleDirectoryChangesNothing) {
    write("file", "");
    for (const auto& directory : {getPath("missing"), getPath("file"), std::string(), std::string("http://h/")})
        EXPECT_FALSE(KyResource::pushCurrentDirectory(directory)) << directory;
    EXPECT_EQ(std::filesystem::current_path(), mBefore);
    EXPECT_FALSE(KyResource::popCurrentDirectory());
}

TEST_F(KyResourceTest, ADirectoryThatIsGoneCannotBeRestored) {
    std::filesystem::create_directories(mRoot / "gone");
    ASSERT_TRUE(KyResource::setCurrentDirectory(getURL("gone")));
    ASSERT_TRUE(KyResource::pushCurrentDirectory(mRoot.generic_string()));
    std::filesystem::remove(mRoot / "gone");
    EXPECT_FALSE(KyResource::popCurrentDirectory());
    EXPECT_FALSE(KyResource::popCurrentDirectory());
    EXPECT_EQ(std::filesystem::current_path(), mRoot);
}

TEST_F(KyResourceTest, TheThreadsDirectoryComesBeforeTheCurrentOne) {
    write("thread/both", "thread");
    write("thread/own", "thread");
    write("current/both", "current");
    write("current/other", "current");
    KyResource::setCurrentDirectory(getURL("current"));
    EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("current/both"));
    ASSERT_TRUE(KyResource::pushThreadDirectory(KyThread::getCurrentThreadID(), getPath("thread")));
    EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("thread/both"));
    EXPECT_EQ(KyResource::resolve(KyURL("own")), getURL("thread/own"));
    EXPECT_EQ(KyResource::resolve(KyURL("other")), getURL("current/other"));
    EXPECT_EQ(KyResource::resolve(KyURL("nowhere")), getURL("thread/nowhere"));
    EXPECT_EQ(KyResource::resolve(KyURL("memory:/x")).toString(), "memory:/x");
    std::thread([&] { EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("current/both")); }).join();
    EXPECT_TRUE(KyResource::popThreadDirectory());
    EXPECT_EQ(KyResource::resolve(KyURL("both")), getURL("current/both"));
}

TEST_F(KyResourceTest, ThreadDirectoriesFormAStack) {
    EXPECT_TRUE(KyResource::getThreadDirectory().isEmpty());
    EXPECT_TRUE(KyResource::pushThreadDirectory(getURL("a")));
    EXPECT_TRUE(KyResource::pushThreadDirectory(getURL("b/")));
    EXPECT_FALSE(KyResource::pushThreadDirectory(KyURL()));
    EXPECT_EQ(KyResource::getThreadDirectory(), getURL("b/"));
    EXPECT_TRUE(KyResource::popThreadDirectory());
    EXPECT_EQ(KyResource::getThreadDirectory(), getURL("a/"));
    EXPECT_TRUE(KyResource::popThreadDirectory());
    EXPECT_FALSE(KyResource::popThreadDirectory());
}

TEST_F(KyResourceTest, ARelativeThreadDirectoryIsTakenFromTheCurrentOne) {
    KyResource::setCurrentDirectory(KyURL(mRoot.generic_string(), KyURL::eLocalPath));
    ASSERT_TRUE(KyResource::pushThreadDirectory(KyThread::getCurrentThreadID(), "scripts"));
    std::filesystem::current_path(mBefore);
    EXPECT_EQ(KyResource::getThreadDirectory(), getURL("scripts/"));
    KyResource::popThreadDirectory();
}

TEST_F(KyResourceTest, AThreadDirectoryOfAnotherSchemeOpensItsResources) {
    KyResource::pushThreadDirectory(KyURL("memory:/scripts"));
    std::string bytes;
    EXPECT_TRUE(KyResource::readBytes(KyURL("lib/a.lua"), bytes));
    EXPECT_EQ(bytes, "memory of /scripts/lib/a.lua");
    KyResource::popThreadDirectory();
}
