// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPicture_p.h"

#include "Ky2DSvgImporter.h"
#include "Ky2DUtil.h"
#include "KySvgSource_p.h"

#include "KyURL.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>

namespace {

/// Elements within elements that Qt's renderer, which calls itself for each, has stack for.
constexpr int cMaxNesting = 500;
/// Letters of an entity, and of all.
constexpr int cMaxEntity = 4096;
constexpr int cMaxExpansion = 1 << 26;

std::int64_t countPixels(const QSize& size) {
    return size.isEmpty() ? 0 : std::int64_t{size.width()} * size.height();
}

/// Copies a document without what would make Qt's renderer open files.
class SvgFilter {
public:
    explicit SvgFilter(const QByteArray& document, bool isDecoded)
        : mWriter(&mText) {
        mReader.setNamespaceProcessing(false);
        mReader.setEntityExpansionLimit(std::min(cMaxEntity, cMaxExpansion / (document.count('&') + 1)));
        // Given as text, the reader does not believe a declared encoding.
        isDecoded ? mReader.addData(QString::fromUtf8(document)) : mReader.addData(document);
    }

    /// Empty when it is no document or beyond a limit.
    QByteArray run() {
        while (!mReader.atEnd() && isWithinLimits())
            copy();
        return mReader.hasError() || !isWithinLimits() ? QByteArray() : mText;
    }
    bool isWhole() const { return mIsWhole; }

private:
    bool isWithinLimits() const {
        return mDepth <= cMaxNesting && std::size_t(mText.size()) <= Ky2DSvgImporter::cMaxBytes;
    }

    void copy() {
        const QXmlStreamReader::TokenType token = mReader.readNext();
        if (token == QXmlStreamReader::StartElement && isImage() && !isHarmless()) {
            mIsWhole = false;
            mReader.skipCurrentElement();
            return;
        }
        mDepth += int(token == QXmlStreamReader::StartElement) - int(token == QXmlStreamReader::EndElement);
        // An instruction may name a style sheet, and entities are put in already.
        if (std::ranges::find(cCopied, token) != cCopied.end())
            mWriter.writeCurrentToken(mReader);
    }

    bool isImage() const {
        const QStringRef name = mReader.name();
        return name.mid(name.indexOf(QLatin1Char(':')) + 1) == QLatin1String("image");
    }

    /// Whether the renderer finds a picture in the link itself; it looks for a file where it finds none.
    bool isHarmless() {
        const QStringRef link = mReader.attributes().value(QLatin1String("xlink:href"));
        const QLatin1String mark("base64,");
        const int start = link.lastIndexOf(mark);
        if (!link.startsWith(QLatin1String("data:")) || start < 0)
            return false;
        QByteArray bytes = QByteArray::fromBase64(link.mid(start + mark.size()).toLatin1());
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        const QByteArray format = QImageReader::imageFormat(&buffer);
        if (format.isEmpty() || format.startsWith("svg"))
            return false;
        QImageReader reader(&buffer, format);
        const std::int64_t pixels = countPixels(reader.size());
        mNbPixels += pixels;
        return pixels > 0 && mNbPixels <= KyPicture::cMaxPixels && reader.canRead();
    }

    static constexpr std::array cCopied{QXmlStreamReader::StartElement, QXmlStreamReader::EndElement,
                                        QXmlStreamReader::Characters};

    QXmlStreamReader mReader;
    QByteArray mText;
    QXmlStreamWriter mWriter;
    int mDepth = 0;
    std::int64_t mNbPixels = 0;
    bool mIsWhole = true;
};

QImage render(QSvgRenderer& renderer, std::int64_t maxPixels) {
    const std::int64_t pixels = renderer.isValid() ? countPixels(renderer.defaultSize()) : 0;
    if (pixels == 0 || pixels > std::min(maxPixels, KyPicture::cMaxPixels))
        return {};
    QImage image(renderer.defaultSize(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

} // namespace

std::string KyPicture::findFile(const KyURL& url) {
    return url.getScheme() == "qrc" ? ":" + url.getDecodedPath() : url.getLocalPath();
}

QByteArray KyPicture::readFile(const std::string& path, std::int64_t maxBytes) {
    QFile file(QString::fromStdString(path));
    // Opening a pipe would wait for somebody to write.
    if (path.empty() || !QFileInfo(file).isFile() || file.size() > maxBytes || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(file.size());
}

KyPicture::Decoded KyPicture::decode(const QByteArray& bytes, std::int64_t maxPixels) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = QImageReader::imageFormat(&buffer);
    // Of an SVG the reader would draw all to know its size.
    if (format.startsWith("svg"))
        return renderSvg(bytes, maxPixels);
    QImageReader reader(&buffer, format);
    // A small file may be a huge picture: its size is asked before it is unpacked.
    const std::int64_t pixels = countPixels(reader.size());
    return {pixels > 0 && pixels <= maxPixels ? reader.read() : QImage()};
}

KyPicture::Decoded KyPicture::renderSvg(const QByteArray& bytes, std::int64_t maxPixels) {
    if (std::size_t(bytes.size()) > Ky2DSvgImporter::cMaxBytes)
        return {};
    bool isDecoded = false;
    const QByteArray document = KySvgSource::decode(bytes.toStdString(), isDecoded);
    // Without application the renderer has no fonts.
    if (!Ky2DUtil::hasApplication() || !KySvgSource::isBounded(document, int(Ky2DSvgImporter::cMaxAttributes)))
        return {};
    SvgFilter filter(document, isDecoded);
    const QByteArray text = filter.run();
    if (text.isEmpty())
        return {};
    QSvgRenderer renderer(text);
    return {render(renderer, maxPixels), filter.isWhole()};
}
