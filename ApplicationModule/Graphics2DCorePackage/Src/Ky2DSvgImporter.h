// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyObject.h"

#include <cstddef>
#include <string>
#include <vector>

class Ky2DGroup;
class KyURL;

/// Makes a tree of 2D nodes from an SVG 1.1 document: shapes, paths, texts, images, groups, `use`, `symbol`, nested
/// `svg` and `switch`, with transforms, style attributes, declarations and style sheets of simple selectors. GUI
/// thread.
///
/// Node names are the ids; what `use` makes carries the names of what it copies. The document's transforms are the
/// nodes' initial transforms, so Translation, Rotation and Scale are free for scripts. Lengths become pixels of 1/96
/// inch. Group opacity is multiplied into the colours of what is below. What is not displayed is there, but not
/// enabled.
///
/// A document is refused as a whole when it is no well-formed SVG, uses an entity of its own or is beyond a limit. What
/// has no counterpart is left out or simplified, and reported once by name: a fill by gradient ("linearGradient") takes
/// the fallback colour or the mean of the stops, a pattern without fallback grey; "filter", "mask", "clipPath" and
/// "marker" are not applied; what reaches out of a nested `svg`, or is sliced off, stays ("clip"); animations, scripts
/// and unknown elements are not carried. What cannot be read is reported too: "length", "color", "points", "path data",
/// "transform" (also one in a style) and "image".
///
/// Pictures are read at once, from regular files of this machine and Qt's resources, each only once. Together they have
/// at most 2^26 pixels; what is beyond is missing, as is what they lead to in turn: an SVG picture shows no other file.
///
/// ```
/// Ky2DSvgImporter importer;
/// if (Ky2DGroup* plan = importer.importFile("plan.svg"))
///     scene->insertChild(plan, -1);
/// ```
class KYAPPLICATION_EXPORT Ky2DSvgImporter : public KyObject {
public:
    /// Bytes of a document.
    static constexpr std::size_t cMaxBytes = std::size_t{1} << 24;
    /// Elements of a document; attributes of one element.
    static constexpr std::size_t cMaxElements = 200'000;
    /// Of one element; a document in which one has more is refused.
    static constexpr std::size_t cMaxAttributes = 1'000;
    /// Elements within elements, `use` followed; what is below is left out and reported as "nesting".
    static constexpr unsigned cMaxDepth = 900;

    static const KyType* getType();
    static Ky2DSvgImporter* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static Ky2DSvgImporter* create() { return new Ky2DSvgImporter; }

    /// A local path or a URL ("file", "qrc"), a relative one from the current resource directory. The group belongs to
    /// the caller; null, and getError(), when the file cannot be read or is refused. Images are looked for beside it.
    Ky2DGroup* importFile(const std::string& path);
    /// The bytes of a document, UTF-8 unless it declares another encoding. As importFile; images are looked for in the
    /// current resource directory.
    Ky2DGroup* importText(const std::string& svg);

    /// Nodes made, at most; what is beyond is left out and reported as "size".
    unsigned getMaxNodes() const { return mMaxNodes; }
    void setMaxNodes(unsigned count) { mMaxNodes = count; }
    /// Bytes that `use` and style sheets may read beyond the document's own, at most; as above.
    unsigned getMaxExpansion() const { return mMaxExpansion; }
    void setMaxExpansion(unsigned bytes) { mMaxExpansion = bytes; }

    /// The reason of the last refusal, with line and column where there are some; empty after a success.
    const std::string& getError() const { return mError; }
    /// Names of what the last document holds and the nodes do not, each once, in order of appearance.
    unsigned getNbReports() const { return static_cast<unsigned>(mReports.size()); }
    /// Empty when out of range.
    const std::string& getReport(unsigned index) const;

    /// Size of the last document in pixels; 0 where it gives none.
    double getWidth() const { return mWidth; }
    /// Of the picture, in the document's units; see getWidth.
    double getHeight() const { return mHeight; }

private:
    void reset();
    Ky2DGroup* import(const std::string& bytes, const KyURL& base);

    unsigned mMaxNodes = 200'000;
    unsigned mMaxExpansion = 1U << 24;
    std::string mError;
    std::vector<std::string> mReports;
    double mWidth = 0.0;
    double mHeight = 0.0;

    static const KyType* msType;
};
