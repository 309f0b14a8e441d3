// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyException.h"
#include "KySettings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view cSeed =
    "<?xml version='1.0' encoding='UTF-8'?><Settings a='1'><!-- c --><A><B v=' '>t</B><C/>"
    "</A><A v='&lt;'><![CDATA[x]]><B v='7'/></A></Settings>";
/// Between the quotes of the value that is read.
constexpr std::size_t cValuePlace = cSeed.find("' '") + 1;

constexpr std::array<std::string_view, 24> cPieces{"true",      "1e999",
                                                   "0;1;nan",   "-7",
                                                   "0.1",       "&#xFFFF;",
                                                   "&amp;",     "\n",
                                                   "<",         ">",
                                                   "'",         "\"",
                                                   "/",         "<A>",
                                                   "</A>",      "<B v='",
                                                   "<!--",      "-->",
                                                   "<![CDATA[", "]]>",
                                                   "<?",        "<!DOCTYPE a [<!ENTITY o '<a>'>]>",
                                                   "&o;",       "\xC3"};

/// The first byte makes a value; three bytes each are an edit: a place, and a piece to put there.
QByteArray makeDocument(const std::uint8_t* data, std::size_t size) {
    std::string text(cSeed);
    if (size > 0)
        text.insert(cValuePlace, cPieces[data[0] % cPieces.size()]);
    const std::size_t end = std::min(size, size > 1 ? 2 + 3 * std::size_t(data[1] % 5) : 0);
    for (std::size_t i = 2; i + 2 < end; i += 3)
        text.insert((data[i] * 256U + data[i + 1]) % (text.size() + 1), cPieces[data[i + 2] % cPieces.size()]);
    return QByteArray::fromStdString(text);
}

void require(bool condition) {
    if (!condition)
        std::abort();
}

template <class T>
void requireSame(KySettings& settings, const T& value) {
    const T read = settings.getAttribute("A/B", "v", value);
    require(settings.setAttribute("A/B", "n", read));
    KySettings again;
    require(again.load(settings.toString()));
    // A value that is not a number differs from itself.
    require(again.getAttribute("A/B", "n", value) == settings.getAttribute("A/B", "n", value) || read != read);
}

} // namespace

/// A text is refused, with nothing left of it, or is a document whose values read back as written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KyException::setReportHandler([](const std::string&) {});
    KySettings settings;
    const bool isLoaded = settings.load(QString::fromUtf8(makeDocument(data, size)));
    require(isLoaded == settings.isOpened() && isLoaded != settings.documentElement().isNull());
    // What a document holds beside its attributes may be beyond writing.
    if (isLoaded && !KySettings().load(settings.toString()))
        return 0;
    requireSame(settings, 1);
    requireSame(settings, 1.0f);
    requireSame(settings, true);
    requireSame(settings, QString("text"));
    requireSame(settings, KyColor());
    requireSame(settings, KyField(1));
    return 0;
}
