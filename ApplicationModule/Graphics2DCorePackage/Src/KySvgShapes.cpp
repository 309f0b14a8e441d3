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
#include "KySvgValues_p.h"

#include <QBuffer>
#include <QImageReader>

#include <array>
#include <utility>

namespace {

/// Of all embedded pictures of a document, `use` counted each time.
constexpr std::int64_t cMaxPixels = std::int64_t{1} << 26;

constexpr std::array<std::string_view, 3> cImageSchemes{"", "file", "qrc"};

QByteArray toBytes(std::string_view text) {
    return QByteArray(text.data(), int(text.size()));
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
    rect->setRX(getLength(state, "rx", eAlongX));
    rect->setRY(getLength(state, "ry", eAlongY));
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
    const std::vector<double> numbers = KySvgValues::readNumbers(state.element.getAttribute("points"));
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
    if (beginsWithMove)
        path->setCommands(std::move(commands));
}

void KySvgBuilder::buildImage(const State& state) {
    const std::string_view link = state.element.getLink();
    const KyURL url(std::string(link.substr(0, link.starts_with("data:") ? 5 : link.size())));
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
    loadImage(*image, link);
}

void KySvgBuilder::loadImage(Ky2DImage& image, std::string_view link) {
    if (link.starts_with("data:")) {
        const QImage embedded = readEmbedded(link);
        embedded.isNull() ? mReports.add("image") : image.setImage(embedded);
        return;
    }
    const KyURL url = KyURL(std::string(link)).getAbsoluteURL(mBase);
    const bool isLocal = std::ranges::find(cImageSchemes, url.getScheme()) != cImageSchemes.end();
    isLocal && !link.empty() ? image.setImageURL(url) : mReports.add("image");
}

QImage KySvgBuilder::readEmbedded(std::string_view link) {
    const std::size_t comma = link.find(',');
    if (comma == std::string_view::npos)
        return {};
    const bool isBase64 = link.substr(0, comma).ends_with(";base64");
    const QByteArray text = QByteArray::fromPercentEncoding(toBytes(link.substr(comma + 1)));
    QByteArray bytes = isBase64 ? QByteArray::fromBase64(text) : text;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    // A small file may be a huge picture: its size is asked before it is unpacked.
    const QSize size = reader.size();
    const std::int64_t pixels = std::int64_t(size.width()) * size.height();
    if (size.isEmpty() || pixels > cMaxPixels - mNbPixels)
        return {};
    mNbPixels += pixels;
    return reader.read();
}
