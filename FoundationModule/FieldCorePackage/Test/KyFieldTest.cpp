// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDate.h"
#include "KyField.h"
#include "KyMat4.h"
#include "KyTime.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();

struct Tracked {
    static inline int nbAlive = 0;
    Tracked() { ++nbAlive; }
    Tracked(const Tracked& other)
        : payload(other.payload) {
        ++nbAlive;
    }
    ~Tracked() { --nbAlive; }
    bool operator==(const Tracked& other) const { return payload == other.payload; }
    std::string payload = std::string(100, 'x');
};

TEST(KyField, KeepsTheKindOfWhatItIsGiven) {
    EXPECT_EQ(KyField("text").getKind(), cFieldKindOf<std::string>) << "a C string must not become a boolean";
    EXPECT_EQ(KyField(short(3)).getKind(), cFieldKindOf<std::int32_t>);
    EXPECT_EQ(KyField(3ul + (1ull << 40)).getKind(), cFieldKindOf<std::uint64_t>);
    EXPECT_EQ(*KyField(KyVec3<double>(1, 2, 3)).get<KyVec3<double>>(), KyVec3<double>(1, 2, 3));
    EXPECT_FALSE(KyField().isValid());
    EXPECT_FALSE(KyField(KyInvalidField()).isValid());
}

TEST(KyField, CopiesMovesAndEndsValuesOfAnyType) {
    {
        KyField a{Tracked()};
        KyField b = a;
        EXPECT_EQ(Tracked::nbAlive, 2);
        KyField c = std::move(a);
        EXPECT_TRUE(a.isEmpty());
        EXPECT_EQ(b, c);
        b = KyField(std::string(200, 'y'));
        c = b;
        EXPECT_EQ(Tracked::nbAlive, 0);
        EXPECT_EQ(*c.get<std::string>(), std::string(200, 'y'));
        c = static_cast<const KyField&>(c);
        EXPECT_EQ(c, b);
    }
    EXPECT_EQ(Tracked::nbAlive, 0);
}

TEST(KyField, ConvertsNumbersTowardZeroAndRefusesWhatDoesNotFit) {
    struct NumberCase {
        double from;
        bool toInt;
        std::int32_t asInt;
        bool toUInt;
    };
    const NumberCase cases[] = {{1.9, true, 1, true},
                                {-1.9, true, -1, false},
                                {-0.5, true, 0, true},
                                {2147483647.5, true, 2147483647, true},
                                {2147483648.0, false, 0, true},
                                {-2147483648.9, true, std::numeric_limits<std::int32_t>::min(), false},
                                {4294967296.0, false, 0, false},
                                {1e300, false, 0, false},
                                {cNaN, false, 0, false},
                                {std::numeric_limits<double>::infinity(), false, 0, false}};
    for (const NumberCase& test : cases) {
        std::int32_t asInt = 77;
        EXPECT_EQ(KyField(test.from).to(asInt), test.toInt) << test.from;
        EXPECT_EQ(asInt, test.toInt ? test.asInt : 77) << test.from;
        std::uint32_t asUInt = 0;
        EXPECT_EQ(KyField(test.from).to(asUInt), test.toUInt) << test.from;
    }
    std::int64_t wide = 0;
    EXPECT_FALSE(KyField(std::numeric_limits<std::uint64_t>::max()).to(wide));
    EXPECT_FALSE(KyField(9223372036854775808.0).to(wide));
    bool flag = false;
    EXPECT_TRUE(KyField(0.5).to(flag) && flag);
    EXPECT_FALSE(KyField(cNaN).to(flag));
}

TEST(KyField, ConvertsBetweenVectorsOfOneSizeOnly) {
    KyVec3<int> whole(9, 9, 9);
    EXPECT_TRUE(KyField(KyVec3<double>(1.7, -2.7, 3)).to(whole));
    EXPECT_EQ(whole, KyVec3<int>(1, -2, 3));
    EXPECT_FALSE(KyField(KyVec3<double>(1, cNaN, 3)).to(whole));
    EXPECT_FALSE(KyField(KyVec2<double>(1, 2)).to(whole));
    EXPECT_EQ(whole, KyVec3<int>(1, -2, 3)) << "a refused conversion changes nothing";
    std::string text;
    EXPECT_FALSE(KyField(3).to(text)) << "a number is no text";
    double number = 0;
    EXPECT_FALSE(KyField("3").to(number)) << "a text is no number";
}

TEST(KyField, ConvertsListsElementByElement) {
    const std::vector<KyField> mixed{1.0, 2, true};
    std::vector<int> numbers;
    EXPECT_TRUE(KyField(mixed).to(numbers));
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 1}));
    EXPECT_FALSE(KyField(std::vector<KyField>{1, "two"}).to(numbers));
    EXPECT_EQ(KyField(numbers).toString(), "1;2;1");
}

TEST(KyField, WritesAndReadsTextsOfEveryBuiltInType) {
    const KyField values[] = {true,
                              std::int64_t(1) << 40,
                              0.25f,
                              -1e-3,
                              "a b",
                              KyVec2<double>(1, 2.5),
                              KyMat4<double>::fromTranslation({1, 2, 3}),
                              KyDate(2024, 2, 29),
                              KyTime(12, 30, 1.5),
                              KyURL("http://host/path")};
    for (const KyField& value : values) {
        KyField parsed = value;
        EXPECT_TRUE(parsed.fromString(value.toString(17))) << value.getFieldType().getName() << value.toString(17);
        EXPECT_EQ(parsed, value) << value.getFieldType().getName();
    }
}

TEST(KyField, RefusesHostileTexts) {
    const std::pair<KyField, const char*> cases[] = {{1, ""},
                                                     {1, "99999999999"},
                                                     {1u, "-1"},
                                                     {1.0, "- 1"},
                                                     {1.0, "+-1"},
                                                     {true, "yes"},
                                                     {KyVec3<double>(1, 2, 3), "1 2 3 4"},
                                                     {KyDate(2024, 1, 1), "2024-02-31"}};
    for (const auto& [type, text] : cases) {
        KyField field = type;
        EXPECT_FALSE(field.fromString(text)) << text;
        EXPECT_EQ(field, type) << text;
    }
    EXPECT_EQ(KyField("12abc").toInt(), 0);
    EXPECT_EQ(KyField(" 12 ").toInt(), 12);
    EXPECT_EQ(KyField(1e12).toInt(), 0);
}

TEST(KyFieldManager, GivesTheExistingTypeForANameOrATypeSeenBefore) {
    KyFieldManager& manager = KyFieldManager::get();
    const KyFieldType& list = manager.registerFieldType<std::vector<unsigned>>("UIntListOfTest");
    EXPECT_EQ(&manager.registerFieldType<std::vector<unsigned>>("UIntListAgain"), &list);
    EXPECT_EQ(manager.findFieldType("UIntListAgain"), &list);
    EXPECT_EQ(KyField(std::vector<unsigned>{1}).getKind(), list.getKind());
    EXPECT_EQ(&manager.registerFieldType<double>("AnotherDouble"), manager.findFieldType("Double"));
    const KyField unnamed{std::vector<short>{1}};
    EXPECT_EQ(manager.registerFieldType<std::vector<short>>("ShortList").getKind(), unnamed.getKind());
    EXPECT_EQ(unnamed.getFieldType().getName(), "ShortList");
}

TEST(KyFieldManager, ReplacesTheNamesOfAnEnumeratedTypeRegisteredAgain) {
    const char* const first[] = {"eOne", "eTwo"};
    const char* const second[] = {"eUn", "eDeux", "eTrois"};
    KyFieldManager& manager = KyFieldManager::get();
    const KyFieldType& type = manager.registerEnumFieldType("TestEnum", 2, first);
    EXPECT_EQ(KyField::makeEnumerated(type.getKind(), 1).toString(), "eTwo");
    EXPECT_EQ(&manager.registerEnumFieldType("TestEnum", 3, second), &type);
    KyField field;
    EXPECT_TRUE(KyField("eTrois").convert(type.getKind(), field));
    EXPECT_EQ(field.toInt(), 2);
    EXPECT_FALSE(KyField("eOne").convert(type.getKind(), field));
    EXPECT_EQ(KyField::makeEnumerated(type.getKind(), 9).toString(), "9") << "an unnamed value shows its number";
}

} // namespace
