// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "Ky2DPathCommand.h"
#include "Ky2DUtil.h"

#include <QPainterPath>
#include <QRectF>

#include <array>
#include <cmath>
#include <random>

namespace {

using Command = Ky2DPathCommand;
using Commands = std::vector<Command>;

/// Numbers that are the same in every run and on every library.
class Numbers {
public:
    double next() { return static_cast<double>(mEngine()) * (200.0 / 4294967296.0) - 100.0; }

private:
    std::mt19937 mEngine{20};
};

/// All types but arcs in turn, a move before all and after each closing.
Commands makeCommands(std::size_t count) {
    Numbers numbers;
    Commands commands;
    commands.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::int32_t type = static_cast<std::int32_t>(i * 7 % Command::eNbTypes);
        if (type == Command::eArcTo || type == Command::eRelativeArcTo)
            type -= Command::eArcTo - Command::eLineTo;
        Command command(i == 0 ? Command::eMoveTo : type);
        for (unsigned n = Command::getNbNeeded(command.getType()); n > 0; --n)
            command.addCoordinate(numbers.next());
        commands.push_back(command);
    }
    return commands;
}

/// A call of QPainterPath with nothing left to reckon.
struct Call {
    QPainterPath::ElementType kind;
    std::array<QPointF, 3> points;
};

std::vector<Call> resolve(const QPainterPath& path) {
    std::vector<Call> calls;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        Call call{element.type, {QPointF(element)}};
        if (element.isCurveTo()) {
            call.points[1] = path.elementAt(++i);
            call.points[2] = path.elementAt(++i);
        }
        calls.push_back(call);
    }
    return calls;
}

void play(QPainterPath& path, const std::vector<Call>& calls) {
    for (const Call& call : calls) {
        switch (call.kind) {
        case QPainterPath::MoveToElement:
            path.moveTo(call.points[0]);
            break;
        case QPainterPath::LineToElement:
            path.lineTo(call.points[0]);
            break;
        default:
            path.cubicTo(call.points[0], call.points[1], call.points[2]);
        }
    }
}

struct PathState {
    Commands commands;
    std::vector<Call> calls;
    int nbElements = 0;
};

/// Read by nobody, but the compiler must not see that.
volatile int gSink = 0;

template <std::size_t Count>
KyBenchmarkSides preparePath() {
    auto state = std::make_shared<PathState>();
    state->commands = makeCommands(Count);
    QPainterPath path;
    Ky2DUtil::initializeQPainterPath(path, state->commands, KyVec2d(3, 4));
    state->calls = resolve(path);
    state->nbElements = path.elementCount();
    const auto ours = [state = state.get()](long count) {
        for (; count > 0; --count) {
            QPainterPath built;
            Ky2DUtil::initializeQPainterPath(built, state->commands, KyVec2d(3, 4));
            gSink = built.elementCount();
        }
    };
    const auto peer = [state = state.get()](long count) {
        for (; count > 0; --count) {
            QPainterPath built;
            built.reserve(state->nbElements);
            play(built, state->calls);
            gSink = built.elementCount();
        }
    };
    return {ours, peer, state};
}

struct Arc {
    QRectF frame;
    double start;
    double span;
};

struct ArcState {
    Commands commands;
    std::vector<Arc> arcs;
};

constexpr int cNbArcs = 64;

/// Arcs of all lengths, each from the end of the one before.
std::shared_ptr<ArcState> makeArcs() {
    auto state = std::make_shared<ArcState>();
    constexpr double cRadians = 0.017453292519943295;
    Numbers numbers;
    QPointF point(0, 0);
    state->commands = {Command(Command::eMoveTo, {0, 0})};
    for (int i = 0; i < cNbArcs; ++i) {
        const double rx = std::abs(numbers.next()) + 1, ry = std::abs(numbers.next()) + 1;
        const double start = numbers.next() * 1.8, span = numbers.next() * 3.5;
        // Qt's angles are counter-clockwise on screen.
        const auto at = [rx, ry](double angle) {
            return QPointF(rx * std::cos(angle * cRadians), -ry * std::sin(angle * cRadians));
        };
        const QPointF centre = point - at(start), end = centre + at(start + span);
        state->arcs.push_back({QRectF(centre.x() - rx, centre.y() - ry, 2 * rx, 2 * ry), start, span});
        const double isLarge = std::abs(span) > 180 ? 1 : 0, isPositive = span < 0 ? 1 : 0;
        state->commands.push_back(Command(Command::eArcTo, {rx, ry, 0, isLarge, isPositive, end.x(), end.y()}));
        point = end;
    }
    return state;
}

KyBenchmarkSides prepareArcs() {
    auto state = makeArcs();
    const auto ours = [state = state.get()](long count) {
        for (; count > 0; count -= cNbArcs) {
            QPainterPath path;
            Ky2DUtil::initializeQPainterPath(path, state->commands, KyVec2d());
            gSink = path.elementCount();
        }
    };
    const auto peer = [state = state.get()](long count) {
        for (; count > 0; count -= cNbArcs) {
            QPainterPath path;
            path.reserve(3 * cNbArcs);
            path.moveTo(0, 0);
            for (const Arc& arc : state->arcs)
                path.arcTo(arc.frame, arc.start, arc.span);
            gSink = path.elementCount();
        }
    };
    return {ours, peer, state};
}

} // namespace

std::vector<KyBenchmark> get2DPathBenchmarks() {
    using Gate = KyBenchmark::Gate;
    return {
        {"path of 1,000,000 commands", "resolved calls of QPainterPath", 1.15, Gate::eTime, 2, &preparePath<1000000>},
        {"path of 1,000 commands", "resolved calls of QPainterPath", 1.4, Gate::eTime, 1000, &preparePath<1000>},
        {"elliptical arc", "QPainterPath::arcTo", 0.6, Gate::eInstructions, 64 * cNbArcs, &prepareArcs},
    };
}
