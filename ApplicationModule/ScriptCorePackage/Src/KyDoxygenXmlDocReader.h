// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyDoxygenClass.h"

#include "KyObject.h"

#include <string>
#include <string_view>
#include <vector>

/// Reads what Doxygen writes as XML into plain records: the file of one class, or a directory with its "index.xml".
///
/// Every reading replaces what was held; one that fails holds nothing and reports the file, the line and the reason.
/// The line is 1 for bytes that are no text in the file's encoding, since a file is decoded as a whole. Files are taken
/// as hostile: document type declarations, and with them entities, are refused, sizes and depth are limited, and an
/// index cannot name files outside its directory. One thread.
///
/// ```
/// KyDoxygenXmlDocReader reader;
/// if (reader.readFile("xml/classKyLamp.xml"))
///     show(reader.getClass(0)->brief);
/// ```
class KYAPPLICATION_EXPORT KyDoxygenXmlDocReader : public KyObject {
public:
    /// Bytes of one file and of all files of a directory.
    static constexpr long long cMaxFileSize = 32LL << 20;
    /// See cMaxFileSize.
    static constexpr long long cMaxTotalSize = 256LL << 20;
    /// Elements inside each other.
    static constexpr int cMaxDepth = 128;

    KyDoxygenXmlDocReader();
    KyDoxygenXmlDocReader(const KyDoxygenXmlDocReader&) = delete;
    KyDoxygenXmlDocReader& operator=(const KyDoxygenXmlDocReader&) = delete;
    ~KyDoxygenXmlDocReader() override;

    static const KyType* getType();
    static KyDoxygenXmlDocReader* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The file of a class; one of a namespace, a file or a page is read too and holds no class. The path is UTF-8.
    bool readFile(const std::string& path);
    /// The classes and structures named in the directory's "index.xml".
    bool readDirectory(const std::string& directory);
    /// Forgets all classes.
    void clear() { mClasses.clear(); }

    /// Classes that were read.
    unsigned getNbClasses() const { return static_cast<unsigned>(mClasses.size()); }
    /// Null when out of range.
    const KyDoxygenClass* getClass(unsigned index) const;
    /// Empty when out of range.
    const std::string& getClassName(unsigned index) const;
    /// Hands the records over; the reader is empty afterwards.
    std::vector<KyDoxygenClass> takeClasses();

private:
    std::vector<KyDoxygenClass> mClasses;

    static const KyType* msType;
};
