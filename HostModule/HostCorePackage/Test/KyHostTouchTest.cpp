// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealHost.h"
#include "KyRealTouch.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

constexpr double cEighth = std::numbers::pi / 4.0;

constexpr auto cDown = KyRealTouch::eBegin, cMove = KyRealTouch::eUpdate, cUp = KyRealTouch::eEnd;

/// What a finger does, and where in the window. Without an action the program is waited for: Qt drops moves of a finger
/// that are followed by newer ones.
struct Step {
    KyRealTouch::Kind kind{};
    std::uint32_t finger = 0;
    int x = 0, y = 0;
};
constexpr Step cWait;

using Steps = std::vector<Step>;

/// From where to where a finger goes.
struct Finger {
    std::uint32_t number = 0;
    int x = 0, y = 0;
    int toX = 0, toY = 0;
};

/// They come down, move and go up one after the other; or go up in reverse.
Steps together(std::vector<Finger> fingers, bool lastGoesFirst = false) {
    Steps steps;
    for (const Finger& finger : fingers)
        steps.push_back({cDown, finger.number, finger.x, finger.y});
    for (const Finger& finger : fingers)
        if (finger.x != finger.toX || finger.y != finger.toY)
            steps.push_back({cMove, finger.number, finger.toX, finger.toY});
    if (lastGoesFirst)
        std::ranges::reverse(fingers);
    for (const Finger& finger : fingers)
        steps.push_back({cUp, finger.number, finger.toX, finger.toY});
    return steps;
}

class KyHostTouchTest : public KyRealHost {
protected:
    KyHostTouchTest()
        : KyRealHost(KyRealDisplay::eTouchScreen, 0.04) {}

    void play(const Steps& steps) {
        for (const auto& [kind, finger, x, y] : steps)
            ASSERT_TRUE(kind ? testing::AssertionResult(mTouch.send(kind, finger, x, y)) : synchronise());
    }

    /// Waits until the program has taken all that was sent to it up to now; writes a picture for that.
    testing::AssertionResult synchronise() {
        return act(key("F12")) ? waitFor("wrote kyhost-") : testing::AssertionFailure() << "xdotool failed";
    }

    KyRealTouch mTouch{mDisplay};
};

} // namespace

TEST_F(KyHostTouchTest, FingersShiftZoomTwistAndTurn) {
    ASSERT_EQ("", mTouch.getError());
    const KyVec3d ahead(0, 0, -1), right(1, 0, 0), up(0, 1, 0), eye(0, 0, cEyeDistance);
    const KyRealView shifted{eye + KyVec3d(-50, 20, 0) * getPixel(), ahead, right};
    const double orbit = -4.0 * 30 / cWidth;
    const KyVec3d centre(30 * getPixel(), 0, 1);
    const Steps one{{cDown, 0, 200, 150}, {cMove, 0, 220, 150}, cWait, {cMove, 0, 250, 170}, {cUp, 0, 250, 170}};
    // The first move after another finger has gone is only where to count from.
    const Steps oneAndAnother{{cDown, 0, 200, 150}, {cMove, 0, 220, 160}, cWait, {cDown, 1, 350, 20},
                              {cUp, 1, 350, 20},    {cMove, 0, 180, 150}, cWait, {cMove, 0, 210, 160},
                              {cUp, 0, 210, 160}};
    const Steps tap = together({{0, 200, 150, 200, 150}});
    const Steps apart = together({{0, 150, 150, 130, 150}, {1, 250, 150, 270, 150}});
    const Steps closer = together({{1, 250, 150, 240, 150}, {0, 150, 150, 160, 150}});
    const Steps turning = together({{0, 150, 150, 150, 100}, {1, 250, 150, 250, 200}});
    const Steps three = together({{0, 100, 50, 100, 50}, {1, 200, 150, 230, 150}, {2, 300, 50, 300, 50}}, true);
    struct Row {
        const char* name;
        const Steps& steps;
        KyRealView view;
        /// Looks along an axis beforehand.
        const char* key = nullptr;
    };
    const KyRealView above{{0, 1 + cDepth / std::numbers::sqrt2, 0}, -up, turn(up, cEighth, right)};
    const KyRealView turned{centre + turn(up, orbit, eye - centre), turn(up, orbit, ahead), turn(up, orbit, right)};
    const Row rows[] = {{"one finger", one, shifted},
                        {"one finger, another comes and goes", oneAndAnother, shifted},
                        {"a tap", tap, {eye, ahead, right}},
                        {"two apart", apart, {{0, 0, 1 + cDepth / 1.4}, ahead, right}},
                        {"two closer, the second goes first", closer, {{0, 0, 1 + cDepth / 0.8}, ahead, right}},
                        {"two turning, from above", turning, above, "5"},
                        {"three, one moves", three, turned}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        if (row.key) {
            ASSERT_TRUE(act(key(row.key)));
        }
        play(row.steps);
        expectView(row.view);
        if (HasFatalFailure())
            return;
        restart();
    }
}
