// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySvgDocument_p.h"
#include "KySvgStyle_p.h"
#include "KySvgStyleSheet_p.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>

/// Size of what percentages refer to, in user units.
struct KySvgViewport {
    double width = 0.0;
    double height = 0.0;

    /// Base of lengths that are neither along x nor along y.
    double getDiagonal() const { return std::hypot(width, height) / std::sqrt(2.0); }
};

/// Computes styles: presentation attributes, then the rules of the document's style sheets, then style attributes, on
/// top of what is inherited.
class KySvgCascade {
public:
    /// Work is what is read, in bytes.
    KySvgCascade(const KySvgDocument& document, KySvgReports& reports, std::size_t maxWork);

    KySvgStyle compute(const KySvgElement& element, const KySvgStyle& parent, const KySvgViewport& viewport);
    /// False when more is spent than there is.
    bool spend(std::size_t work) {
        mWork += work;
        return mWork <= mMaxWork;
    }

private:
    friend struct KySvgProperties;
    std::optional<KySvgPaint> readPaint(std::string_view value, const KyColor& current);
    KySvgPaint readServer(int server, std::string_view fallback, const KyColor& current);
    std::optional<KyColor> getMeanOfStops(int gradient, const KyColor& current);

    const KySvgDocument& mDocument;
    KySvgReports& mReports;
    KySvgStyleSheet mSheet;
    std::size_t mWork = 0;
    std::size_t mMaxWork;
    /// Means of the stops, by gradient.
    std::unordered_map<int, std::optional<KyColor>> mMeans;
    bool mIsInServer = false;
};
