// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStyleParametersFixture.h"

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include "KyColor.h"
#include "KyType.h"
#include "KyURL.h"
#include "KyVec3.h"

#include <limits>
#include <memory>

namespace {

using KyStyleParametersTest = KyStyleParametersFixture;

struct Told {
    KyObjectModificationType kind;
    std::string name;
    int index;
    bool operator==(const Told&) const = default;
};

/// What the modified signal of the parameters tells.
struct Listener : KyHasSlots {
    explicit Listener(KyStyleParameters& parameters) { parameters.connectModified(this, &Listener::onModified); }
    void onModified(KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
        told.push_back({kind, name, index});
    }
    std::vector<Told> told;
};

TEST_F(KyStyleParametersTest, ValuesAreWrittenInTheFormsOfStyleSheets) {
    const std::pair<KyField, const char*> cases[] = {
        {KyField(false), "0"},
        {KyField(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615"},
        {KyField(1e7), "10000000"},
        {KyField(0.1f), "0.1"},
        {KyField(1e-7), "0.0000001"},
        {KyField(""), ""},
        {KyField(KyColor("#ff8800")), "#ff8800"},
        {KyField(KyColor(2.0f, -1.0f, 0.0f)), "#ff0000"},
        {KyField(KyColor(1.0f, 0.0f, 0.0f, 0.5f)), "rgba(255, 0, 0, 128)"},
        {KyField(KyURL("file:///my%20icons/a.png")), "url(\"/my icons/a.png\")"},
        {KyField(KyURL("qrc:/icons/a.png")), "url(\":/icons/a.png\")"},
        {KyField(KyURL("file:///a%22b%5Cc.png")), "url(\"/a\\\"b\\\\c.png\")"},
        {KyField(KyURL("http://host/a.png")), "url(\"http://host/a.png\")"},
    };
    for (const auto& [value, expected] : cases) {
        ASSERT_TRUE(style().setParameter("value", value)) << expected;
        EXPECT_EQ(style().resolve("a: @value;"), std::string("a: ") + expected + ";");
        EXPECT_EQ(style().getParameter("value"), value);
    }
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyStyleParametersTest, PlaceholdersAreReplaced) {
    style().setParameter("a", KyField("A"));
    style().setParameter("ab", KyField("AB"));
    style().setParameter("_1", KyField("ONE"));
    const std::pair<const char*, const char*> cases[] = {
        {"@a", "A"},    {"@a@ab", "AAB"}, {"@a-b", "A-b"}, {"@_1", "ONE"}, {"@@", "@"},
        {"@@@a", "@A"}, {"@", "@"},       {"@ a", "@ a"},  {"x@", "x@"},   {"@a\xC3\xA9", "A\xC3\xA9"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(style().resolve(text), expected) << text;
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyStyleParametersTest, AnUnknownNameIsReportedOnceAndStays) {
    EXPECT_EQ(style().resolve("color: @missing; border: @missing"), "color: @missing; border: @missing");
    EXPECT_EQ(style().resolve("@missing @other"), "@missing @other");
    ASSERT_EQ(msReports.size(), 2u);
    EXPECT_NE(msReports[1].find("other"), std::string::npos);
    style().setParameter("missing", KyField(1));
    style().removeParameter("missing");
    style().resolve("@missing");
    EXPECT_EQ(msReports.size(), 3u) << "it was known in between";
}

TEST_F(KyStyleParametersTest, BadNamesAndValuesAreRefusedByReport) {
    constexpr double cNoNumber = std::numeric_limits<double>::quiet_NaN();
    constexpr float cInfinite = std::numeric_limits<float>::infinity();
    const std::pair<std::string, KyField> cases[] = {
        {"1a", KyField(1)},
        {"a-b", KyField(1)},
        {"\xC3\xA9", KyField(1)},
        {std::string("a\0b", 3), KyField(1)},
        {"a", KyField()},
        {"a", KyField(cNoNumber)},
        {"a", KyField(KyColor(0.0f, cInfinite, 0.0f))},
        {"a", KyField(KyVec3d(1, 2, 3))},
        {"a", KyField(static_cast<KyObject*>(nullptr))},
    };
    std::size_t nbReports = 0;
    for (const auto& [name, value] : cases) {
        EXPECT_FALSE(style().setParameter(name, value)) << name << " " << value.toString();
        EXPECT_EQ(msReports.size(), ++nbReports);
    }
    EXPECT_EQ(style().getNbParameters(), 0u);
}

TEST_F(KyStyleParametersTest, ParametersAreInOrderAndEveryChangeIsTold) {
    Listener listener(style());
    style().setParameter("b", KyField(1));
    style().setParameter("a", KyField(1));
    style().setParameter("b", KyField(2));
    style().setParameter("b", KyField(2));
    style().setParameter("b", KyField("2"));
    EXPECT_TRUE(style().getParameter("b").isText());
    EXPECT_FALSE(style().setParameter("b", KyField()));
    EXPECT_FALSE(style().removeParameter("c"));
    EXPECT_TRUE(style().removeParameter(style().getParameterName(1)));
    EXPECT_EQ(style().getParameterName(0) + style().getParameterName(1), "a");
    const std::vector<Told> expected{{eElementInserted, "b", 0},
                                     {eElementInserted, "a", 0},
                                     {eAttributeChanged, "b", -1},
                                     {eAttributeChanged, "b", -1},
                                     {eElementRemoved, "b", 1}};
    EXPECT_EQ(listener.told, expected);
}

TEST_F(KyStyleParametersTest, ACloneHasItsOwnParameters) {
    style().setParameter("a", KyField(1));
    const std::unique_ptr<KyObject> object(style().clone());
    KyStyleParameters* copy = KyStyleParameters::cast(object.get());
    ASSERT_NE(copy, nullptr);
    copy->setParameter("a", KyField(2));
    EXPECT_EQ(style().resolve("@a"), "1");
    EXPECT_EQ(copy->resolve("@a"), "2");
    EXPECT_EQ(KyStyleParameters::find(), &style()) << "the default stays the default";
}

TEST_F(KyStyleParametersTest, ClassComesAndGoesAThousandTimes) {
    KyStyleParameters::finalizeClass();
    const unsigned nbTypes = KyType::getNbTypes();
    for (int round = 0; round < 1000; ++round) {
        KyStyleParameters::initializeClass();
        KyStyleParameters::initializeClass();
        ASSERT_EQ(style().getNbParameters(), 0u);
        style().setParameter("a", KyField(round));
        KyStyleParameters::finalizeClass();
        ASSERT_EQ(KyStyleParameters::find(), nullptr);
        KyStyleParameters::finalizeClass();
    }
    EXPECT_EQ(KyType::getNbTypes(), nbTypes);
    KyStyleParameters::initializeClass();
    style().destroy();
    EXPECT_EQ(KyStyleParameters::find(), nullptr) << "somebody ends it before";
}

TEST_F(KyStyleParametersTest, ScriptsSetAndReadThem) {
    KyScriptEngine::initializeClass();
    KyLuaBinder::initializeClass();
    std::vector<KyField> results;
    EXPECT_TRUE(KyScriptEngine::get().executeChunktWithReturnValues(
        "bindClass('KyStyleParameters') local style = KyStyleParameters.get() style:setParameter('size', 12) "
        "style:setParameter('font', 'Sans') return style:resolve('@size @font'), style:getParameter('size'), "
        "style:getNbParameters(), style.ParameterNames[0]",
        results));
    EXPECT_EQ(results, (std::vector<KyField>{"12 Sans", 12.0, 2.0, "font"}));
    KyScriptEngine::finalizeClass();
    KyLuaBinder::finalizeClass();
}

} // namespace
