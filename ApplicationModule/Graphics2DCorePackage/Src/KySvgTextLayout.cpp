// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgText_p.h"

#include "Ky2DGroup.h"
#include "Ky2DStyle.h"
#include "Ky2DText.h"
#include "Ky2DUtil.h"
#include "KySvgBuilder_p.h"

#include "KyQtText.h"

#include <QBrush>
#include <QFont>
#include <QGraphicsSimpleTextItem>
#include <QPen>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

/// Sizes of the screen's pixels in which fonts are made well; others are made in the standard size and scaled.
constexpr double cSmallestSize = 6.0;
constexpr double cLargestSize = 500.0;
constexpr double cStandardSize = 100.0;
/// From the top of a line to where Ky2DText takes its letters to stand, as a part of its height.
constexpr double cLinePart = 0.815;

/// Qt makes fonts of whole pixels only.
double choosePixels(double size) {
    const bool isGood = size >= cSmallestSize && size <= cLargestSize && std::abs(size - std::round(size)) < 1e-6;
    return isGood ? std::round(size) : cStandardSize;
}

QFont makeFont(const KySvgStyle& style, double pixels) {
    Ky2DStyle target;
    style.applyText(target, pixels, 1.0);
    QPen pen;
    QBrush brush;
    QFont font;
    target.configureTextStyle(&pen, &brush, &font);
    return font;
}

struct Extent {
    double width = 0.0;
    double height = 0.0;
    /// From the top to where the letters stand.
    double ascent = 0.0;
};

/// Nothing without application: there are no fonts.
Extent measure(const QString& text, const QFont& font) {
    if (!Ky2DUtil::hasApplication())
        return {};
    QGraphicsSimpleTextItem item(text);
    item.setFont(font);
    QTextLayout layout(text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const QRectF bound = item.boundingRect();
    return {bound.width(), bound.height(), line.isValid() ? line.ascent() : 0.0};
}

double getAnchorPart(KyTextAnchor anchor) {
    return anchor == eStart ? 0.0 : (anchor == eMiddle ? 0.5 : 1.0);
}

using Runs = std::vector<KySvgTextRun>;

/// Gives every run its place; runs of one chunk stand side by side, moved together by the anchor of the first.
void placeRuns(Runs& runs) {
    double x = 0.0;
    double y = 0.0;
    auto first = runs.begin();
    double width = 0.0;
    const auto endChunk = [&](Runs::iterator end) {
        // A run alone is anchored by its own style.
        if (end - first < 2)
            return;
        const double shift = width * getAnchorPart(first->style->textAnchor);
        std::for_each(first, end, [shift](KySvgTextRun& run) {
            KySvgStyle style(*run.style);
            style.textAnchor = eStart;
            run.style = std::make_shared<const KySvgStyle>(style);
            *run.x -= shift;
        });
    };
    for (auto run = runs.begin(); run != runs.end(); ++run) {
        if (run->beginsChunk()) {
            endChunk(run);
            first = run;
            width = 0.0;
        }
        const double size = choosePixels(run->style->fontSize);
        const double advance = measure(run->text, makeFont(*run->style, size)).width * run->style->fontSize / size;
        x = run->x.value_or(x) + run->dx;
        y = run->y.value_or(y) + run->dy;
        run->x = x;
        run->y = y;
        x += advance;
        width += run->dx + advance;
    }
    endChunk(runs.end());
}

} // namespace

void KySvgBuilder::buildText(const State& state) {
    KySvgTextReader reader(mDocument, mCascade, state.task.context->viewport, mReports);
    Runs runs = reader.read(state.task.element, state.style);
    placeRuns(runs);
    if (runs.size() > 1)
        std::erase_if(runs, [](const KySvgTextRun& run) { return run.text.isEmpty(); });
    const bool isAlone = runs.size() == 1 && runs.front().element == state.task.element;
    Ky2DGroup* parent = isAlone ? state.task.parent : makeGroup(state);
    for (const KySvgTextRun& run : runs)
        if (parent && isWithinLimits())
            makeText(state, run, parent, isAlone);
}

void KySvgBuilder::makeText(const State& state, const KySvgTextRun& run, Ky2DGroup* parent, bool isAlone) {
    const double pixels = choosePixels(run.style->fontSize);
    const double scale = run.style->fontSize / pixels;
    if (!(scale > 0.0))
        return;
    // Where there is a group it has the id of the text.
    static const KySvgElement cNameless;
    const bool isNamed = isAlone || run.element != state.task.element;
    const Task task{run.element, parent, state.task.context, -1};
    const QTransform outer = isAlone ? state.transform : QTransform();
    const State own{task, isNamed ? mDocument.getElement(run.element) : cNameless, *run.style,
                    QTransform::fromScale(scale, scale) * outer};
    Ky2DText* text = makeNode<Ky2DText>(own);
    if (!text)
        return;
    own.style.applyText(*text->editStyle(), pixels, scale);
    text->setText(KyApplication::toKyString(run.text));
    text->setX(*run.x / scale);
    text->setY(*run.y / scale);
    const Extent extent = measure(run.text, makeFont(own.style, pixels));
    // From where the style's anchor puts the letters to where they are to stand.
    text->setQtOffset(KyVec2d(0.0, extent.height * cLinePart - extent.ascent));
}
