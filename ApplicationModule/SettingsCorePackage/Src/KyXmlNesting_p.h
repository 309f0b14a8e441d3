// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

/// How deep the elements of an XML text lie in each other, found without a call for each level and without a thought
/// for whether the text is right. Wide encodings are read by their ASCII characters.
class KyXmlNesting {
public:
    struct Place {
        int line;
        int column;
    };

    /// Where elements first lie more than `maxDepth` deep, or where the text declares an entity, which can hold
    /// elements of its own; none when it does neither.
    static std::optional<Place> findExcess(const QByteArray& text, int maxDepth);
};
