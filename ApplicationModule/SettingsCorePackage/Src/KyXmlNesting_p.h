// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// Whether Qt's document class, which calls itself for each level of a text, can take that text without using up the
/// stack. Found without such calls, on the very characters that the document class is then given.
class KyXmlNesting {
public:
    struct Fault {
        QString text;
        int line;
        int column;
    };

    /// Where elements first lie more than `maxDepth` deep, where the text declares an entity, which can hold elements
    /// of its own, or where a long text is no XML, so that nothing is known of the rest; none when it can be taken.
    static std::optional<Fault> findFault(const QString& text, int maxDepth);
};
