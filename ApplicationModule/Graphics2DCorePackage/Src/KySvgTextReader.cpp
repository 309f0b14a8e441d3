// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgText_p.h"

#include "KySvgValues_p.h"

#include <algorithm>

namespace {

/// What a piece costs that has a place of its own, in bytes.
constexpr std::size_t cRunWork = 64;
/// A line of more letters is cut.
constexpr int cMaxLength = 50'000;

template <class T>
std::optional<T> findAt(const std::vector<T>& values, std::size_t index) {
    return index < values.size() ? std::optional(values[index]) : std::nullopt;
}

} // namespace

KySvgTextReader::KySvgTextReader(const KySvgDocument& document, KySvgCascade& cascade, const KySvgViewport& viewport,
                                 KySvgReports& reports)
    : mDocument(document)
    , mCascade(cascade)
    , mViewport(viewport)
    , mReports(reports) {}

std::vector<KySvgTextRun> KySvgTextReader::read(int element, const KySvgStyle& style) {
    readElement(element, std::make_shared<const KySvgStyle>(style));
    const auto last =
        std::find_if(mRuns.rbegin(), mRuns.rend(), [](const KySvgTextRun& r) { return !r.text.isEmpty(); });
    if (last != mRuns.rend() && !last->style->keepsBlanks && last->text.endsWith(QLatin1Char(' ')))
        last->text.chop(1);
    // What places nothing and shows nothing is dropped.
    std::erase_if(mRuns, [](const KySvgTextRun& run) { return run.text.isEmpty() && !run.beginsChunk(); });
    return std::move(mRuns);
}

std::size_t KySvgTextReader::Places::getNbPlaced() const {
    return std::max({x.size(), y.size(), dx.size(), dy.size()});
}

KySvgTextReader::Places KySvgTextReader::readPlaces(const KySvgElement& element, const KySvgStyle& style) const {
    const auto read = [&](std::string_view attribute, double percent) {
        return KySvgValues::readLengths(element.getAttribute(attribute), {style.fontSize, percent});
    };
    return {read("x", mViewport.width), read("y", mViewport.height), read("dx", mViewport.width),
            read("dy", mViewport.height)};
}

void KySvgTextReader::readElement(int index, const std::shared_ptr<const KySvgStyle>& style) {
    const KySvgElement& element = mDocument.getElement(index);
    const Places places = readPlaces(element, *style);
    std::size_t used = 0;
    for (int child = element.firstChild; child >= 0; child = mDocument.getElement(child).next) {
        const KySvgElement& part = mDocument.getElement(child);
        if (part.name.empty()) {
            addText(part.text, index, style, places, used);
        } else if (part.name == "tspan" || part.name == "a") {
            const auto own = std::make_shared<const KySvgStyle>(mCascade.compute(part, *style, mViewport));
            // A tspan that begins with a tspan passes its place on.
            if (used == 0 && places.getNbPlaced() > 0)
                addText(QString(), index, style, places, used);
            if (own->isDisplayed)
                readElement(child, own);
        }
    }
    if (used == 0 && element.name == "text")
        addText(QString(), index, style, places, used);
}

void KySvgTextReader::addText(const QString& text, int element, const std::shared_ptr<const KySvgStyle>& style,
                              const Places& places, std::size_t& used) {
    if (!mCascade.spend(std::size_t(text.size())))
        return;
    QString rest = handleBlanks(text, style->keepsBlanks);
    if (rest.size() > cMaxLength)
        mReports.add("size");
    rest.truncate(cMaxLength);
    do {
        KySvgTextRun run;
        run.element = element;
        run.style = style;
        run.x = findAt(places.x, used);
        run.y = findAt(places.y, used);
        run.dx = findAt(places.dx, used).value_or(0.0);
        run.dy = findAt(places.dy, used).value_or(0.0);
        ++used;
        // While there are places, each character has its own.
        const int length = used < places.getNbPlaced() ? 1 : rest.size();
        run.text = rest.left(length);
        rest.remove(0, length);
        mRuns.push_back(std::move(run));
    } while (!rest.isEmpty() && mCascade.spend(cRunWork));
}

QString KySvgTextReader::handleBlanks(const QString& text, bool keepsBlanks) {
    QString handled;
    handled.reserve(text.size());
    for (const QChar c : text) {
        const bool isBreak = c == QLatin1Char('\n') || c == QLatin1Char('\r');
        const bool isBlank = isBreak || c == QLatin1Char('\t') || c == QLatin1Char(' ');
        if (!keepsBlanks && isBlank && (isBreak || mIsAfterBlank))
            continue;
        handled += isBlank ? QLatin1Char(' ') : c;
        mIsAfterBlank = isBlank;
    }
    return handled;
}
