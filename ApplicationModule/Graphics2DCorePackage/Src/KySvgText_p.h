// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySvgCascade_p.h"
#include "KySvgDocument_p.h"
#include "KySvgStyle_p.h"

#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A piece of a text in one style that stands at one place.
struct KySvgTextRun {
    QString text;
    /// The element that it belongs to.
    int element = -1;
    std::shared_ptr<const KySvgStyle> style;
    /// Where given, the text begins anew there.
    std::optional<double> x;
    std::optional<double> y;
    double dx = 0.0;
    double dy = 0.0;

    bool beginsChunk() const { return x.has_value() || y.has_value(); }
};

/// Cuts a `text` element with its `tspan`s into runs, blanks handled over all of them together.
class KySvgTextReader {
public:
    KySvgTextReader(const KySvgDocument& document, KySvgCascade& cascade, const KySvgViewport& viewport,
                    KySvgReports& reports);

    std::vector<KySvgTextRun> read(int element, const KySvgStyle& style);

private:
    /// Numbers of the attributes that place an element's characters.
    struct Places {
        std::vector<double> x, y, dx, dy;
        std::size_t getNbPlaced() const;
    };
    void readElement(int element, const std::shared_ptr<const KySvgStyle>& style);
    void addText(const QString& text, int element, const std::shared_ptr<const KySvgStyle>& style, const Places& places,
                 std::size_t& used);
    QString handleBlanks(const QString& text, bool keepsBlanks);
    Places readPlaces(const KySvgElement& element, const KySvgStyle& style) const;

    const KySvgDocument& mDocument;
    KySvgCascade& mCascade;
    KySvgViewport mViewport;
    KySvgReports& mReports;
    std::vector<KySvgTextRun> mRuns;
    bool mIsAfterBlank = true;
};
