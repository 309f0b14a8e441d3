// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgCascade_p.h"

#include "KySvgColor_p.h"
#include "KySvgValues_p.h"

#include <algorithm>
#include <array>
#include <unordered_map>

using namespace KySvgValues;

namespace {

constexpr int cMaxGradientLinks = 8;
/// What an element costs beside its bytes.
constexpr std::size_t cElementWork = 16;
constexpr double cFontStep = 1.2;

constexpr std::array<std::pair<std::string_view, KyStrokeJoin>, 3> cJoins{
    {{"miter", eSvgMiterJoin}, {"bevel", eBevelJoin}, {"round", eRoundJoin}}};
constexpr std::array<std::pair<std::string_view, KyStrokeCap>, 3> cCaps{
    {{"butt", eFlatCap}, {"square", eSquareCap}, {"round", eRoundCap}}};
constexpr std::array<std::pair<std::string_view, KyTextAnchor>, 3> cAnchors{
    {{"start", eStart}, {"middle", eMiddle}, {"end", eEnd}}};
constexpr std::array<std::pair<std::string_view, KyFontStyle>, 3> cFontStyles{
    {{"normal", eStyleNormal}, {"italic", eStyleItalic}, {"oblique", eStyleOblique}}};
constexpr std::array<std::pair<std::string_view, bool>, 2> cFillRules{{{"nonzero", false}, {"evenodd", true}}};
constexpr std::array<std::pair<std::string_view, bool>, 3> cVisibilities{
    {{"visible", true}, {"hidden", false}, {"collapse", false}}};
constexpr std::array<std::pair<std::string_view, double>, 7> cFontSizes{{{"xx-small", 9.0},
                                                                         {"x-small", 10.0},
                                                                         {"small", 13.0},
                                                                         {"medium", 16.0},
                                                                         {"large", 18.0},
                                                                         {"x-large", 24.0},
                                                                         {"xx-large", 32.0}}};

/// Properties without counterpart, and the name under which they are reported.
struct Loss {
    std::string_view property;
    std::string_view report;
};
constexpr std::array<Loss, 19> cLosses{{{"filter", "filter"},
                                        {"mask", "mask"},
                                        {"clip-path", "clipPath"},
                                        {"marker", "marker"},
                                        {"marker-start", "marker"},
                                        {"marker-mid", "marker"},
                                        {"marker-end", "marker"},
                                        {"font", "font"},
                                        {"text-decoration", "text-decoration"},
                                        {"letter-spacing", "letter-spacing"},
                                        {"word-spacing", "word-spacing"},
                                        {"baseline-shift", "baseline-shift"},
                                        {"dominant-baseline", "dominant-baseline"},
                                        {"writing-mode", "writing-mode"},
                                        {"paint-order", "paint-order"},
                                        {"mix-blend-mode", "mix-blend-mode"},
                                        {"clip", "clip"},
                                        {"rotate", "rotate"},
                                        {"textLength", "textLength"}}};
/// Values that ask for nothing.
constexpr std::array<std::string_view, 8> cNeutralValues{"none", "normal", "auto",    "baseline",
                                                         "0",    "lr-tb",  "inherit", "alphabetic"};

template <class Value, std::size_t Count>
void choose(Value& member, const std::array<std::pair<std::string_view, Value>, Count>& table, std::string_view text) {
    member = findValue(table, text).value_or(member);
}

int readWeight(std::string_view text, int parent) {
    if (text == "bolder")
        return parent < 400 ? 400 : (parent < 600 ? 700 : 900);
    if (text == "lighter")
        return parent > 700 ? 700 : (parent > 500 ? 400 : 100);
    if (text == "normal" || text == "bold")
        return text == "bold" ? 700 : 400;
    const std::vector<double> numbers = readNumbers(text);
    return numbers.size() == 1 ? int(std::clamp(numbers[0], 1.0, 1000.0)) : parent;
}

std::optional<double> readFontSize(std::string_view text, double parent) {
    if (const std::optional<double> named = findValue(cFontSizes, text))
        return *named;
    if (text == "larger" || text == "smaller")
        return text == "larger" ? parent * cFontStep : parent / cFontStep;
    const std::optional<double> size = readLength(text, {parent, parent});
    return size && *size >= 0.0 ? size : std::nullopt;
}

} // namespace

/// The properties that are carried, in the order in which they are computed: others refer to the first two.
struct KySvgProperties {
    struct Scope {
        KySvgCascade& cascade;
        const KySvgStyle& parent;
        const KySvgViewport& viewport;

        std::optional<double> readLength(const KySvgStyle& style, std::string_view text) const {
            return report(KySvgValues::readLength(text, {style.fontSize, viewport.getDiagonal()}), "length");
        }
        template <class Value>
        std::optional<Value> report(std::optional<Value> value, std::string_view name) const {
            if (!value)
                cascade.mReports.add(name);
            return value;
        }
    };
    struct Property {
        std::string_view name;
        void (*set)(KySvgStyle&, std::string_view, const Scope&);
    };

    static void setPaint(KySvgPaint& paint, std::string_view text, const KySvgStyle& style, const Scope& scope) {
        paint = scope.report(scope.cascade.readPaint(text, style.color), "color").value_or(paint);
    }
    static void setColor(KyColor& color, std::string_view text, const KyColor& current, const Scope& scope) {
        color = text == "currentColor" ? current : scope.report(KySvgColor::read(text), "color").value_or(color);
    }
    static void setDashes(KySvgStyle& style, std::string_view text, const Scope& scope) {
        const bool isNone = text == "none";
        style.dashes = takeLengths(text, {style.fontSize, scope.viewport.getDiagonal()});
        if (!isNone && !text.empty())
            scope.cascade.mReports.add("length");
        if (std::ranges::any_of(style.dashes, [](double dash) { return dash < 0.0; }))
            style.dashes.clear();
    }

    static const std::array<Property, 26> cTable;
};

const std::array<KySvgProperties::Property, 26> KySvgProperties::cTable{{
    {"font-size",
     [](KySvgStyle& s, std::string_view t, const Scope& scope) {
         const double parent = scope.parent.fontSize;
         s.fontSize = scope.report(readFontSize(t, parent), "length").value_or(parent);
     }},
    {"color", [](KySvgStyle& s, std::string_view t, const Scope& scope) { setColor(s.color, t, s.color, scope); }},
    {"fill", [](KySvgStyle& s, std::string_view t, const Scope& scope) { setPaint(s.fill, t, s, scope); }},
    {"stroke", [](KySvgStyle& s, std::string_view t, const Scope& scope) { setPaint(s.stroke, t, s, scope); }},
    {"fill-opacity",
     [](KySvgStyle& s, std::string_view t, const Scope&) { s.fillOpacity = readRatio(t).value_or(s.fillOpacity); }},
    {"stroke-opacity",
     [](KySvgStyle& s, std::string_view t, const Scope&) { s.strokeOpacity = readRatio(t).value_or(s.strokeOpacity); }},
    {"opacity", [](KySvgStyle& s, std::string_view t, const Scope&) { s.opacity *= readRatio(t).value_or(1.0); }},
    {"fill-rule", [](KySvgStyle& s, std::string_view t, const Scope&) { choose(s.isEvenOdd, cFillRules, t); }},
    {"stroke-width",
     [](KySvgStyle& s, std::string_view t, const Scope& scope) {
         if (const std::optional<double> width = scope.readLength(s, t); width && *width >= 0.0)
             s.strokeWidth = *width;
     }},
    {"stroke-dasharray", &setDashes},
    {"stroke-dashoffset", [](KySvgStyle& s, std::string_view t,
                             const Scope& scope) { s.dashOffset = scope.readLength(s, t).value_or(s.dashOffset); }},
    {"stroke-miterlimit",
     [](KySvgStyle& s, std::string_view t, const Scope&) {
         if (const std::vector<double> limit = readNumbers(t); limit.size() == 1 && limit[0] >= 1.0)
             s.miterLimit = limit[0];
     }},
    {"stroke-linejoin", [](KySvgStyle& s, std::string_view t, const Scope&) { choose(s.join, cJoins, t); }},
    {"stroke-linecap", [](KySvgStyle& s, std::string_view t, const Scope&) { choose(s.cap, cCaps, t); }},
    {"vector-effect",
     [](KySvgStyle& s, std::string_view t, const Scope&) { s.hasConstantWidth = t == "non-scaling-stroke"; }},
    {"display", [](KySvgStyle& s, std::string_view t, const Scope&) { s.isDisplayed = t != "none"; }},
    {"visibility", [](KySvgStyle& s, std::string_view t, const Scope&) { choose(s.isVisible, cVisibilities, t); }},
    {"font-family", [](KySvgStyle& s, std::string_view t, const Scope&) { s.fontFamily = t; }},
    {"font-weight", [](KySvgStyle& s, std::string_view t,
                       const Scope& scope) { s.fontWeight = readWeight(t, scope.parent.fontWeight); }},
    {"font-style", [](KySvgStyle& s, std::string_view t, const Scope&) { choose(s.fontStyle, cFontStyles, t); }},
    {"text-anchor", [](KySvgStyle& s, std::string_view t, const Scope&) { choose(s.textAnchor, cAnchors, t); }},
    {"stop-color",
     [](KySvgStyle& s, std::string_view t, const Scope& scope) { setColor(s.stopColor, t, s.color, scope); }},
    {"overflow", [](KySvgStyle& s, std::string_view t, const Scope&) { s.isClipped = t != "visible" && t != "auto"; }},
    {"stop-opacity",
     [](KySvgStyle& s, std::string_view t, const Scope&) { s.stopOpacity = readRatio(t).value_or(s.stopOpacity); }},
    {"white-space", [](KySvgStyle& s, std::string_view t, const Scope&) { s.keepsBlanks = t == "pre"; }},
    {"xml:space", [](KySvgStyle& s, std::string_view t, const Scope&) { s.keepsBlanks = t == "preserve"; }},
}};

KySvgCascade::KySvgCascade(const KySvgDocument& document, KySvgReports& reports, std::size_t maxWork)
    : mDocument(document)
    , mReports(reports)
    , mMaxWork(maxWork) {
    for (int i = 0; i < document.getNbElements(); ++i) {
        const KySvgElement& element = document.getElement(i);
        if (element.name == "style" && element.firstChild >= 0)
            mSheet.add(document.getElement(element.firstChild).text.toStdString(), reports);
    }
}

KySvgStyle KySvgCascade::compute(const KySvgElement& element, const KySvgStyle& parent, const KySvgViewport& viewport) {
    std::vector<KySvgDeclaration> declarations;
    for (const KySvgAttribute& attribute : element.attributes)
        declarations.push_back({attribute.name, trim(attribute.value), 0, 0});
    spend(cElementWork + element.getSize() + mSheet.match(element, declarations));
    KySvgStyleSheet::readDeclarations(element.getAttribute("style"), KySvgStyleSheet::cElementPriority, 0,
                                      declarations);
    std::ranges::stable_sort(declarations, [](const auto& a, const auto& b) { return a.isBelow(b); });
    std::unordered_map<std::string_view, std::string_view> values;
    for (const KySvgDeclaration& declaration : declarations)
        values[declaration.property] = declaration.value;

    KySvgStyle style = parent.inherit();
    const KySvgProperties::Scope scope{*this, parent, viewport};
    for (const KySvgProperties::Property& property : KySvgProperties::cTable)
        if (const auto found = values.find(property.name); found != values.end() && found->second != "inherit")
            property.set(style, found->second, scope);
    for (const Loss& loss : cLosses)
        if (const auto found = values.find(loss.property);
            found != values.end() && std::ranges::find(cNeutralValues, found->second) == cNeutralValues.end())
            mReports.add(loss.report);
    // As a property it knows units and origins.
    if (const auto found = values.find("transform");
        found != values.end() && found->second != trim(element.getAttribute("transform")) && found->second != "none")
        mReports.add("transform");
    return style;
}

std::optional<KySvgPaint> KySvgCascade::readPaint(std::string_view value, const KyColor& current) {
    if (value == "none")
        return KySvgPaint{};
    if (value == "currentColor")
        return KySvgPaint{true, current};
    if (value.starts_with("url(")) {
        const std::size_t end = std::min(value.find(')'), value.size() - 1) + 1;
        return readServer(mDocument.findReference(value.substr(0, end)), trim(value.substr(end)), current);
    }
    const std::optional<KyColor> color = KySvgColor::read(value);
    return color ? std::optional(KySvgPaint{true, *color}) : std::nullopt;
}

KySvgPaint KySvgCascade::readServer(int server, std::string_view fallback, const KyColor& current) {
    const std::string_view kind = server < 0 ? std::string_view() : mDocument.getElement(server).name;
    const bool isServer = kind == "linearGradient" || kind == "radialGradient" || kind == "pattern";
    if (isServer)
        mReports.add(kind);
    // A fallback is a plain paint: it cannot lead here again.
    if (!fallback.empty() && !fallback.starts_with("url("))
        return readPaint(fallback, current).value_or(KySvgPaint{});
    if (!isServer)
        return {};
    if (kind == "pattern")
        return {true, KyColor(0.5F, 0.5F, 0.5F)};
    // A stop has no use for a fill of its own, which could lead back here.
    if (mIsInServer)
        return {};
    const auto [mean, isNew] = mMeans.try_emplace(server);
    mIsInServer = true;
    if (isNew)
        mean->second = getMeanOfStops(server, current);
    mIsInServer = false;
    return {mean->second.has_value(), mean->second.value_or(KyColor())};
}

std::optional<KyColor> KySvgCascade::getMeanOfStops(int gradient, const KyColor& current) {
    KyColor sum(0.0F, 0.0F, 0.0F, 0.0F);
    int count = 0;
    KySvgStyle base;
    base.color = current;
    for (int link = 0; link < cMaxGradientLinks && gradient >= 0 && count == 0; ++link) {
        for (int i = mDocument.getElement(gradient).firstChild; i >= 0; i = mDocument.getElement(i).next) {
            const KySvgElement& stop = mDocument.getElement(i);
            if (stop.name != "stop")
                continue;
            const KySvgStyle style = compute(stop, base, {});
            sum = sum + style.stopColor * KyColor(1.0F, 1.0F, 1.0F, float(style.stopOpacity));
            ++count;
        }
        gradient = mDocument.findReference(mDocument.getElement(gradient).getLink());
    }
    return count > 0 ? std::optional(sum * (1.0F / float(count))) : std::nullopt;
}
