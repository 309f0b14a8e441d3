// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostFileWatch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
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

    /// Runs events until more than that has been told.
    void processEvents(int milliseconds, std::size_t count) const {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < milliseconds && mTold.size() <= count)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }

    /// That the file is told once and then no more.
    void expectToldOnce(const std::string& path) {
        processEvents(cPatience, 0);
        processEvents(cQuietTime, 1);
        EXPECT_EQ(std::vector{path}, std::exchange(mTold, {}));
    }

    int mNbArguments = 0;
    QCoreApplication mApplication{mNbArguments, nullptr};
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
        SCOPED_TRACE(text);
        write(path, text);
        expectToldOnce(path);
        write(path + "~", text + std::string(" renamed"));
        std::filesystem::rename(path + "~", path);
        expectToldOnce(path);
    }
}

TEST_F(KyHostFileWatchTest, AFileThatIsRemovedIsToldWhenItIsBackAndNoLongerEmpty) {
    const std::string path = getPath("a.lua");
    write(path, "1");
    mWatch.addFile(path);
    write(getPath("b.lua"), "something else");
    std::filesystem::remove(path);
    processEvents(cQuietTime, 0);
    write(path, "");
    processEvents(cQuietTime, 0);
    EXPECT_TRUE(mTold.empty()) << "neither removed nor empty, nor others";
    write(path, "back again");
    expectToldOnce(path);
}
