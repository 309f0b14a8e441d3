// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettingsTest.h"

#include "KyVec3.h"

#include <cmath>
#include <limits>

namespace {

using Document = KyQDomDocument;

using KyQDomDocumentTest = KySettingsTest;

/// The text that a value becomes, and what is read from it, through a whole document.
template <class T>
std::pair<std::string, T> writeAndRead(const T& value, const T& other) {
    KySettings settings;
    settings.setAttribute("A/B", "v", value);
    KySettings again;
    EXPECT_TRUE(again.load(settings.toString()));
    return {again.getAttribute("A/B", "v").toStdString(), again.getAttribute("A/B", "v", other)};
}

/// What reading gives when the text is this.
template <class T>
T readText(const QString& text, const T& defaultValue) {
    KySettings settings;
    settings.setAttribute("A", "v", text);
    return settings.getAttribute("A", "v", defaultValue);
}

TEST_F(KyQDomDocumentTest, ValuesAreWrittenInTheirFormsAndReadBack) {
    EXPECT_EQ(writeAndRead(0.5, 1.0), std::pair(std::string("0.5000000000000000"), 0.5));
    EXPECT_EQ(writeAndRead(0.1f, 1.0f), std::pair(std::string("0.1000000014901161"), 0.1f));
    EXPECT_EQ(writeAndRead(INFINITY, 1.0f).second, INFINITY);
    EXPECT_TRUE(std::isnan(writeAndRead(std::nan(""), 1.0).second));
    EXPECT_EQ(writeAndRead(-5, 1), std::pair(std::string("-5"), -5));
    EXPECT_EQ(writeAndRead(4294967295u, 1u), std::pair(std::string("4294967295"), 4294967295u));
    EXPECT_EQ(writeAndRead(true, false), std::pair(std::string("true"), true));
    const QString text = QString::fromUtf8("\xf0\x9f\x98\x80 \xc3\xbc <&>\"' \n\t\r \xef\xbb\xbf");
    EXPECT_EQ(writeAndRead(text, QString()).second, text);
    const KyColor color(0.25f, 1e-5f, 1.5f, 0.123456f);
    EXPECT_EQ(writeAndRead(color, KyColor()), std::pair(std::string("0.25;1e-05;1.5;0.123456"), color));
    for (const KyField& field :
         {KyField(0.1), KyField(0.1f), KyField(-3), KyField(true), KyField(KyVec3d(0.1, 1e-300, 1e300)), KyField(color),
          KyField("\xef\xbb\xbftwo\nlines \t\"<&'> \xc3\xbc \xce\xa9"), KyField(""),
          KyField(std::numeric_limits<std::int64_t>::min())})
        EXPECT_EQ(writeAndRead(field, KyField::makeDefault(field.getKind())).second, field) << field.toString();
}

TEST_F(KyQDomDocumentTest, WhatXmlCannotHoldIsLost) {
    using Units = std::u16string;
    const std::pair<Units, Units> table[] = {{{u'a', 0, 1, 0x1F, 0x7F, 0x8B, u'b', u'\t', u'\r'}, u"ab\t\r"},
                                             {u"a\xFFFE\xFFFF", u"a"},
                                             {{u'a', 0xD800, u'b'}, u"a\uFFFDb"},
                                             {{0xDC00, 0xD83D, 0xDE00, 0xD800}, u"\uFFFD\U0001F600\uFFFD"}};
    for (const auto& [value, expected] : table)
        EXPECT_EQ(writeAndRead(QString::fromStdU16String(value), QString()).second.toStdU16String(), expected);
    EXPECT_EQ(writeAndRead(KyField("\xfc!"), KyField("")).second, KyField("\xef\xbf\xbd!")) << "a text in another set";
}

TEST_F(KyQDomDocumentTest, TextsAndColoursAreNotTakenForBool) {
    KySettings settings;
    settings.setAttribute("A", "text", QLatin1String("x"));
    settings.setAttribute("A", "colour", KyColor::eRed);
    EXPECT_EQ(settings.getAttribute("A", "text") + settings.getAttribute("A", "colour"), "x1;0;0;1");
    EXPECT_EQ(settings.getAttribute("A", "none", QLatin1String("y")), "y");
    EXPECT_EQ(settings.getAttribute("A", "none", KyColor::eBlue), KyColor(KyColor::eBlue));
}

TEST_F(KyQDomDocumentTest, BadTextsGiveZeroAndMissingOnesTheDefault) {
    using Values = std::tuple<int, unsigned, double, float, bool>;
    const std::pair<const char*, Values> table[] = {{"", {}},
                                                    {"True", {}},
                                                    {"1,5", {}},
                                                    {"true", {0, 0, 0, 0, true}},
                                                    {"1", {1, 1, 1, 1, false}},
                                                    {"-7", {-7, 0, -7, -7, false}},
                                                    {"1e999", {0, 0, HUGE_VAL, HUGE_VALF, false}}};
    for (const auto& [text, values] : table)
        EXPECT_EQ(Values(readText(text, 4), readText(text, 4u), readText(text, 4.0), readText(text, 4.0f),
                         readText(text, true)),
                  values)
            << text;
    const KyColor color(1, 2, 3, 4);
    EXPECT_EQ(readText("0;0.5;1", color), KyColor(0, 0.5f, 1, 1));
    for (const char* text : {"", "0;1", "0;1;x", "0;1;", "0;1;2;3;4", "1e999;0;0", "red"})
        EXPECT_EQ(readText(text, color), color) << text;
    EXPECT_EQ(readText("7", KyField()), KyField("7"));
    EXPECT_EQ(readText("no number", KyField(7)), KyField(7));
    KySettings settings;
    settings.setAttribute("A", "other", "x");
    for (const QString path : {"A", "None", "", "//A//"}) {
        EXPECT_EQ(settings.getAttribute(path, "v", 42), 42);
        EXPECT_TRUE(settings.getAttribute(path, "v", true));
        EXPECT_EQ(settings.getAttribute(path, "v", "default"), "default");
        EXPECT_EQ(settings.getAttribute(path, "v"), "");
    }
}

TEST_F(KyQDomDocumentTest, FindingAndBuildingReachTheSameElements) {
    KyTestDocument document("");
    ASSERT_TRUE(document.load("<S><A><Proxy host='far'/></A><B><C k='1'/><C k='2' v='x'/></B></S>"));
    EXPECT_EQ(document.findElements({"Proxy"}).attribute("host"), "far");
    EXPECT_EQ(document.buildElements({"Proxy"}), document.findElements({"Proxy"}));
    EXPECT_EQ(document.buildElements({"B", "Proxy"}).parentNode().nodeName(), "B");
    EXPECT_EQ(document.findElements({"Proxy"}).attribute("host"), "far") << "the first in document order";
    EXPECT_EQ(document.findElements({}), document.documentElement());
    EXPECT_EQ(document.buildElements({}), document.documentElement());
    EXPECT_TRUE(document.findElements({"A", "C"}).isNull());

    const QDomElement root = document.documentElement();
    EXPECT_EQ(Document::findChildElement(root, {"C"}, "k", "2").attribute("v"), "x");
    EXPECT_TRUE(Document::findChildElement(root, {"C"}, "none", "").isNull());
    const QDomElement added = Document::addChildElement(document.findElements({"Proxy"}), "New", "a", "b");
    EXPECT_EQ(added.attribute("a"), "b");
    EXPECT_EQ(Document::findParentElement(added, "Proxy", "host", "far"), added.parentNode());
    EXPECT_TRUE(Document::findParentElement(added, "Proxy", "host", "near").isNull());
    EXPECT_EQ(document.listElementsByTagName("C").size(), 2);
    EXPECT_EQ(document.listElementsByAttrValue("C", "k", "1").size(), 1);
}

TEST_F(KyQDomDocumentTest, RootsAreMadeOnceAndBadNamesChangeNothing) {
    KySettings settings;
    EXPECT_EQ(settings.create().tagName(), "Settings");
    EXPECT_EQ(settings.create(), settings.documentElement());
    settings.setAttribute("A", "v", 1);
    const QString before = settings.toString();
    EXPECT_EQ(before.count("<Settings"), 1);
    for (const QString name : {"a b", "1a", "<", "x\"y", "a=b", "-", ":", "a:", ":a", "a:1", "a:b:c"}) {
        EXPECT_FALSE(settings.setAttribute("New/" + name, "v", 1)) << name.toStdString();
        EXPECT_FALSE(settings.setAttribute("New", name, 1)) << name.toStdString();
    }
    EXPECT_FALSE(settings.setAttribute("New", "", 1));
    EXPECT_EQ(settings.toString(), before);
    EXPECT_TRUE(settings.setAttribute("//Gr\u00FC.n-1/a:b_c//", "v", 1));

    KyTestDocument nameless("");
    EXPECT_TRUE(nameless.create().isNull() && nameless.buildElements({"A"}).isNull());
    EXPECT_FALSE(nameless.setAttribute("A", "v", 1));
}

TEST_F(KyQDomDocumentTest, WhatIsBuiltCanBeReadAgain) {
    const QString most = QString("a/").repeated(Document::cMaxDepth - 1);
    KySettings settings;
    EXPECT_FALSE(settings.setAttribute(most + "a", "v", 1));
    EXPECT_TRUE(settings.documentElement().isNull());
    EXPECT_TRUE(settings.setAttribute("b/" + most.mid(2), "v", 1));
    const QString before = settings.toString();
    EXPECT_FALSE(settings.setAttribute("b/" + most, "v", 1));
    EXPECT_FALSE(settings.setAttribute(most.mid(2) + "c/c", "v", 1)) << "half of it is there";
    EXPECT_EQ(settings.toString(), before);
    EXPECT_TRUE(KySettings().load(before));

    // In so many elements that the text gets the closer look at long ones.
    KySettings names;
    QDomElement element = names.create();
    int nbNames = 0;
    for (unsigned c = 1; c < 0xFFFF; ++c) {
        if (c % 32 == 0)
            element = Document::addChildElement(names.documentElement(), "A");
        for (const QString& name : {QString(QChar(c)), QString("a") + QChar(c)}) {
            Document::setAttribute(element, name, 1);
            nbNames += element.hasAttribute(name);
        }
    }
    EXPECT_GT(nbNames, 50000);
    EXPECT_TRUE(KySettings().load(names.toString())) << msReports;
}

TEST_F(KyQDomDocumentTest, ABadTextIsReportedWithItsPlaceAndLeavesNothing) {
    KySettings settings;
    ASSERT_TRUE(settings.load("<Settings/>") && settings.isOpened());
    EXPECT_FALSE(settings.load("<Settings>\n<b></Settings>"));
    EXPECT_EQ(msReports, "XML parse error at (Ln 2 Col 14): \ntag mismatch|");
    EXPECT_TRUE(!settings.isOpened() && settings.documentElement().isNull());
}

TEST_F(KyQDomDocumentTest, TextsThatWouldUseUpTheStackAreRefused) {
    const auto nest = [](int depth) { return QString("<a>").repeated(depth) + QString("</a>").repeated(depth); };
    const QString flat = QString("<a c='/'/><!--<a>--><![CDATA[<a>]]><?a <a>?>").repeated(2000);
    KySettings settings;
    EXPECT_TRUE(settings.load(nest(Document::cMaxDepth)));
    EXPECT_TRUE(settings.load("<a b='>'>" + flat + "</a>"));
    for (const QString& text :
         {nest(Document::cMaxDepth + 1), QString("<a>").repeated(1000000),
          "<!--" + QString("</a>").repeated(100000) + "-->" + nest(100000),
          QString("<!DOCTYPE a [<!ENTITY o '%1'>]><a>&o;</a>").arg(QString("<a>").repeated(1300)),
          "<!DOCTYPE a SYSTEM \"<x '\">" + nest(200000), "<!DOCTYPE a [<!ATTLIST a b CDATA \"<x '\">]>" + nest(200000),
          "<!DOCTYPE a [<!ELEMENT a " + QString("(").repeated(200000) + "]><a/>"})
        EXPECT_FALSE(settings.load(text)) << text.left(40).toStdString();
    EXPECT_EQ(msReports.find("XML parse error at (Ln 1 Col 3003): \n"), 0u) << msReports.substr(0, 60);
}

} // namespace
