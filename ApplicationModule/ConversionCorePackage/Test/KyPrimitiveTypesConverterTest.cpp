// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConversionFixture.h"

#include "KyVec3.h"

#include <QFont>
#include <QSizeF>

#include <limits>

using namespace KyApplication;

namespace {

constexpr double cInfinity = std::numeric_limits<double>::infinity();

const KyDateTime cMoment(KyDate(2024, 2, 29), KyTime(12, 30, 15.25));
const QDateTime cQtMoment(QDate(2024, 2, 29), QTime(12, 30, 15, 250));

} // namespace

class KyPrimitiveTypesConverterTest : public KyConversionFixture {};

TEST_F(KyPrimitiveTypesConverterTest, FieldsOfBuiltInKindsBecomeVariants) {
    const std::pair<KyField, QVariant> rows[] = {
        {KyField(-7), QVariant(qlonglong(-7))},
        {KyField(4294967295u), QVariant(qulonglong(4294967295u))},
        {KyField(std::numeric_limits<std::uint64_t>::max()), QVariant(std::numeric_limits<qulonglong>::max())},
        {KyField(0.5f), QVariant(0.5)},
        {KyField(cInfinity), QVariant(cInfinity)},
        {KyField(KyColor(1, 0, 0, 0)), QVariant(QColor(255, 0, 0, 0))},
        {KyField(KyURL("http://host/a")), QVariant(QUrl("http://host/a"))},
        {KyField(KyRectd(1, -2, 3, 4)), QVariant(QRectF(1, -2, 3, 4))},
        {KyField(KyVec2d(1, 2)), QVariant(QPointF(1, 2))},
        {KyField(cMoment.time), QVariant(cQtMoment.time())},
        {KyField(cMoment.date), QVariant(cQtMoment.date())},
        {KyField(cMoment), QVariant(cQtMoment)},
        {KyField(KyVec3d(1, 2, 3)), QVariant()},
        {KyField(std::vector<std::string>{"a"}), QVariant()},
    };
    for (const auto& [field, expected] : rows) {
        const QVariant variant = KyPrimitiveTypesConverter::toQVariant(field);
        EXPECT_EQ(variant.userType(), expected.userType()) << "an int would equal the text of its digits";
        EXPECT_EQ(variant, expected);
    }
}

TEST_F(KyPrimitiveTypesConverterTest, VariantsOfBuiltInTypesBecomeFields) {
    const std::pair<QVariant, KyField> rows[] = {
        {QVariant(7u), KyField(7)},
        {QVariant(4294967295u), KyField(-1)},
        {QVariant(qulonglong(5000000000)), KyField(705032704)},
        {QVariant::fromValue(9L), KyField(9)},
        {QVariant(-cInfinity), KyField(0.0)},
        {QVariant(QColor(255, 0, 0, 0)), KyField(KyColor(1, 0, 0, 0))},
        {QVariant(QUrl("http://host/a")), KyField(KyURL("http://host/a"))},
        {QVariant(QRectF(1, -2, -3, 0)), KyField(KyRectd(1, -2, -3, 0))},
        {QVariant(QPointF(1, 2)), KyField(KyVec2d(1, 2))},
        {QVariant(cQtMoment.time()), KyField(cMoment.time)},
        {QVariant(QDate()), KyField(KyDate())},
        {QVariant(cQtMoment.toUTC()), KyField(toKyDateTime(cQtMoment.toUTC()))},
        {QVariant(0.5f), KyField()},
        {QVariant(QSizeF(1, 2)), KyField()},
        {QVariant(QFont()), KyField()},
    };
    for (const auto& [variant, field] : rows)
        EXPECT_EQ(KyPrimitiveTypesConverter::toKyField(variant), field) << variant.typeName();
}

TEST_F(KyPrimitiveTypesConverterTest, TextsUseTheCharacterSetGiven) {
    const QString text = QString::fromUtf8("\u20ac");
    EXPECT_EQ(KyPrimitiveTypesConverter::toKyField(text, 106), KyField("\xe2\x82\xac"));
    EXPECT_EQ(KyPrimitiveTypesConverter::toQVariant(KyField("\xe2\x82\xac"), 106), QVariant(text));
    EXPECT_EQ(KyPrimitiveTypesConverter::toKyField(text), KyField("?"));
    EXPECT_EQ(takeReports().size(), 1u);
}
