// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgBuilder_p.h"

#include "Ky2DGroup.h"
#include "Ky2DSvgImporter.h"
#include "KySvgElements_p.h"
#include "KySvgValues_p.h"

#include "KyQtText.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <utility>

// A text makes one level more than there are elements, and the result is to be inserted somewhere.
static_assert(Ky2DSvgImporter::cMaxDepth + 50 <= Ky2DNode::cMaxDepth);

namespace {

using B = KySvgBuilder;

/// What a child costs that is only looked at, in bytes.
constexpr std::size_t cChildWork = 8;

/// A language that the user reads, or English.
bool isLanguageKnown(std::string_view languages) {
    const QStringList names = QString::fromUtf8(languages.data(), int(languages.size())).split(QLatin1Char(','));
    const QString own = QLocale().name().section(QLatin1Char('_'), 0, 0);
    return std::any_of(names.begin(), names.end(), [&own](const QString& name) {
        const QString language = name.trimmed().section(QLatin1Char('-'), 0, 0);
        return language == own || language == QLatin1String("en");
    });
}

bool fitsConditions(const KySvgElement& element) {
    return element.getAttribute("requiredExtensions").empty() &&
           (!element.hasAttribute("systemLanguage") || isLanguageKnown(element.getAttribute("systemLanguage")));
}

std::string toName(std::string_view id) {
    return KyApplication::toKyString(QString::fromUtf8(id.data(), int(id.size())));
}

} // namespace

const KySvgElements::Kind* KySvgElements::find(std::string_view name) {
    static constexpr std::array cKinds{
        Kind{"rect", &B::buildRect},
        Kind{"circle", &B::buildCircle},
        Kind{"ellipse", &B::buildEllipse},
        Kind{"line", &B::buildLine},
        Kind{"polyline", &B::buildPolyline},
        Kind{"polygon", &B::buildPolygon},
        Kind{"path", &B::buildPath},
        Kind{"text", &B::buildText},
        Kind{"image", &B::buildImage},
        Kind{"g", &B::buildGroup},
        Kind{"a", &B::buildGroup},
        Kind{"svg", &B::buildViewport},
        Kind{"use", &B::buildUse},
        Kind{"switch", &B::buildSwitch},
        Kind{"symbol", &B::buildSymbol},
        Kind{"tspan"},
        Kind{"defs"},
        Kind{"title", nullptr, false},
        Kind{"desc", nullptr, false},
        Kind{"metadata", nullptr, false},
        Kind{"style", nullptr, false},
        Kind{"view", nullptr, false},
        Kind{"stop", nullptr, false},
        Kind{"linearGradient", nullptr, false},
        Kind{"radialGradient", nullptr, false},
        Kind{"pattern", nullptr, false},
        Kind{"filter", nullptr, false},
        Kind{"mask", nullptr, false},
        Kind{"clipPath", nullptr, false},
        Kind{"marker", nullptr, false},
    };
    const auto* kind = std::ranges::find(cKinds, name, &Kind::name);
    return kind == cKinds.end() ? nullptr : kind;
}

KySvgBuilder::KySvgBuilder(const KySvgDocument& document, KyURL base, KySvgReports& reports, const Limits& limits)
    : mDocument(document)
    , mBase(std::move(base))
    , mReports(reports)
    , mMaxNodes(limits.nodes)
    , mCascade(document, reports, document.getSize() + limits.expansion) {}

Ky2DGroup* KySvgBuilder::build() {
    reportUnknown();
    Ky2DGroup* root = makeRoot();
    while (!mTasks.empty() && isWithinLimits()) {
        const Task task = std::move(mTasks.back());
        mTasks.pop_back();
        buildElement(task);
    }
    return root;
}

void KySvgBuilder::reportUnknown() {
    std::vector<bool> matters(std::size_t(mDocument.getNbElements()), false);
    matters[0] = true;
    for (int i = 1; i < mDocument.getNbElements(); ++i) {
        const KySvgElement& element = mDocument.getElement(i);
        if (element.name.empty() || !matters[std::size_t(element.parent)])
            continue;
        const KySvgElements::Kind* kind = KySvgElements::find(element.name);
        matters[std::size_t(i)] = kind && kind->hasContent;
        // In a switch there is something else to draw.
        if (!kind && mDocument.getElement(element.parent).name != "switch")
            mReports.add(element.name);
    }
}

bool KySvgBuilder::isWithinLimits() {
    const bool isWithin = mNbNodes < mMaxNodes && mCascade.spend(0);
    if (!isWithin)
        mReports.add("size");
    return isWithin;
}

void KySvgBuilder::buildElement(const Task& task) {
    const KySvgElement& element = mDocument.getElement(task.element);
    const KySvgElements::Kind* kind = KySvgElements::find(element.name);
    if (!kind || !kind->build)
        return;
    if (task.context->depth > Ky2DSvgImporter::cMaxDepth)
        return mReports.add("nesting");
    State state{task, element, mCascade.compute(element, task.context->style, task.context->viewport), QTransform()};
    state.style.isDisplayed = state.style.isDisplayed && fitsConditions(element);
    const std::optional<QTransform> transform = KySvgValues::readTransform(element.getAttribute("transform"));
    if (!transform)
        mReports.add("transform");
    state.transform = transform.value_or(QTransform());
    (this->*kind->build)(state);
}

bool KySvgBuilder::enter(const State& state, Ky2DNode* node, bool isShown) {
    ++mNbNodes;
    if (const std::string_view id = state.element.getAttribute("id"); !id.empty())
        node->setName(toName(id));
    if (!state.transform.isIdentity())
        node->setInitialTransform(state.transform);
    if (!isShown)
        node->setVisible(false);
    if (!state.task.parent || state.task.parent->insertChild(node, Ky2DNode::cAppend))
        return true;
    node->destroy();
    mReports.add("nesting");
    return false;
}

Ky2DGroup* KySvgBuilder::makeGroup(const State& state) {
    // What is hidden may have visible content; what is not displayed has none.
    Ky2DGroup* group = Ky2DGroup::create();
    return enter(state, group, state.style.isDisplayed) ? group : nullptr;
}

void KySvgBuilder::pushChildren(const State& state, Ky2DGroup* group, const KySvgViewport& viewport) {
    if (!group)
        return;
    const Task& task = state.task;
    const auto context = std::make_shared<const Context>(
        Context{state.style, viewport, task.context->depth + 1, task.user < 0 ? -1 : task.element, task.context});
    const std::size_t first = mTasks.size();
    for (int child = state.element.firstChild; child >= 0; child = mDocument.getElement(child).next)
        if (mCascade.spend(cChildWork) && !mDocument.getElement(child).name.empty())
            mTasks.push_back({child, group, context, -1});
    // The first child comes off the stack first.
    std::reverse(mTasks.begin() + std::ptrdiff_t(first), mTasks.end());
}

void KySvgBuilder::buildGroup(const State& state) {
    pushChildren(state, makeGroup(state), state.task.context->viewport);
}

void KySvgBuilder::buildSwitch(const State& state) {
    const std::size_t first = mTasks.size();
    pushChildren(state, makeGroup(state), state.task.context->viewport);
    // The last that fits is the first in the document.
    const auto fits = [this](const Task& task) {
        const KySvgElement& element = mDocument.getElement(task.element);
        const KySvgElements::Kind* kind = KySvgElements::find(element.name);
        return kind && kind->build && fitsConditions(element);
    };
    while (mTasks.size() > first && !fits(mTasks.back()))
        mTasks.pop_back();
    if (mTasks.size() > first + 1)
        mTasks.erase(mTasks.begin() + std::ptrdiff_t(first), mTasks.end() - 1);
}

bool KySvgBuilder::isRepeating(const State& state, int target) const {
    for (int above = state.task.element; above >= 0; above = mDocument.getElement(above).parent)
        if (above == target)
            return true;
    for (const Context* context = state.task.context.get(); context; context = context->outer.get())
        if (context->repeated == target)
            return true;
    return false;
}

void KySvgBuilder::buildUse(const State& state) {
    State moved(state);
    moved.transform =
        QTransform::fromTranslate(getLength(state, "x", eAlongX), getLength(state, "y", eAlongY)) * state.transform;
    Ky2DGroup* group = makeGroup(moved);
    const std::string_view link = state.element.getLink();
    const int target = mDocument.findReference(link);
    if (!group || (target < 0 && link.empty()))
        return;
    if (target < 0 || isRepeating(state, target))
        return mReports.add("use");
    const Context& outer = *state.task.context;
    const auto context = std::make_shared<const Context>(
        Context{state.style, outer.viewport, outer.depth + 1, target, state.task.context});
    mTasks.push_back({target, group, context, state.task.element});
}

void KySvgBuilder::buildSymbol(const State& state) {
    if (state.task.user >= 0)
        buildViewport(state);
}

void KySvgBuilder::buildViewport(const State& state) {
    const KySvgViewport& outer = state.task.context->viewport;
    KySvgViewport inner = outer;
    const auto readSize = [&](double& size, std::string_view attribute, Axis axis) {
        if (const std::optional<double> own = findLength(state, state.element, attribute, axis))
            size = *own;
        if (state.task.user < 0)
            return;
        if (const auto asked = findLength(state, mDocument.getElement(state.task.user), attribute, axis))
            size = *asked;
    };
    readSize(inner.width, "width", eAlongX);
    readSize(inner.height, "height", eAlongY);
    State placed(state);
    placed.transform =
        QTransform::fromTranslate(getLength(state, "x", eAlongX), getLength(state, "y", eAlongY)) * state.transform;
    if (const auto box = KySvgValues::readViewBox(state.element.getAttribute("viewBox"))) {
        const auto ratio = KySvgValues::readAspectRatio(state.element.getAttribute("preserveAspectRatio"));
        placed.transform = KySvgValues::fitViewBox(*box, ratio, inner.width, inner.height) * placed.transform;
        inner = {(*box)[2], (*box)[3]};
        reportClip(state.style, ratio.isSlice);
    }
    // A symbol is mostly drawn to fit.
    reportClip(state.style, state.element.name == "svg");
    // Nothing is drawn in a viewport without area.
    placed.style.isDisplayed = state.style.isDisplayed && inner.width >= 0.0 && inner.height >= 0.0;
    pushChildren(placed, makeGroup(placed), inner);
}

void KySvgBuilder::reportClip(const KySvgStyle& style, bool mayReachOut) {
    if (mayReachOut && style.isClipped)
        mReports.add("clip");
}

Ky2DGroup* KySvgBuilder::makeRoot() {
    const KySvgElement& element = mDocument.getElement(0);
    const auto box = KySvgValues::readViewBox(element.getAttribute("viewBox"));
    const KySvgViewport natural = box ? KySvgViewport{(*box)[2], (*box)[3]} : KySvgViewport{};
    Context outer;
    outer.viewport = natural;
    const Task task{0, nullptr, std::make_shared<const Context>(outer), -1};
    State state{task, element, mCascade.compute(element, KySvgStyle(), natural), QTransform()};
    mSize = {getLength(state, "width", eAlongX, natural.width), getLength(state, "height", eAlongY, natural.height)};
    if (box && mSize.width > 0.0 && mSize.height > 0.0) {
        const auto ratio = KySvgValues::readAspectRatio(element.getAttribute("preserveAspectRatio"));
        state.transform = KySvgValues::fitViewBox(*box, ratio, mSize.width, mSize.height);
        reportClip(state.style, ratio.isSlice);
    }
    Ky2DGroup* root = makeGroup(state);
    pushChildren(state, root, box ? natural : mSize);
    return root;
}

std::optional<double> KySvgBuilder::findLength(const State& state, const KySvgElement& element,
                                               std::string_view attribute, Axis axis) const {
    const KySvgViewport& viewport = state.task.context->viewport;
    const std::array<double, 3> bases{viewport.width, viewport.height, viewport.getDiagonal()};
    const std::string_view text = element.getAttribute(attribute);
    const auto length = KySvgValues::readLength(text, {state.style.fontSize, bases[std::size_t(axis)]});
    if (!length && !text.empty() && text != "auto")
        mReports.add("length");
    return length;
}

double KySvgBuilder::getLength(const State& state, std::string_view attribute, Axis axis, double missing) const {
    return findLength(state, state.element, attribute, axis).value_or(missing);
}
