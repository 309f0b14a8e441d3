// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDoxygenClass.h"

#include <string>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

/// Parses one Doxygen XML document. The first error ends it and stays in getError().
class KyDoxygenXmlParser {
public:
    KyDoxygenXmlParser(const QByteArray& document, int maxDepth);

    /// A file of compounds: appends its classes.
    bool readCompounds(std::vector<KyDoxygenClass>& classes);
    /// An index: appends the names of the classes' files, without directory and extension.
    bool readIndex(std::vector<QString>& files);

    /// "line: reason".
    std::string getError() const;

private:
    bool check(const QString& root);
    bool enter(const QString& root);
    void readCompound(std::vector<KyDoxygenClass>& classes);
    void readClassPart(KyDoxygenClass& record);
    void readSection(KyDoxygenClass& record);
    KyDoxygenMember readMember();
    void readIndexEntry(std::vector<QString>& files);
    std::string readText();
    std::string readLine();

    const QByteArray& mDocument;
    int mMaxDepth;
    QXmlStreamReader mXml;
};
