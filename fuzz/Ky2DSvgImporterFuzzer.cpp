// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DGroup.h"
#include "Ky2DSvgImporter.h"
#include "KyException.h"
#include "KyModuleManager.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

/// Documents from which the input makes its own.
constexpr std::array<std::string_view, 4> cSeeds{
    "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE svg [<!ENTITY e 'x'>]><svg xmlns='http://www.w3.org/2000/svg' "
    "width='2in' height='50%' viewBox='0 0 10 10'><style>.a,#r{fill:url(#g) red!important}/*c*/g>*{x:y}@media "
    "x{y{z:1}}</style><g id='g1' class='a b' transform='rotate(30 1,2)scale(-1e2)'><rect id='r' x='1' y='2' "
    "width='3em' "
    "height='40%' rx='1'/></g></svg>",
    "<svg><defs><g id='a'><use href='#b'/></g><symbol id='b' viewBox='0 0 1 1' preserveAspectRatio='xMinYMax "
    "slice'><circle r='1' stroke='currentColor' stroke-dasharray='1 2 3' stroke-dashoffset='-1'/></symbol></defs><use "
    "x='1' href='#a' width='5'/><svg x='1'><ellipse rx='1' ry='2'/></svg><switch><g "
    "systemLanguage='de'/><a/></switch></svg>",
    "<svg><text x='1 2' y='3' font-size='12' text-anchor='middle' xml:space='preserve'> a <tspan dx='1' "
    "font-weight='bolder'>b<tspan x='5'>c</tspan></tspan>&lt;&#65;</text><text font-size='.5'>d</text></svg>",
    "<svg><path d='M1 2L3 4a1 2 30 01.5.5z' fill-rule='evenodd'/><polyline points='1,2 3,4'/><line x2='5' "
    "vector-effect='non-scaling-stroke'/><linearGradient id='g'><stop stop-color='red' "
    "offset='0'/></linearGradient><polygon points='1 2 3' style='fill:url(#g);opacity:50%'/><image "
    "href='data:image/png;base64,iVBORw0KGgo=' width='5'/><image href='none/a.png'/></svg>",
};

/// Pieces that the input puts in.
constexpr std::array<std::string_view, 28> cPieces{
    "<",      ">",
    "</g>",   "<g>",
    "\"",     "'",
    "/>",     "&e;",
    "<!--",   "]]>",
    "1e999",  "nan",
    "-",      "#",
    "url(#",  "href='#a' ",
    "id='a'", "{",
    "}",      "<style>",
    "(",      ")",
    "\xC3",   "<tspan>",
    "<text>", "<use href='#g1'/>",
    "%",      "<![CDATA[",
};

std::string makeDocument(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == '<')
        return std::string(reinterpret_cast<const char*>(data), size);
    std::string text(cSeeds[size > 0 ? data[0] % cSeeds.size() : 0]);
    // Three bytes an edit: a place, and a piece to put there or to put in the place of some letters. Few edits, chosen
    // by the second byte: most documents are to be read to their end.
    const std::size_t end = std::min(size, size > 1 ? 2 + 3 * std::size_t(data[1] % 6) : 0);
    for (std::size_t i = 2; i + 2 < end; i += 3) {
        const std::size_t place = (data[i] * 256U + data[i + 1]) % (text.size() + 1);
        const std::size_t erased = data[i + 2] < 128 ? data[i + 2] % 8 : 0;
        text.replace(place, erased, cPieces[data[i + 2] % cPieces.size()]);
    }
    return text;
}

void ignore(const std::string&) {}

void initializeOnce() {
    static const bool isReady = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        KyException::setReportHandler(&ignore);
        static int argc = 1;
        static char name[] = "Ky2DSvgImporterFuzzer";
        static char* argv[] = {name, nullptr};
        // Lives as long as the process: what the library keeps of Qt ends before it.
        static QGuiApplication application(argc, argv);
        const bool isInitialized = KyModuleManager::get().initialize();
        std::atexit([] { KyModuleManager::get().finalize(); });
        return isInitialized;
    }();
    if (!isReady)
        std::abort();
}

void require(bool condition) {
    if (!condition)
        std::abort();
}

unsigned countNodes(Ky2DNode& node, unsigned depth) {
    require(depth <= Ky2DNode::cMaxDepth);
    unsigned count = 1;
    for (unsigned i = 0; i < node.getNbChildren(); ++i)
        count += countNodes(*node.editChild(i), depth + 1);
    return count;
}

} // namespace

/// A document is refused with a reason or gives a sound tree, the same each time.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    initializeOnce();
    const std::string text = makeDocument(data, size);
    Ky2DSvgImporter importer;
    std::array<unsigned, 2> counts{};
    for (unsigned& count : counts) {
        Ky2DGroup* group = importer.importText(text);
        require((group == nullptr) == !importer.getError().empty());
        if (!group)
            continue;
        count = countNodes(*group, 0);
        group->getBound();
        group->destroy();
    }
    require(counts[0] == counts[1]);
    return 0;
}
