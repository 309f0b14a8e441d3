// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConversionFixture.h"

#include "KyVec3.h"

#include <QBuffer>
#include <QSizeF>

using namespace KyApplication;

struct ConversionUnknown {};
Q_DECLARE_METATYPE(ConversionUnknown)

/// Every case runs before start-up and with a repository as it starts: there is no difference.
class KyQtVariantTest : public KyConversionFixture, public testing::WithParamInterface<bool> {
protected:
    KyQtVariantTest() {
        if (GetParam())
            KyFieldToQVariantConvertersRepository::initializeSingleton();
    }
    ~KyQtVariantTest() override { KyFieldToQVariantConvertersRepository::finalizeSingleton(); }
};

INSTANTIATE_TEST_SUITE_P(KyQtVariant, KyQtVariantTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "WithRepository" : "BeforeStartUp"; });

TEST_P(KyQtVariantTest, FieldsThatQtWouldCallNullComeBackUnchanged) {
    for (const KyField& field : {KyField(), KyField(""), KyField(KyRectd()), KyField(KyVec2d(0, 0)), KyField(KyTime()),
                                 KyField(KyDateTime()), KyField(KyDateTime(KyDate(2024, 3, 31), KyTime(2, 30, 0.0)))})
        EXPECT_EQ(toKyField(toQVariant(field)), field);
}

TEST_P(KyQtVariantTest, FieldsWithoutCounterpartBecomeIntegersOrTexts) {
    const char* const names[] = {"ConversionLow", "ConversionHigh"};
    const KyFieldType& type = KyFieldManager::get().registerEnumFieldType("ConversionLevel", 2, names);
    const std::pair<KyField, QVariant> rows[] = {
        {KyField::makeEnumerated(type.getKind(), 1), QVariant(qlonglong(1))},
        {KyField(KyVec3d(1, 0.5, 1e-7)), QVariant("1 0.5 1e-07")},
        {KyField(std::vector<KyField>{KyField(1), KyField("x")}), QVariant("1;x")},
        {KyField(KyTime(25, 0, 0.0)), QVariant("25:00:00.000")},
        {KyField(KyInvalidField()), QVariant()},
    };
    for (const auto& [field, variant] : rows) {
        EXPECT_EQ(toQVariant(field).userType(), variant.userType()) << field.getFieldType().getName();
        EXPECT_EQ(toQVariant(field), variant);
    }
}

TEST_P(KyQtVariantTest, VariantsWithoutCounterpartBecomeTextsOrNothing) {
    const std::pair<QVariant, KyField> rows[] = {
        {QVariant(0.1f), KyField("0.10000000149011612")},
        {QVariant::fromValue(short(-3)), KyField("-3")},
        {QVariant::fromValue(char(65)), KyField("65")},
        {QVariant::fromValue(uchar(200)), KyField("200")},
        {QVariant(QByteArray("")), KyField("")},
        {QVariant(QChar('x')), KyField("x")},
        {QVariant(QVariant::Int), KyField()},
        {QVariant(QString()), KyField()},
        {QVariant(QDate()), KyField()},
        {QVariant::fromValue<QBuffer*>(nullptr), KyField()},
        {QVariant(QSizeF(1, 2)), KyField()},
        {QVariant(QVariantMap{{"a", 1}}), KyField()},
        {QVariant::fromValue(ConversionUnknown()), KyField()},
    };
    for (const auto& [variant, field] : rows)
        EXPECT_EQ(toKyField(variant), field) << variant.typeName();
}

TEST_P(KyQtVariantTest, ListsBecomeListFields) {
    const QVariantList list{7, "a", QVariant(), QPointF(), QVariantList{true}, QStringList{"x", ""}};
    const std::vector<KyField> fields{KyField(7),
                                      KyField("a"),
                                      KyField(),
                                      KyField(KyVec2d()),
                                      KyField(std::vector<KyField>{KyField(true)}),
                                      KyField(std::vector<std::string>{"x", ""})};
    EXPECT_EQ(toKyField(list), KyField(fields));
    EXPECT_EQ(toKyField(QVariantList()), KyField(std::vector<KyField>()));
}

TEST_P(KyQtVariantTest, TextsUseTheDefaultCharacterSet) {
    setDefaultCharSet(106);
    EXPECT_EQ(toKyField(QString::fromUtf8("\u20ac")), KyField("\xe2\x82\xac"));
    EXPECT_EQ(toQVariant(KyField("\xe2\x82\xac")), QVariant(QString::fromUtf8("\u20ac")));
}
