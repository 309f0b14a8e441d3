// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealHost.h"

#include <QStandardPaths>

#include <cmath>
#include <numbers>
#include <sstream>

namespace {

constexpr const char* cPointer = "xdotool";
/// What the program shows may be that far from what a test expects.
constexpr double cTolerance = 0.02;

constexpr const char* cScript = R"(
local box = KyMeshNode()
box:makeBox(2, 2, 2)
box:setColor(1, 0, 0)
scene:addChild(box)
camera:lookAt(0, 0, 5, 0, 0, 0)
local function numbers(v) return ("%.9g %.9g %.9g "):format(v.x, v.y, v.z) end
return coroutine.create(function()
    local last
    while true do
        local now = numbers(camera.WorldPosition) .. numbers(camera:getForward()) .. numbers(camera:getRight())
            .. numbers(box.WorldPosition) .. (camera.Orthographic and 1 or 0)
        if now ~= last then print("view " .. now .. " .") io.stdout:flush() end
        last = now
        coroutine.yield()
    end
end)
)";

} // namespace

std::ostream& operator<<(std::ostream& stream, const KyRealView& view) {
    return stream << "eye " << view.eye << ", forward " << view.forward << ", right " << view.right << ", box "
                  << view.box;
}

void KyRealHost::SetUp() {
    if (QStandardPaths::findExecutable(cPointer).isEmpty())
        GTEST_SKIP() << "no xdotool to move the pointer and press keys with";
    if (!mDisplay.getError().empty())
        GTEST_SKIP() << mDisplay.getError();
    restart();
}

void KyRealHost::restart() {
    write("view.lua", cScript);
    mEnvironment.insert("DISPLAY", mDisplay.getName());
    mEnvironment.insert("QT_QPA_PLATFORM", "xcb");
    talk(QStringList{"--size", QString("%1x%2").arg(cWidth).arg(cHeight), "view.lua"} + mScripts);
    const testing::AssertionResult hasBegun = waitFor(" .\n");
    if (contains(mSeen, "no OpenGL"))
        GTEST_SKIP() << mSeen;
    ASSERT_TRUE(hasBegun);
    const KyHostResult found = runPointer({"search", "--sync", "--onlyvisible", "--name", "^kyhost$"});
    mWindow = QString::fromStdString(found.output).section('\n', 0, 0);
    ASSERT_FALSE(mWindow.isEmpty()) << mSeen << found;
}

KyHostResult KyRealHost::runPointer(QStringList commands) const {
    return run(commands.replaceInStrings(cWindow, mWindow), {}, cPointer);
}

QStringList KyRealHost::moveTo(int x, int y) {
    return {"mousemove", "--window", cWindow, QString::number(x), QString::number(y)};
}

QStringList KyRealHost::drag(int button, int right, int down) {
    const QString name = QString::number(button);
    return moveTo(cMiddleX, cMiddleY) + QStringList{"mousedown", name} + moveTo(cMiddleX + right, cMiddleY + down) +
           QStringList{"mouseup", name};
}

QStringList KyRealHost::click(int button) {
    return moveTo(cMiddleX, cMiddleY) + QStringList{"click", QString::number(button)};
}

void KyRealHost::expectView(const KyRealView& expected) {
    ASSERT_TRUE(act(key("o")));
    ASSERT_TRUE(waitFor(" 1 .\n"));
    KyRealView view;
    std::istringstream stream(mSeen.substr(mSeen.rfind("view ", mPosition) + 5));
    for (KyVec3d* vector : {&view.eye, &view.forward, &view.right, &view.box})
        stream >> vector->x >> vector->y >> vector->z;
    for (const auto member : {&KyRealView::eye, &KyRealView::forward, &KyRealView::right, &KyRealView::box})
        EXPECT_LT((view.*member - expected.*member).length(), cTolerance) << view << "\nexpected " << expected;
}

double KyRealHost::getPixel() {
    return 2.0 * cDepth * std::tan(std::numbers::pi / 8.0) / cHeight;
}
