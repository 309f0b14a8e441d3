// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DUtil.h"

#include "Ky2DArc_p.h"
#include "Ky2DPathCommand.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace {

using Command = Ky2DPathCommand;

/// Resolves commands to absolute points and hands them to Qt. Keeps the points without the offset.
class PathBuilder {
public:
    PathBuilder(QPainterPath& path, const KyVec2d& offset)
        : mPath(path)
        , mOffset(offset.x, offset.y) {
        mPath.moveTo(mOffset);
    }

    void add(const Ky2DPathCommand& command) {
        const std::int32_t type = command.getType();
        if (!Command::isType(type)) {
            std::cout << "Path command type not managed." << std::endl;
            return;
        }
        if (command.getNbCoordinates() < Command::getNbNeeded(type))
            return;
        if (draw(type, command.getCoordinates().data()))
            mPrevious = type;
    }

private:
    // A curve and its smooth form, each absolute and relative, are four types in a row.
    static constexpr std::int32_t cCubics = Command::eCubicTo / 4;
    static constexpr std::int32_t cQuadratics = Command::eQuadraticTo / 4;

    /// The relative forms are the odd types. False when the numbers are no drawable ones.
    bool draw(std::int32_t type, const double* numbers) {
        const QPointF base = type % 2 == 0 ? QPointF() : mCurrent;
        switch (type / 2) {
        case Command::eMoveTo / 2:
            return moveTo(getPoint(base, numbers));
        case Command::eLineTo / 2:
            return lineTo(getPoint(base, numbers));
        case Command::eHorizontalTo / 2:
            return lineTo({base.x() + numbers[0], mCurrent.y()});
        case Command::eVerticalTo / 2:
            return lineTo({mCurrent.x(), base.y() + numbers[0]});
        case Command::eCubicTo / 2:
            return cubicTo(getPoint(base, numbers), getPoint(base, numbers + 2), getPoint(base, numbers + 4));
        case Command::eSmoothCubicTo / 2:
            return cubicTo(mirror(cCubics), getPoint(base, numbers), getPoint(base, numbers + 2));
        case Command::eQuadraticTo / 2:
            return quadraticTo(getPoint(base, numbers), getPoint(base, numbers + 2));
        case Command::eSmoothQuadraticTo / 2:
            return quadraticTo(mirror(cQuadratics), getPoint(base, numbers));
        case Command::eArcTo / 2:
            return arcTo(numbers, getPoint(base, numbers + 5));
        default:
            return close();
        }
    }

    static QPointF getPoint(const QPointF& base, const double* numbers) {
        return {base.x() + numbers[0], base.y() + numbers[1]};
    }

    /// Qt takes no greater coordinates; false for NaN.
    static bool isDrawable(double number) { return std::abs(number) < 1e128; }
    static bool isDrawable(const QPointF& point) { return isDrawable(point.x()) && isDrawable(point.y()); }

    bool moveTo(const QPointF& point) {
        if (!isDrawable(point))
            return false;
        mPath.moveTo(point + mOffset);
        mCurrent = mStart = point;
        return true;
    }

    bool lineTo(const QPointF& point) {
        if (!isDrawable(point))
            return false;
        mPath.lineTo(point + mOffset);
        mCurrent = point;
        return true;
    }

    bool cubicTo(const QPointF& control1, const QPointF& control2, const QPointF& end) {
        if (!isDrawable(control1) || !isDrawable(control2) || !isDrawable(end))
            return false;
        mPath.cubicTo(control1 + mOffset, control2 + mOffset, end + mOffset);
        mControl = control2;
        mCurrent = end;
        return true;
    }

    /// As the cubic that it is: Qt's own way to it checks every point twice.
    bool quadraticTo(const QPointF& control, const QPointF& end) {
        if (!isDrawable(control) || !isDrawable(end))
            return false;
        const QPointF middle = 2 * (control + mOffset), last = end + mOffset;
        mPath.cubicTo((mCurrent + mOffset + middle) / 3, (last + middle) / 3, last);
        mControl = control;
        mCurrent = end;
        return true;
    }

    bool arcTo(const double* numbers, const QPointF& end) {
        if (!std::all_of(numbers, numbers + 3, [](double number) { return isDrawable(number); }) || !isDrawable(end))
            return false;
        // Not QPointF's comparison, for which close is equal.
        if (end.x() == mCurrent.x() && end.y() == mCurrent.y())
            return true;
        Ky2DArc::Curves curves;
        const Ky2DArc::Shape shape{numbers[0], numbers[1], numbers[2], Command::isSet(numbers[3]),
                                   Command::isSet(numbers[4])};
        const unsigned count = Ky2DArc::compute(mCurrent, end, shape, curves);
        if (count == 0)
            return lineTo(end);
        for (unsigned i = 0; i < count; ++i)
            mPath.cubicTo(curves[i][0] + mOffset, curves[i][1] + mOffset, curves[i][2] + mOffset);
        mCurrent = end;
        return true;
    }

    bool close() {
        mPath.closeSubpath();
        mCurrent = mStart;
        return true;
    }

    /// The mirror image of the last control point of a curve of that kind; without one before, the current point.
    QPointF mirror(std::int32_t curves) const { return mPrevious / 4 == curves ? 2 * mCurrent - mControl : mCurrent; }

    QPainterPath& mPath;
    const QPointF mOffset;
    QPointF mCurrent;
    QPointF mStart;
    QPointF mControl;
    std::int32_t mPrevious = Command::eMoveTo;
};

/// Elements of Qt's that the commands take, by a look at some of them: reading all would cost as much as growing.
int estimateElements(const std::vector<Ky2DPathCommand>& commands) {
    constexpr std::size_t cNbLooks = 64, cNbLargest = 1u << 28;
    const std::size_t step = commands.size() / cNbLooks + 1;
    std::size_t elements = 0, looks = 0;
    for (std::size_t i = 0; i < commands.size(); i += step, ++looks)
        elements += commands[i].getType() < Command::eCubicTo ? 1 : 3;
    return static_cast<int>(std::min(elements * commands.size() / looks + 1, cNbLargest));
}

} // namespace

void Ky2DUtil::initializeQPainterPath(QPainterPath& path, const std::vector<Ky2DPathCommand>& commands,
                                      const KyVec2d& qtOffset) {
    if (commands.empty())
        return;
    path.reserve(path.elementCount() + estimateElements(commands));
    PathBuilder builder(path, qtOffset);
    for (const Ky2DPathCommand& command : commands)
        builder.add(command);
}
