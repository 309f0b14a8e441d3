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
    using Numbers = std::vector<double>;
    /// What an element's attributes say of its characters, those of elements in it counted too.
    struct Places {
        Numbers x, y, dx, dy;
        /// Characters since it began, counted while there are numbers.
        std::size_t used = 0;

        std::size_t getNbPlaced() const;
    };
    void readElement(int element, const std::shared_ptr<const KySvgStyle>& style);
    void addText(const QString& text, int element, const std::shared_ptr<const KySvgStyle>& style);
    /// Without text, at the place of the next character.
    KySvgTextRun& addRun(int element, const std::shared_ptr<const KySvgStyle>& style);
    /// The number of the innermost element that has one for the next character.
    std::optional<double> findPlace(Numbers Places::*numbers) const;
    bool isNextPlaced() const;
    QString handleBlanks(const QString& text, bool keepsBlanks);
    Places readPlaces(const KySvgElement& element, const KySvgStyle& style);

    const KySvgDocument& mDocument;
    KySvgCascade& mCascade;
    KySvgViewport mViewport;
    KySvgReports& mReports;
    std::vector<KySvgTextRun> mRuns;
    /// Of the elements about the next character, the innermost last.
    std::vector<Places> mPlaces;
    bool mIsAfterBlank = true;
};
