// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealHost.h"

#include "KyHolder.h"
#include "KyImage.h"
#include "KyURL.h"

#include <QDir>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <tuple>

namespace {

class KyHostPointerTest : public KyRealHost {
protected:
    struct Row {
        const char* name;
        QStringList commands;
        KyRealView view;
    };

    /// Does each in a window of its own.
    void expectRows(std::initializer_list<Row> rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            ASSERT_TRUE(act(row.commands));
            expectView(row.view);
            if (HasFatalFailure())
                return;
            restart();
        }
    }

    bool waitForWindows(int count) const {
        const QString process = QString::number(mProcess.processId());
        for (int i = 0; i < 600; ++i) {
            const KyHostResult found = runPointer({"search", "--onlyvisible", "--all", "--pid", process, "--name", ""});
            if (std::ranges::count(found.output, '\n') == count)
                return true;
            QThread::msleep(100);
        }
        return false;
    }
};

const KyVec3d cX(1, 0, 0), cY(0, 1, 0), cAhead(0, 0, -1);

} // namespace

TEST_F(KyHostPointerTest, DragsTurnShiftAndWalkAsTheHandDoes) {
    // A press in the middle makes the near side of the box the centre.
    const KyVec3d centre(0, 0, 1), back(0, 0, cDepth), eye = centre + back;
    const double around = -4.0 * 40 / cWidth;
    const KyRealView turned{centre + turn(cY, around, back), turn(cY, around, cAhead), turn(cY, around, cX)};
    expectRows({{"left, right", drag(1, 40, 0), turned},
                {"middle", drag(2, 50, 20), {eye + KyVec3d(-50, 20, 0) * getPixel(), cAhead, cX}},
                {"right, up", drag(3, 0, -30), {eye + cAhead * (30 * getPixel()), cAhead, cX}},
                {"both ways", drag(1, 40, 0) + drag(2, 0, 0), turned}});
}

TEST_F(KyHostPointerTest, TheWheelZoomsAndModifiersKeepTheCameraWhereasControlDragsTheObject) {
    const auto hold = [](const QString& name, const QStringList& commands) {
        return QStringList{"windowfocus", cWindow, "keydown", name} + commands + QStringList{"keyup", name};
    };
    const KyVec3d eye(0, 0, cEyeDistance);
    expectRows({{"nearer and farther", click(4) + click(5), {{0, 0, 1.0 + 0.89 * 1.11 * cDepth}, cAhead, cX}},
                {"shift", hold("shift", drag(1, 40, 0)), {eye, cAhead, cX}},
                {"control", hold("ctrl", drag(1, 40, -20)), {eye, cAhead, cX, KyVec3d(40, 20, 0) * getPixel()}}});
}

TEST_F(KyHostPointerTest, KeysLookAlongTheAxesAndFrameTheModel) {
    const std::tuple<const char*, KyVec3d, KyVec3d> sides[] = {{"2", {0, 0, -1}, -cX}, {"3", cX, {0, 0, -1}},
                                                               {"4", -cX, {0, 0, 1}},  {"5", cY, cX},
                                                               {"6", -cY, cX},         {"1", {0, 0, 1}, cX}};
    for (const auto& [name, side, right] : sides) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(act(key(name)));
        expectView({side * cEyeDistance, -side, right});
        // Out of parallel projection again.
        ASSERT_TRUE(act(key("o")));
        ASSERT_TRUE(waitFor(" 0 .\n"));
    }
    ASSERT_TRUE(act(key("f")));
    expectView({KyVec3d(0, 0, 1.0 + 1.05 / std::tan(std::numbers::pi / 8.0)), cAhead, cX});
}

TEST_F(KyHostPointerTest, KeysShowTheHelpWriteAPictureAndEndTheProgram) {
    ASSERT_TRUE(waitForWindows(1));
    ASSERT_TRUE(act(key("F1")));
    EXPECT_TRUE(waitForWindows(2)) << "the help";
    ASSERT_TRUE(act(key("Escape")));
    EXPECT_TRUE(waitForWindows(1));
    ASSERT_TRUE(act(key("F12")));
    ASSERT_TRUE(waitFor("wrote kyhost-"));
    const QStringList pictures = QDir(mFolder.path()).entryList({"kyhost-*.png"});
    ASSERT_EQ(1, pictures.size());
    const KyURL url(getPath(pictures.front()).toStdString(), KyURL::eLocalPath);
    const KyHolder<KyImage> picture(KyImage::create(url));
    ASSERT_TRUE(picture);
    EXPECT_EQ(std::pair(cWidth, cHeight), std::pair(picture->getWidth(), picture->getHeight()));
    ASSERT_TRUE(act(key("Escape")));
    EXPECT_TRUE(mProcess.waitForFinished(cPatience));
    EXPECT_EQ(0, mProcess.exitCode());
}

TEST_F(KyHostPointerTest, TheViewLivesWhileTheDebuggerHoldsTheScriptAndEndsBoth) {
    ASSERT_TRUE(act(key("F9")));
    const KyHostResult found = runPointer({"search", "--sync", "--onlyvisible", "--name", "^Debugger - kyhost$"});
    const QString debugger = QString::fromStdString(found.output).section('\n', 0, 0);
    ASSERT_TRUE(act({"windowfocus", debugger, "key", "F6"}));
    ASSERT_TRUE(waitFor("break\n"));
    ASSERT_TRUE(act(key("F12")));
    ASSERT_TRUE(waitFor("wrote kyhost-"));
    EXPECT_FALSE(contains(mSeen, "resume\n"));
    ASSERT_TRUE(act(key("Escape")));
    EXPECT_TRUE(waitFor("resume\n"));
    ASSERT_TRUE(mProcess.waitForFinished(cPatience));
    EXPECT_EQ(0, mProcess.exitCode());
}
