// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DPath.h"

#include "Ky2DRaster.h"
#include "Ky2DStyle.h"
#include "Ky2DTestNodes.h"
#include "Ky2DUtil.h"

#include <QGraphicsPathItem>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using Command = Ky2DPathCommand;
constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

class Ky2DPathTest : public testing::Test {
protected:
    QPainterPath updated() {
        path.update();
        return dynamic_cast<QGraphicsPathItem&>(*path.getQGraphicsItem()).path();
    }

    Ky2DPath path;
};

/// Qt's elements as text: the kind (move, line, curve, curve data) and the point.
std::string describe(const QPainterPath& path) {
    std::string text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        text += (i == 0 ? "" : " ") + std::string(1, "MLCc"[element.type]) + std::to_string(std::lround(element.x)) +
                "," + std::to_string(std::lround(element.y));
    }
    return text;
}

std::string build(const std::vector<Command>& commands, const KyVec2d& offset = {}) {
    QPainterPath path;
    Ky2DUtil::initializeQPainterPath(path, commands, offset);
    return describe(path);
}

QPainterPath makeArc(const QPointF& from, std::initializer_list<double> numbers) {
    QPainterPath path;
    Ky2DUtil::initializeQPainterPath(
        path, {Command(Command::eMoveTo, {from.x(), from.y()}), Command(Command::eArcTo, numbers)}, KyVec2d());
    return path;
}

/// Path data, and what the peer is given where its reading is none to compare with.
struct Drawing {
    const char* data;
    const char* peer = nullptr;
    bool isEvenOdd = false;
};

constexpr Drawing cDrawings[] = {
    {"M60 100 A60 40 0 0 0 140 120 Z"},
    {"M60 100 A60 40 0 0 1 140 120 Z"},
    {"M60 100 A60 40 0 1 0 140 120"},
    {"M60 100 A60 40 0 1 1 140 120"},
    {"M80 90 a60 30 30 0 0 40 20"},
    {"M80 90 a60 30 30 0 1 40 20"},
    {"M80 90 a60 30 30 1 0 40 20"},
    {"M80 90 a60 30 30 1 1 40 20"},
    {"M60 90 a60 30 -400 1 1 40 20", "M60 90 a60 30 -40 1 1 40 20"},
    // Too small radii grow until they reach; both large-arc flags are then the same half.
    {"M40 100 A10 5 20 0 1 160 100"},
    {"M40 100 A10 5 20 1 0 160 100"},
    {"M40 100 A1e-200 1e-200 0 0 1 160 100", "M40 100 A60 60 0 0 1 160 100"},
    {"M40 100 A2e-310 1e-310 0 0 1 160 100", "M40 100 A60 30 0 0 1 160 100"},
    {"M40 100 A-60 -60 0 0 1 160 100", "M40 100 A60 60 0 0 1 160 100"},
    {"M40 60 A0 30 0 0 1 160 100 A30 0 0 1 1 40 140", "M40 60 L160 100 L40 140"},
    {"M40 60 A1e90 1e90 0 0 1 160 100 L40 160", "M40 60 L160 100 L40 160"},
    {"M40 60 L100 60 A30 30 0 0 1 100 60 L160 160", "M40 60 L100 60 L160 160"},
    {"M100 40 A60 60 0 1 1 99.9999999999 40 Z", "M100 40 A60 60 0 0 1 100 160 A60 60 0 0 1 100 40 Z"},
    {"M40 100 A60 60 0 0 1 100 40 60 60 0 0 1 160 100 a60 60 0 0 1 -60 60"},
    // Smooth curves after their own kind, after each other's, and after others.
    {"M20 100 C20 40 80 40 80 100 S140 160 140 100 S180 60 180 140"},
    {"M20 100 c0 -60 60 -60 60 0 s60 60 60 0 s30 -40 40 40"},
    {"M20 100 L60 60 S140 160 140 100", "M20 100 L60 60 C60 60 140 160 140 100"},
    {"M20 100 Q60 20 100 100 S140 160 180 100", "M20 100 Q60 20 100 100 C100 100 140 160 180 100"},
    {"M20 100 S100 20 180 100", "M20 100 C20 100 100 20 180 100"},
    {"M20 100 Q60 20 100 100 T180 100 T180 180"},
    {"M20 100 q40 -80 80 0 t60 0 t20 80"},
    {"M20 100 L60 60 T100 160 T180 100", "M20 100 L60 60 Q60 60 100 160 Q140 260 180 100"},
    {"M20 100 C20 40 80 40 80 100 T180 180", "M20 100 C20 40 80 40 80 100 L180 180"},
    {"M20 100 A40 40 0 0 1 80 60 S140 160 180 100", "M20 100 A40 40 0 0 1 80 60 C80 60 140 160 180 100"},
    {"M20 20 H100 V60 h60 v100 h-120 v-20 H30 Z"},
    {"m20 20 h40 v40 h-40 z m80 80 h40 v40 h-40 z", "M20 20 H60 V60 H20 Z M100 100 H140 V140 H100 Z"},
    {"M20 20 h60 v60 z l30 120 h40 z"},
    {"M10 10 90 10 90 90 m20 0 50 0 0 50 z", "M10 10 L90 10 L90 90 M110 90 L160 90 L160 140 Z"},
    // Inner outlines of either direction, by both rules.
    {"M20 20 H180 V180 H20 Z M60 60 H140 V140 H60 Z"},
    {"M20 20 H180 V180 H20 Z M60 60 H140 V140 H60 Z", nullptr, true},
    {"M20 20 H180 V180 H20 Z M60 60 V140 H140 V60 Z"},
    {"M100 20 L150 180 L20 80 H180 L50 180 Z", nullptr, true},
};

} // namespace

TEST_F(Ky2DPathTest, DrawsWhatQtsSvgRendererDraws) {
    for (const Drawing& drawing : cDrawings) {
        ASSERT_TRUE(path.setPathData(drawing.data)) << drawing.data;
        path.editStyle()->setFillRule(drawing.isEvenOdd ? eEvenOdd : eNonZero);
        const QByteArray data(drawing.peer ? drawing.peer : drawing.data);
        const QImage peer = Ky2DRaster::renderSvg(
            "<path fill-rule='" + QByteArray(drawing.isEvenOdd ? "evenodd" : "nonzero") + "' d='" + data + "'");
        EXPECT_GT(Ky2DRaster::countDifferences(peer, Ky2DRaster::makePaper()), 100) << drawing.data;
        EXPECT_LE(Ky2DRaster::countDifferences(peer, Ky2DRaster::renderNode(path)), 8) << drawing.data;
    }
}

TEST_F(Ky2DPathTest, AnArcStaysOnItsEllipseAndTurnsAsItsFlagsSay) {
    std::mt19937 engine(5);
    std::uniform_real_distribution<double> distribution(0, 1);
    constexpr double cRadians = 0.017453292519943295;
    for (int round = 0; round < 2000; ++round) {
        const double rx = std::exp(20 * distribution(engine) - 10), ry = rx * (0.1 + 3 * distribution(engine));
        const double rotation = 720 * distribution(engine) - 360, angle = 360 * distribution(engine);
        const double size = 1 + 358 * distribution(engine), span = round % 2 == 0 ? size : -size;
        const auto at = [=](double degrees) {
            const double x = rx * std::cos(degrees * cRadians), y = ry * std::sin(degrees * cRadians);
            const double sine = std::sin(rotation * cRadians), cosine = std::cos(rotation * cRadians);
            return QPointF(x * cosine - y * sine, x * sine + y * cosine);
        };
        const QPointF from = at(angle), to = at(angle + span);
        const QPainterPath arc =
            makeArc(from, {rx, ry, rotation, size > 180 ? 1.0 : 0.0, span > 0 ? 1.0 : 0.0, to.x(), to.y()});
        const int count = arc.elementCount() / 3;
        ASSERT_GE(count, 1);
        EXPECT_EQ(arc.currentPosition(), to);
        for (int i = 0; i < count; ++i) {
            const auto point = [&arc, i](int k) { return QPointF(arc.elementAt(3 * i + k)); };
            const QPointF middle = (point(0) + 3 * point(1) + 3 * point(2) + point(3)) / 8;
            const QPointF error = middle - at(angle + span * (i + 0.5) / count);
            ASSERT_LT(std::hypot(error.x(), error.y()), 4e-4 * std::max(rx, ry)) << span << " degrees, curve " << i;
        }
    }
}

TEST_F(Ky2DPathTest, AHugeRadiusLosesNoDigits) {
    const QPainterPath arc = makeArc({0, 0}, {1e9, 1e9, 0, 0, 1, 2, 0});
    ASSERT_EQ(arc.elementCount(), 4);
    // The bow over a chord of 2 is 1 / (2 r) high, and a curve's handles reach four thirds of it.
    EXPECT_NEAR(arc.elementAt(1).y, -4.0 / 3 * 0.5e-9, 1e-14);
    EXPECT_NEAR(arc.elementAt(1).x, 2.0 / 3, 1e-9);
}

TEST_F(Ky2DPathTest, EveryPointIsMovedByTheOffset) {
    path.setPathData("M1 1 L3 4 h1 v1 C1 2 3 4 5 6 s1 2 3 4 Q1 2 3 4 T5 5 A9 9 0 0 1 9 9 a1 1 0 1 1 1 0 z l1 1");
    const QPainterPath plain = updated();
    path.setQtOffset(KyVec2d(1000, -500));
    const QPainterPath moved = updated();
    ASSERT_EQ(moved.elementCount(), plain.elementCount());
    for (int i = 0; i < moved.elementCount(); ++i) {
        EXPECT_NEAR(moved.elementAt(i).x, plain.elementAt(i).x + 1000, 1e-9);
        EXPECT_NEAR(moved.elementAt(i).y, plain.elementAt(i).y - 500, 1e-9);
    }
}

TEST_F(Ky2DPathTest, TheCurrentPointIsWhereTheLastCommandLeftIt) {
    EXPECT_EQ(build({Command(Command::eLineTo, {1, 2})}, {5, 5}), "M5,5 L6,7");
    EXPECT_EQ(build({Command(Command::eMoveTo, {1, 2}), Command(Command::eLineTo, {3, 3})}, {5, 5}), "M6,7 L8,8");
    EXPECT_EQ(build({Command(Command::eMoveTo, {10, 10}), Command(Command::eHorizontalTo, {20}),
                     Command(Command::eVerticalTo, {20}), Command(Command::eClose),
                     Command(Command::eRelativeHorizontalTo, {5})}),
              "M10,10 L20,10 L20,20 L10,10 M10,10 L15,10");
    EXPECT_EQ(build({Command(Command::eMoveTo, {1, 1}), Command(Command::eLineTo, {4, 4}),
                     Command(Command::eSmoothCubicTo, {8, 0, 9, 9})}),
              "M1,1 L4,4 C4,4 c8,0 c9,9");
    // A skipped command is as if it were not there: what comes next mirrors the curve before it.
    EXPECT_EQ(build({Command(Command::eMoveTo, {0, 0}), Command(Command::eCubicTo, {0, 3, 9, 3, 9, 0}),
                     Command(Command::eLineTo, {7}), Command(Command::eSmoothCubicTo, {18, -3, 18, 0})}),
              "M0,0 C0,3 c9,3 c9,0 C9,-3 c18,-3 c18,0");
}

TEST_F(Ky2DPathTest, HostileCommandsAreSkippedAndThePathGoesOn) {
    const Command first(Command::eMoveTo, {1, 1}), last(Command::eRelativeLineTo, {1, 1});
    const Command hostile[] = {
        Command(Command::eMoveTo),
        Command(Command::eLineTo, {5}),
        Command(Command::eHorizontalTo),
        Command(Command::eCubicTo, {1, 2, 3, 4, 5}),
        Command(Command::eRelativeSmoothQuadraticTo, {1}),
        Command(Command::eArcTo, {5, 5, 0, 0, 1, 9}),
        Command(Command::eMoveTo, {cNaN, 5}),
        Command(Command::eLineTo, {5, cInfinity}),
        Command(Command::eRelativeHorizontalTo, {-cInfinity}),
        Command(Command::eVerticalTo, {1e300}),
        Command(Command::eCubicTo, {cNaN, 0, 0, 0, 9, 9}),
        Command(Command::eQuadraticTo, {cInfinity, 0, 9, 9}),
        Command(Command::eArcTo, {cNaN, 5, 0, 0, 1, 9, 9}),
        Command(Command::eArcTo, {5, 5, cInfinity, 0, 1, 9, 9}),
        Command(Command::eRelativeArcTo, {5, 5, 0, 0, 1, cNaN, 9}),
        Command(Command::eArcTo, {5, 5, 0, 0, 1, 1, 1}),
    };
    for (const Command& command : hostile)
        EXPECT_EQ(build({first, command, last}), "M1,1 L2,2") << Command::getLetter(command.getType());
    EXPECT_EQ(build({first, Command(Command::eLineTo, {4, 4, 7, 8, 9, 9, 9, 9, 9}), last}), "M1,1 L4,4 L5,5");
    EXPECT_EQ(build({first, last}, {cNaN, 0}), "M0,0");
    // Flags: what is not finite is unset, a fraction is cut.
    EXPECT_EQ(build({first, Command(Command::eArcTo, {4, 4, 0, cNaN, -0.9, 9, 1})}),
              build({first, Command(Command::eArcTo, {4, 4, 0, 0, 0, 9, 1})}));
    EXPECT_EQ(build({first, Command(Command::eArcTo, {9, 9, 0, -1.9, 7, 9, 1})}),
              build({first, Command(Command::eArcTo, {9, 9, 0, 1, 1, 9, 1})}));
}

TEST_F(Ky2DPathTest, AnUnknownTypeIsReportedAndSkipped) {
    const Command first(Command::eMoveTo, {1, 1}), last(Command::eLineTo, {3, 3});
    for (const std::int32_t type : {-1, 19, std::numeric_limits<std::int32_t>::max()}) {
        testing::internal::CaptureStdout();
        const std::string built = build({first, Command(type, {5, 5}), last});
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path command type not managed.\n");
        EXPECT_EQ(built, "M1,1 L3,3");
    }
}

TEST_F(Ky2DPathTest, CommandsAreAddedEditedAndRemoved) {
    path.addCommand(Command(Command::eMoveTo, {0.5, 1e6}));
    path.addCommand(Command(Command::eLineTo, {3, 4}));
    path.addCommand(Command(Command::eClose));
    path.addCommand(Command(99, {1}));
    EXPECT_EQ(path.getCommandString(0), "M 0.5 1e+06");
    EXPECT_EQ(path.getCommandString(1), "L 3 4");
    EXPECT_EQ(path.getCommandString(2), "Z");
    EXPECT_EQ(path.getCommandString(3), "");
    EXPECT_EQ(path.getCommandString(4), "");
    path.removeCommand(3);
    path.removeCommand(3);
    path.update();
    EXPECT_FALSE(path.isModified());
    path.editCommand(7).addCoordinate(1);
    EXPECT_FALSE(path.isModified());
    EXPECT_EQ(path.editCommand(7), Command());
    path.editCommand(1).setPoint(0, KyVec2d(7, 8));
    EXPECT_TRUE(path.isGeometryModified());
    EXPECT_EQ(path.getPathData(), "M0.5 1e+06L7 8Z");
    EXPECT_EQ(path.getCommand(7), Command());
    EXPECT_FALSE(path.setPathData("M1 1 L2"));
    EXPECT_FALSE(path.addPathData("L5 5 x"));
    EXPECT_EQ(path.getPathData(), "M0.5 1e+06L7 8Z");
    const Listener listener(path);
    EXPECT_TRUE(path.addPathData("h2 3"));
    EXPECT_EQ(listener.entries.size(), 2U);
    EXPECT_EQ(path.getNbCommands(), 5U);
}

TEST_F(Ky2DPathTest, ANewFillRuleReachesTheItemWithoutNewGeometry) {
    path.setPathData("M0 0 H9 V9 Z");
    EXPECT_EQ(updated().fillRule(), Qt::WindingFill);
    path.editStyle()->setFillRule(eEvenOdd);
    EXPECT_FALSE(path.isGeometryModified());
    EXPECT_EQ(updated().fillRule(), Qt::OddEvenFill);
    EXPECT_EQ(describe(updated()), "M0,0 L9,0 L9,9 L0,0");
}
