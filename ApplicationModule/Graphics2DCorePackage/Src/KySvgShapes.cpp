// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgBuilder_p.h"

#include "Ky2DEllipse.h"
#include "Ky2DGroup.h"
#include "Ky2DImage.h"
#include "Ky2DLine.h"
#include "Ky2DPath.h"
#include "Ky2DPathData.h"
#include "Ky2DRect.h"
#include "Ky2DStyle.h"
#include "Ky2DSvgImage.h"
#include "Ky2DUtil.h"
#include "KyPicture_p.h"
#include "KySvgValues_p.h"

#include "KyResource.h"

#include <QPixmap>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view cDataScheme = "data:";
constexpr std::int64_t cPixelBytes = 4;

QByteArray toBytes(std::string_view text) {
    return QByteArray(text.data(), int(text.size()));
}

QByteArray readEmbedded(std::string_view link) {
    const std::size_t comma = link.find(',');
    if (comma == std::string_view::npos)
        return {};
    const bool isBase64 = link.substr(0, comma).ends_with(";base64");
    const QByteArray text = QByteArray::fromPercentEncoding(toBytes(link.substr(comma + 1)));
    return isBase64 ? QByteArray::fromBase64(text) : text;
}

using Command = Ky2DPathCommand;

bool isMove(const Command& command) {
    return command.getType() <= Command::eRelativeMoveTo;
}

/// Whether a line behind a move leads nowhere.
bool isStill(const Command& move, const Command& line) {
    const auto numbers = line.getCoordinates();
    const std::int32_t type = line.getType();
    if (type == Command::eRelativeLineTo || type == Command::eRelativeHorizontalTo ||
        type == Command::eRelativeVerticalTo)
        return std::ranges::all_of(numbers, [](double number) { return number == 0.0; });
    return type == Command::eLineTo && move.getType() == Command::eMoveTo &&
           std::ranges::equal(numbers, move.getCoordinates());
}

/// Gives the parts of a path that are but a point some length: Qt draws no caps without.
std::vector<Command> lengthenPoints(const std::vector<Command>& commands, double length) {
    std::vector<Command> drawn;
    drawn.reserve(commands.size());
    for (std::size_t i = 0; i < commands.size(); ++i) {
        drawn.push_back(commands[i]);
        std::size_t next = i + 1;
        if (!isMove(commands[i]) || next == commands.size())
            continue;
        const bool hasLine = isStill(commands[i], commands[next]);
        next += hasLine ? 1 : 0;
        const bool isClosed = next < commands.size() && commands[next].getType() == Command::eClose;
        const bool isOver = next == commands.size() || isMove(commands[next]);
        if (!isClosed && !(hasLine && isOver))
            continue;
        // What follows begins where the point is.
        drawn.emplace_back(Command::eRelativeLineTo, std::initializer_list<double>{length, 0.0});
        drawn.emplace_back(Command::eRelativeMoveTo, std::initializer_list<double>{-length, 0.0});
        i = isClosed ? next : next - 1;
    }
    return drawn;
}

} // namespace

template <class Node>
Node* KySvgBuilder::makeShape(const State& state) {
    Node* node = makeNode<Node>(state);
    if (node)
        state.style.applyShape(*node->editStyle());
    return node;
}

void KySvgBuilder::buildRect(const State& state) {
    Ky2DRect* rect = makeShape<Ky2DRect>(state);
    if (!rect)
        return;
    rect->setX(getLength(state, "x", eAlongX));
    rect->setY(getLength(state, "y", eAlongY));
    rect->setWidth(getLength(state, "width", eAlongX));
    rect->setHeight(getLength(state, "height", eAlongY));
    const std::optional<double> rx = findLength(state, state.element, "rx", eAlongX);
    const std::optional<double> ry = findLength(state, state.element, "ry", eAlongY);
    // The node takes one that is not given from the other.
    const bool isSquare = rx && ry && (*rx <= 0.0 || *ry <= 0.0);
    rect->setRX(isSquare ? 0.0 : rx.value_or(0.0));
    rect->setRY(isSquare ? 0.0 : ry.value_or(0.0));
}

void KySvgBuilder::buildCircle(const State& state) {
    const double radius = getLength(state, "r", eAlongNone);
    makeEllipse(state, radius, radius);
}

void KySvgBuilder::buildEllipse(const State& state) {
    makeEllipse(state, getLength(state, "rx", eAlongX), getLength(state, "ry", eAlongY));
}

void KySvgBuilder::makeEllipse(const State& state, double rx, double ry) {
    Ky2DEllipse* ellipse = makeShape<Ky2DEllipse>(state);
    if (!ellipse)
        return;
    ellipse->setX(getLength(state, "cx", eAlongX));
    ellipse->setY(getLength(state, "cy", eAlongY));
    ellipse->setRX(rx);
    ellipse->setRY(ry);
    // Qt draws the outline of a flat one.
    if (rx <= 0.0 || ry <= 0.0)
        ellipse->setVisible(false);
}

void KySvgBuilder::buildLine(const State& state) {
    Ky2DLine* line = makeShape<Ky2DLine>(state);
    if (!line)
        return;
    line->setP1(KyVec2d(getLength(state, "x1", eAlongX), getLength(state, "y1", eAlongY)));
    line->setP2(KyVec2d(getLength(state, "x2", eAlongX), getLength(state, "y2", eAlongY)));
}

void KySvgBuilder::buildPolyline(const State& state) {
    buildPoints(state, false);
}

void KySvgBuilder::buildPolygon(const State& state) {
    buildPoints(state, true);
}

void KySvgBuilder::buildPoints(const State& state, bool isClosed) {
    Ky2DPath* path = makeShape<Ky2DPath>(state);
    std::string_view text = state.element.getAttribute("points");
    const std::vector<double> numbers = KySvgValues::takeNumbers(text);
    if (!text.empty() || numbers.size() % 2 != 0)
        mReports.add("points");
    if (!path || numbers.size() < 2)
        return;
    std::vector<Ky2DPathCommand> commands;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        commands.emplace_back(i == 0 ? Ky2DPathCommand::eMoveTo : Ky2DPathCommand::eLineTo,
                              std::initializer_list<double>{numbers[i], numbers[i + 1]});
    if (isClosed)
        commands.emplace_back(Ky2DPathCommand::eClose);
    path->setCommands(std::move(commands));
}

void KySvgBuilder::buildPath(const State& state) {
    Ky2DPath* path = makeShape<Ky2DPath>(state);
    if (!path)
        return;
    std::vector<Ky2DPathCommand> commands;
    const bool isRead = Ky2DPathData::parse(state.element.getAttribute("d"), commands);
    const bool beginsWithMove = commands.empty() || commands.front().getType() <= Ky2DPathCommand::eRelativeMoveTo;
    if (!isRead || !beginsWithMove)
        mReports.add("path data");
    if (state.style.cap != eFlatCap && state.style.stroke.isDrawn)
        commands = lengthenPoints(commands, state.style.strokeWidth * KySvgStyle::cDotLength);
    if (beginsWithMove)
        path->setCommands(std::move(commands));
}

void KySvgBuilder::buildImage(const State& state) {
    const std::string_view link = state.element.getLink();
    const bool isEmbedded = link.starts_with(cDataScheme);
    const KyURL url = isEmbedded ? KyURL() : KyURL(std::string(link)).getAbsoluteURL(mBase);
    Ky2DImage* image =
        KySvgValues::toLower(url.getExtension()) == "svg" ? makeNode<Ky2DSvgImage>(state) : makeNode<Ky2DImage>(state);
    if (!image)
        return;
    image->setX(getLength(state, "x", eAlongX));
    image->setY(getLength(state, "y", eAlongY));
    image->setWidth(getLength(state, "width", eAlongX));
    image->setHeight(getLength(state, "height", eAlongY));
    image->setOpacity(state.style.opacity);
    const auto ratio = KySvgValues::readAspectRatio(state.element.getAttribute("preserveAspectRatio"));
    image->setPreserveAspectRatio(ratio.isKept);
    if (ratio.isKept && (ratio.isSlice || ratio.alignX != 0.5 || ratio.alignY != 0.5))
        mReports.add("preserveAspectRatio");
    if (const QImage& picture = findPicture(link, url); !picture.isNull())
        isEmbedded ? image->setImage(picture) : image->setLoadedImage(url, picture);
}

const QImage& KySvgBuilder::findPicture(std::string_view link, const KyURL& url) {
    const auto [entry, isNew] = mPictures.try_emplace(link);
    if (isNew)
        entry->second = readPicture(link, url);
    if (entry->second.isNull())
        mReports.add("image");
    return entry->second;
}

QImage KySvgBuilder::readPicture(std::string_view link, const KyURL& url) {
    if (link.empty())
        return {};
    const std::int64_t rest = KyPicture::cMaxPixels - mNbPixels;
    const std::string path = KyPicture::findFile(KyResource::resolve(url));
    const QByteArray bytes =
        link.starts_with(cDataScheme) ? readEmbedded(link) : KyPicture::readFile(path, cPixelBytes * rest);
    const auto [image, isWhole] = KyPicture::decode(bytes, rest);
    if (!isWhole)
        mReports.add("image");
    // What is read counts too, be it no picture.
    const std::int64_t pixels = std::int64_t{image.width()} * image.height();
    mNbPixels += std::min(rest, std::max<std::int64_t>(pixels, bytes.size() / cPixelBytes));
    // As Qt paints it, so that all nodes share one.
    return Ky2DUtil::hasApplication() ? QPixmap::fromImage(image).toImage() : image;
}
