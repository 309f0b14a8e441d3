// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostFileWatch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int cPatience = 5000;
constexpr int cQuietTime = 700;

class KyHostFileWatchTest : public testing::Test {
protected:
    std::string getPath(const char* name) const { return mFolder.filePath(name).toStdString(); }

    static void write(const std::string& path, const std::string& text) {
        std::ofstream(path, std::ios::trunc) << text;
    }

    static void processEvents(int milliseconds, const std::function<bool()>& isDone) {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < milliseconds && !isDone())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }

    /// Runs events until something has been told, then until nothing more comes; how many times it was told.
    std::size_t countChanges() {
        mTold.clear();
        processEvents(cPatience, [this] { return !mTold.empty(); });
        processEvents(cQuietTime, [] { return false; });
        return mTold.size();
    }

    int mNbArguments = 1;
    char mName[5] = "test";
    char* mArguments[2] = {mName, nullptr};
    QCoreApplication mApplication{mNbArguments, mArguments};
    QTemporaryDir mFolder;
    std::vector<std::string> mTold;
    KyHostFileWatch mWatch{[this](const std::string& path) { mTold.push_back(path); }};
};

} // namespace

TEST_F(KyHostFileWatchTest, AFileWrittenInPlaceOrRenamedOverAnotherIsToldOnceEachTime) {
    const std::string path = getPath("a.lua");
    write(path, "1");
    mWatch.addFile(path);
    for (const char* text : {"first change", "second one"}) {
        write(path, text);
        EXPECT_EQ(1u, countChanges()) << text;
        EXPECT_EQ(std::vector{path}, mTold);
        write(path + "~", text + std::string(" renamed"));
        std::filesystem::rename(path + "~", path);
        EXPECT_EQ(1u, countChanges()) << text;
    }
}

TEST_F(KyHostFileWatchTest, AFileThatIsRemovedIsToldWhenItIsBackAndNoLongerEmpty) {
    const std::string path = getPath("a.lua");
    write(path, "1");
    mWatch.addFile(path);
    write(getPath("b.lua"), "something else");
    std::filesystem::remove(path);
    processEvents(cQuietTime, [this] { return !mTold.empty(); });
    write(path, "");
    processEvents(cQuietTime, [this] { return !mTold.empty(); });
    EXPECT_TRUE(mTold.empty()) << "neither removed nor empty, nor others";
    write(path, "back again");
    EXPECT_EQ(1u, countChanges());
}
