// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DSvgDocuments.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace Ky2DSvgDocuments;

TEST(Ky2DSvgRefusalTest, AnythingButAnSvgIsRefusedWithItsPlace) {
    const struct {
        std::string text;
        const char* part;
    } cases[] = {{"", "line 1"},
                 {"no markup", "line 1"},
                 {"<html/>", "no SVG"},
                 {"<svg xmlns='urn:other'/>", "no SVG"},
                 {"<x:svg xmlns:x='http://example.org/'/>", "no SVG"},
                 {"<svg>\n<g>\n</svg>", "line 3, column 6"},
                 {"<svg><rect x='1' x='2'/></svg>", "line 1"},
                 {"<svg><g", "line 1"},
                 {"<?xml version='1.0' encoding='UTF-7'?><svg/>", "encoding"},
                 {"<!DOCTYPE svg [<!ENTITY a 'b'>]>\n<svg>&a;</svg>", "line 2"},
                 {"<!DOCTYPE svg SYSTEM 'a.dtd'><svg>&a;</svg>", "'a'"}};
    for (const auto& c : cases) {
        Imported document(c.text);
        EXPECT_FALSE(document.group) << c.text;
        EXPECT_NE(document.importer.getError().find(c.part), std::string::npos)
            << c.text << ": " << document.importer.getError();
    }
    Ky2DSvgImporter importer;
    EXPECT_EQ(importer.importFile("/no/such/file.svg"), nullptr);
    EXPECT_NE(importer.getError().find("/no/such/file.svg"), std::string::npos);
    EXPECT_EQ(importer.importFile("/"), nullptr);
}

TEST(Ky2DSvgRefusalTest, PrefixesEncodingsAndUnusedEntitiesAreRead) {
    const QString wide = QStringLiteral("<?xml version='1.0' encoding='UTF-16'?><svg><g id='\u00e9'/></svg>");
    std::string utf16("\xFF\xFE");
    utf16.append(reinterpret_cast<const char*>(wide.utf16()), std::size_t(wide.size()) * 2);
    for (const std::string& text :
         {std::string("<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:g id='\xC3\xA9'/><g id='x'/></s:svg>"),
          std::string("<?xml version='1.0' encoding='ISO-8859-1'?><svg><g id='\xE9'/></svg>"),
          std::string("<!DOCTYPE svg PUBLIC '-//W3C' 'x' [<!ENTITY n 'v]'>\n] ><svg><g id='&#233;'/></svg>"), utf16}) {
        Imported document(text);
        ASSERT_TRUE(document.group) << text << document.importer.getError();
        EXPECT_TRUE(document.find("\xE9")) << text;
        EXPECT_FALSE(document.find("x"));
    }
}

namespace {

std::string repeat(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/// Each of many groups uses the one before ten times.
std::string makeUseBomb(const std::string& content) {
    std::string text = "<defs><g id='u0'>" + content + "</g>";
    for (int i = 1; i < 30; ++i)
        text += fmt::format("<g id='u{}'>{}</g>", i, repeat(fmt::format("<use href='#u{}'/>", i - 1), 10));
    return wrap(text + "</defs><use href='#u29'/>");
}

std::string makeLaughs() {
    std::string text = "<!DOCTYPE svg [<!ENTITY a0 'ha'>";
    for (int i = 1; i < 30; ++i)
        text += fmt::format("<!ENTITY a{} '{}'>", i, repeat(fmt::format("&a{};", i - 1), 10));
    return text + "]><svg><text>&a29;</text></svg>";
}

std::string makeAttributes(int count) {
    std::string text = "<svg><g ";
    for (int i = 0; i < count; ++i)
        text += fmt::format("a{}='1' ", i);
    return text + "/></svg>";
}

std::string makeCycle() {
    return wrap(
        "<defs><g id='a'><use href='#b'/></g><g id='b'><use href='#c'/></g><g id='c'><use href='#a'/></g></defs>"
        "<use href='#a'/>");
}

} // namespace

TEST(Ky2DSvgRefusalTest, HostileDocumentsEndSoon) {
    const struct {
        const char* name;
        std::string text;
        bool isAccepted;
        const char* report;
    } cases[] = {
        {"nested groups", wrap(repeat("<g>", 10000) + repeat("</g>", 10000)), true, "nesting"},
        {"nested texts", wrap("<text>" + repeat("<tspan>x", 10000) + repeat("</tspan>", 10000) + "</text>"), true,
         "nesting"},
        {"unclosed groups", "<svg>" + repeat("<g>", 100000), false, ""},
        {"laughs", makeLaughs(), false, ""},
        {"declarations", "<!DOCTYPE svg [" + repeat("<!ATTLIST g a CDATA 'x'>", 200000) + "]><svg/>", true, ""},
        {"use bomb", makeUseBomb("<g/>"), true, "size"},
        {"use of paths", makeUseBomb("<path d='M" + repeat("1 1 ", 10000) + "'/>"), true, "size"},
        {"use of sheets", makeUseBomb("<style>*{" + repeat("a:b;", 10000) + "}</style>"), true, "size"},
        {"use of nothing", makeUseBomb(repeat("<desc/>", 10000)), true, "size"},
        {"use of texts", makeUseBomb("<text>" + repeat("text ", 100000) + "</text>"), true, "size"},
        {"places", wrap("<text x='" + repeat("1 ", 300000) + "'>" + repeat("x", 300000) + "</text>"), true, "size"},
        {"long text", wrap("<text>" + repeat("word ", 2000000) + "</text>"), true, "size"},
        {"use cycle", makeCycle(), true, "use"},
        {"attributes", makeAttributes(100000), false, ""},
        {"elements", wrap(repeat("<g/>", int(Ky2DSvgImporter::cMaxElements))), false, ""},
        {"numbers",
         wrap("<rect x='nan' y='inf' width='1e999' rx='-1e308' stroke-width='1e308in' stroke-dasharray='1e-300 0 "
              "nan' transform='scale(1e308) scale(1e308)' font-size='1e308'/><text font-size='1e-300'>x</text>"
              "<text font-size='1e300' x='1e300'>x</text><svg viewBox='0 0 1e-300 1e-300' width='1e300' "
              "height='1e300'><circle r='1e300' stroke='red'/></svg><path d='M1e999 0'/>"),
         true, "path data"},
        {"many names", wrap([] {
             std::string all;
             for (int i = 0; i < 50000; ++i)
                 all += fmt::format("<n{}/>", i);
             return all;
         }()),
         true, "n0"},
        {"open sheet", wrap("<style>a{b:c;d:url('" + repeat("x{", 100000) + "</style><rect style='fill:rgb('/>"), true,
         ""},
    };
    for (const auto& c : cases) {
        Imported document(c.text, 5000);
        EXPECT_EQ(document.group != nullptr, c.isAccepted) << c.name << document.importer.getError();
        const std::vector<std::string> reports = document.getReports();
        const bool isReported = std::find(reports.begin(), reports.end(), c.report) != reports.end();
        EXPECT_TRUE(isReported || !*c.report) << c.name;
        EXPECT_LE(reports.size(), 100u);
        if (document.group)
            document.group->getBound();
    }
}
