// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDoxygenFixture.h"

#include "KyDoxygenXmlDocReader.h"

#include <tuple>

namespace {

constexpr const char* cLamp = R"(<?xml version='1.0' encoding='UTF-8' standalone='no'?>
<doxygen xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:noNamespaceSchemaLocation="compound.xsd">
  <compounddef id="classKyLamp" kind="class" language="C++" prot="public">
    <compoundname>scene::KyLamp</compoundname>
    <basecompoundref refid="classKyNode" prot="public">KyNode</basecompoundref>
    <sectiondef kind="public-func">
      <memberdef kind="function" id="a1" prot="public" static="no" const="yes">
        <type>const <ref refid="classKyPower">KyPower</ref> &amp;</type>
        <definition>const KyPower&amp; KyLamp::getPower</definition>
        <argsstring>(int index) const</argsstring>
        <name>getPower</name>
        <param><type>int</type><declname>index</declname></param>
        <briefdescription>
          <para>Watts of one <bold>bulb</bold>. </para>
        </briefdescription>
        <detaileddescription>
          <para>First.</para>
          <para>Second:<itemizedlist><listitem><para>one</para></listitem><listitem><para>two</para></listitem></itemizedlist></para>
        </detaileddescription>
      </memberdef>
      <memberdef kind="function" prot="public"><type/><name>KyLamp</name><argsstring>()=default</argsstring></memberdef>
      <memberdef kind="function" prot="private"><type>void</type><name>hidden</name></memberdef>
    </sectiondef>
    <sectiondef kind="public-type">
      <memberdef kind="enum" prot="public"><name>Shape</name><enumvalue><name>eSpot</name></enumvalue></memberdef>
    </sectiondef>
    <briefdescription><para>Gives light.</para></briefdescription>
    <detaileddescription>
      <para><programlisting><codeline>KyLamp<sp/>lamp;</codeline><codeline>lamp.blink();</codeline></programlisting></para>
    </detaileddescription>
  </compounddef>
</doxygen>
)";

using KyDoxygenXmlDocReaderTest = KyDoxygenFixture;

TEST_F(KyDoxygenXmlDocReaderTest, AClassIsReadIntoARecordWhoseMembersKeepTheirPartsAndOrder) {
    KyDoxygenXmlDocReader reader;
    ASSERT_TRUE(reader.readFile(write("classKyLamp.xml", cLamp)));
    ASSERT_EQ(reader.getNbClasses(), 1u);
    EXPECT_EQ(reader.getClass(0)->name, "scene::KyLamp");
    EXPECT_EQ(reader.getClass(0)->brief, "Gives light.");
    EXPECT_EQ(reader.getClass(0)->detailed, "KyLamp lamp;\nlamp.blink();");
    const auto& members = reader.getClass(0)->members;
    ASSERT_EQ(members.size(), 3u) << "without the private one";
    EXPECT_EQ(members[0].type + "|" + members[0].name + members[0].arguments,
              "const KyPower &|getPower(int index) const");
    EXPECT_EQ(members[0].brief, "Watts of one bulb.");
    EXPECT_EQ(members[0].detailed, "First.\nSecond:\none\ntwo");
    EXPECT_EQ(members[1].type, "");
    EXPECT_EQ(members[2].name, "Shape") << "not that of a value inside";
    const std::string path = write("a.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><doxygen><compounddef "
                                            "kind='struct'><compoundname>\xE9</compoundname></compounddef></doxygen>");
    ASSERT_TRUE(reader.readFile(path));
    EXPECT_EQ(reader.getClassName(0), "\xC3\xA9") << "the encoding is the declared one";
}

TEST_F(KyDoxygenXmlDocReaderTest, ADirectoryIsReadByItsIndex) {
    write("index.xml", "<doxygenindex><compound refid='classKyB' kind='class'><name>KyB</name><member refid='m' "
                       "kind='function'><name>f</name></member></compound>"
                       "<compound refid='namespacestd' kind='namespace'><name>std</name></compound>"
                       "<compound refid='classKyA' kind='struct'/><compound refid='classKyB' kind='class'/>"
                       "</doxygenindex>");
    writeClass("KyA", "");
    writeClass("KyB", function("int", "f", "()", "Counts."));
    writeClass("KyUnnamed", "");
    KyDoxygenXmlDocReader reader;
    ASSERT_TRUE(reader.readDirectory(folder())) << msReports.back();
    ASSERT_EQ(reader.getNbClasses(), 2u) << "those of the index, each once";
    EXPECT_EQ(reader.getClassName(0), "KyB");
    EXPECT_EQ(reader.getClassName(1), "KyA");
    std::filesystem::remove(folder() + "/classKyA.xml");
    EXPECT_FALSE(reader.readDirectory(folder())) << "one bad file refuses all";
    ASSERT_EQ(msReports.size(), 1u);
    EXPECT_NE(msReports[0].find("classKyA.xml:1: "), std::string::npos) << msReports[0];
    EXPECT_EQ(reader.getNbClasses(), 0u);
}

std::string repeat(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

/// A class whose brief text is the given XML, from line 2 on.
std::string withBrief(const std::string& brief) {
    return "<doxygen><compounddef kind='class'><compoundname>A</compoundname>\n<briefdescription>" + brief +
           "</briefdescription></compounddef></doxygen>";
}

TEST_F(KyDoxygenXmlDocReaderTest, HostileFilesAreRefusedWithFileAndLine) {
    const std::tuple<const char*, std::string, int> documents[] = {
        {"empty", "", 1},
        {"another root", "<html></html>", 1},
        {"crossed tags", withBrief("<a><b></a></b>"), 2},
        {"two roots", withBrief("") + "\n<doxygen/>", 3},
        {"bad bytes", withBrief("\xFF\xFE\xC3"), 1},
        {"an unknown entity", withBrief("&unknown;"), 2},
        {"an external entity", "<!DOCTYPE doxygen [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>\n" + withBrief("&x;"), 1},
        {"an external declaration", "<!DOCTYPE doxygen SYSTEM 'http://127.0.0.1:1/a.dtd'>\n" + withBrief(""), 1},
        {"an entity of entities",
         "<!DOCTYPE doxygen [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>\n<!ENTITY c '&b;&b;&b;&b;'>]>" +
             withBrief("&c;"),
         2},
        {"too deep", withBrief(repeat("<a>", 200) + repeat("</a>", 200)), 2},
        {"too deep in a part that is skipped",
         "<doxygen>\n<other>" + repeat("<a>", 100000) + repeat("</a>", 100000) + "</other></doxygen>", 2},
        {"a class without name", "<doxygen>\n<compounddef kind='class'></compounddef></doxygen>", 2},
        {"a member without kind",
         "<doxygen><compounddef kind='class'><compoundname>A</compoundname>\n<sectiondef><memberdef/></sectiondef>"
         "</compounddef></doxygen>",
         2},
    };
    for (const auto& [name, document, line] : documents) {
        KyDoxygenXmlDocReader reader;
        ASSERT_TRUE(reader.readFile(write("good.xml", withBrief("fine"))));
        msReports.clear();
        const std::string path = write("bad.xml", document);
        EXPECT_FALSE(reader.readFile(path)) << name;
        EXPECT_EQ(reader.getNbClasses(), 0u) << name << ": nothing is kept";
        ASSERT_EQ(msReports.size(), 1u) << name;
        const std::string place = path + ":" + std::to_string(line) + ": ";
        EXPECT_NE(msReports[0].find(place), std::string::npos) << name << " in " << msReports[0];
    }
}

TEST_F(KyDoxygenXmlDocReaderTest, AnIndexNamesNoFilesElsewhere) {
    write("outside.xml", withBrief("secret"));
    for (const char* refid : {"../outside", "", "/outside", "a\\b"}) {
        msReports.clear();
        write("doc/index.xml",
              "<doxygenindex>\n\n<compound refid='" + std::string(refid) + "' kind='class'/></doxygenindex>");
        KyDoxygenXmlDocReader reader;
        EXPECT_FALSE(reader.readDirectory(folder() + "/doc")) << refid;
        ASSERT_EQ(msReports.size(), 1u);
        EXPECT_NE(msReports[0].find("index.xml:3: "), std::string::npos) << msReports[0];
    }
}

TEST_F(KyDoxygenXmlDocReaderTest, CutMissingAndVeryLargeFilesAreRefused) {
    const std::string document = cLamp;
    KyDoxygenXmlDocReader reader;
    for (std::size_t length = 0; length < document.find_last_of('>'); length += 7)
        EXPECT_FALSE(reader.readFile(write("cut.xml", document.substr(0, length)))) << length;
    EXPECT_FALSE(reader.readFile(folder()));
    EXPECT_FALSE(reader.readFile(folder() + "/none.xml"));
    const std::string path = write("large.xml", withBrief("fine"));
    std::filesystem::resize_file(path, static_cast<std::uintmax_t>(KyDoxygenXmlDocReader::cMaxFileSize) + 1);
    EXPECT_FALSE(reader.readFile(path));
    EXPECT_NE(msReports.back().find("too large"), std::string::npos);
}

} // namespace
