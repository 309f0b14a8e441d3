// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgText_p.h"

#include "KySvgValues_p.h"

#include <algorithm>

namespace {

/// What a piece costs that has a place of its own, in bytes.
constexpr std::size_t cRunWork = 64;
/// What each element costs that may place it.
constexpr std::size_t cPlacesWork = 16;
/// A line of more letters is cut.
constexpr int cMaxLength = 50'000;

} // namespace

KySvgTextReader::KySvgTextReader(const KySvgDocument& document, KySvgCascade& cascade, const KySvgViewport& viewport,
                                 KySvgReports& reports)
    : mDocument(document)
    , mCascade(cascade)
    , mViewport(viewport)
    , mReports(reports) {}

std::vector<KySvgTextRun> KySvgTextReader::read(int element, const KySvgStyle& style) {
    const auto shared = std::make_shared<const KySvgStyle>(style);
    readElement(element, shared);
    if (mRuns.empty()) {
        mPlaces.push_back(readPlaces(mDocument.getElement(element), style));
        addRun(element, shared);
    }
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

KySvgTextReader::Places KySvgTextReader::readPlaces(const KySvgElement& element, const KySvgStyle& style) {
    const auto read = [&](std::string_view attribute, double percent) {
        std::string_view text = element.getAttribute(attribute);
        Numbers numbers = KySvgValues::takeLengths(text, {style.fontSize, percent});
        if (!text.empty())
            mReports.add("length");
        return numbers;
    };
    return {read("x", mViewport.width), read("y", mViewport.height), read("dx", mViewport.width),
            read("dy", mViewport.height)};
}

void KySvgTextReader::readElement(int index, const std::shared_ptr<const KySvgStyle>& style) {
    const KySvgElement& element = mDocument.getElement(index);
    Places places = readPlaces(element, *style);
    const bool isPlaced = places.getNbPlaced() > 0;
    if (isPlaced)
        mPlaces.push_back(std::move(places));
    for (int child = element.firstChild; child >= 0; child = mDocument.getElement(child).next) {
        const KySvgElement& part = mDocument.getElement(child);
        if (part.name.empty()) {
            addText(part.text, index, style);
        } else if (part.name == "tspan" || part.name == "a") {
            const auto own = std::make_shared<const KySvgStyle>(mCascade.compute(part, *style, mViewport));
            if (own->isDisplayed)
                readElement(child, own);
        }
    }
    if (isPlaced)
        mPlaces.pop_back();
}

std::optional<double> KySvgTextReader::findPlace(Numbers Places::*numbers) const {
    const auto has = [numbers](const Places& places) { return places.used < (places.*numbers).size(); };
    const auto found = std::find_if(mPlaces.rbegin(), mPlaces.rend(), has);
    return found == mPlaces.rend() ? std::nullopt : std::optional(((*found).*numbers)[found->used]);
}

bool KySvgTextReader::isNextPlaced() const {
    return std::ranges::any_of(mPlaces, [](const Places& places) { return places.used < places.getNbPlaced(); });
}

void KySvgTextReader::addText(const QString& text, int element, const std::shared_ptr<const KySvgStyle>& style) {
    if (!mCascade.spend(std::size_t(text.size())))
        return;
    QString rest = handleBlanks(text, style->keepsBlanks);
    if (rest.size() > cMaxLength)
        mReports.add("size");
    rest.truncate(cMaxLength);
    const std::size_t work = cRunWork + cPlacesWork * mPlaces.size();
    for (int start = 0; start < rest.size() && mCascade.spend(work);) {
        KySvgTextRun& run = addRun(element, style);
        std::ranges::for_each(mPlaces, [](Places& places) { ++places.used; });
        // While there are places, each character has its own.
        const int letter = rest.at(start).isHighSurrogate() ? 2 : 1;
        run.text = rest.mid(start, isNextPlaced() ? letter : -1);
        start += run.text.size();
    }
}

KySvgTextRun& KySvgTextReader::addRun(int element, const std::shared_ptr<const KySvgStyle>& style) {
    KySvgTextRun& run = mRuns.emplace_back();
    run.element = element;
    run.style = style;
    run.x = findPlace(&Places::x);
    run.y = findPlace(&Places::y);
    run.dx = findPlace(&Places::dx).value_or(0.0);
    run.dy = findPlace(&Places::dy).value_or(0.0);
    return run;
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
