// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostProcess.h"
#include "KyRealDisplay.h"

#include "KyQuat.h"

#include <ostream>

/// What the program shows.
struct KyRealView {
    KyVec3d eye, forward, right;
    /// Where the box stands, which is from -1 to 1 at first.
    KyVec3d box{};
};

std::ostream& operator<<(std::ostream& stream, const KyRealView& view);

/// The program in a process of its own, with its window on a display that pointer and keys reach, a box about
/// the origin, and the camera at (0, 0, 5) looking at it. It tells its view whenever that changes.
class KyRealHost : public KyHostTalkTest {
protected:
    /// The window has a pixel in its very middle.
    static constexpr int cWidth = 401, cHeight = 301;
    static constexpr int cMiddleX = 200, cMiddleY = 150;
    static constexpr double cEyeDistance = 5.0;
    /// From the first eye to the near side of the box, which a press in the middle takes as the centre.
    static constexpr double cDepth = 4.0;
    /// In chains of xdotool.
    static constexpr const char* cWindow = "the window";

    void SetUp() override;

    /// Shows the window; what was there is ended. Skips where there is no OpenGL on the display.
    void restart();

    /// What a chain of xdotool's commands printed; code 0 when they were all done.
    KyHostResult runPointer(QStringList commands) const;
    bool act(const QStringList& commands) const { return runPointer(commands).code == 0; }
    /// Chains: a drag with a button and a click (4 and 5 are the wheel) from the middle, a way to a pixel, a key.
    static QStringList drag(int button, int right, int down);
    static QStringList click(int button);
    static QStringList moveTo(int x, int y);
    static QStringList key(const QString& name) { return {"windowfocus", cWindow, "key", name}; }

    /// Compares the view after all that was done up to now: presses the key for parallel projection and waits for that.
    void expectView(const KyRealView& expected);

    static KyVec3d turn(const KyVec3d& axis, double angle, const KyVec3d& vector) {
        return KyQuatd(axis, angle).rotate(vector);
    }
    /// World units a pixel at cDepth.
    static double getPixel();

    KyRealDisplay mDisplay;
    /// Run beside the one that makes the box.
    QStringList mScripts;

private:
    QString mWindow;
};
