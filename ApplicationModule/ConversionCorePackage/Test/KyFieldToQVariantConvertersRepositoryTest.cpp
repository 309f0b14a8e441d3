// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConversionFixture.h"

#include "KyDynamicObject.h"
#include "KyType.h"

#include <QBuffer>

using namespace KyApplication;

namespace {

using Repository = KyFieldToQVariantConvertersRepository;

/// Answers with its own number.
class NumberConverter : public KyFieldToQVariantConverter, public QVariantToKyFieldConverter {
public:
    explicit NumberConverter(int number)
        : mNumber(number) {}
    QVariant toQVariant(const KyField& field) override { return field.toKyObject() ? QVariant(mNumber) : QVariant(); }
    KyField toKyField(const QVariant&) override { return KyField(mNumber); }

private:
    int mNumber;
};

} // namespace

class KyConvertersRepositoryTest : public KyConversionFixture {
protected:
    KyConvertersRepositoryTest() { Repository::initializeSingleton(); }
    ~KyConvertersRepositoryTest() override { Repository::finalizeSingleton(); }
    static Repository& repository() { return *Repository::get(); }

    NumberConverter mFirst{1};
    NumberConverter mSecond{2};
};

TEST_F(KyConvertersRepositoryTest, ItIsThereBetweenInitialiseAndFinalise) {
    repository().registerConverter(QMetaType::QFont, &mFirst);
    Repository::initializeSingleton();
    EXPECT_EQ(repository().getConverter(QMetaType::QFont), &mFirst);
    Repository::finalizeSingleton();
    EXPECT_EQ(Repository::get(), nullptr);
    Repository::initializeSingleton();
    EXPECT_EQ(repository().getConverter(QMetaType::QFont), nullptr);
}

TEST_F(KyConvertersRepositoryTest, AClassHasTheConverterOfItsNearestParentUntilThatIsUnregistered) {
    const KyType *const parent = KyObject::getType(), *const type = KyDynamicObject::getType();
    KyDynamicObject object;
    const KyField field(static_cast<KyObject*>(&object));
    EXPECT_EQ(toQVariant(field).userType(), QMetaType::QString);
    repository().registerConverter(parent, &mFirst);
    EXPECT_EQ(repository().getConverter(type, true), &mFirst);
    EXPECT_EQ(repository().getConverter(type, false), nullptr);
    EXPECT_EQ(repository().getConverter(static_cast<const KyType*>(nullptr), true), nullptr);
    repository().registerConverter(type, &mSecond);
    EXPECT_EQ(repository().getConverter(parent, true), &mFirst);
    EXPECT_EQ(toQVariant(field), QVariant(2));
    repository().unregisterKyFieldConverter(&mSecond);
    EXPECT_EQ(toQVariant(field), QVariant(1));
}

TEST_F(KyConvertersRepositoryTest, UnregisteringRemovesEveryEntryThatStillIsTheConverters) {
    for (const QMetaType::Type type : {QMetaType::QFont, QMetaType::QBrush, QMetaType::QPen})
        repository().registerConverter(type, &mFirst);
    repository().registerConverter(QMetaType::QPen, &mSecond);
    repository().unregisterQVariantConverter(&mFirst);
    EXPECT_EQ(repository().getConverter(QMetaType::QFont), nullptr);
    EXPECT_EQ(repository().getConverter(QMetaType::QBrush), nullptr);
    EXPECT_EQ(repository().getConverter(QMetaType::QPen), &mSecond);
}

TEST_F(KyConvertersRepositoryTest, RegisteredConvertersWinTowardFieldsAndBuiltInOnesTowardQt) {
    repository().registerConverter(QMetaType::QString, &mFirst);
    EXPECT_EQ(toKyField(QString("text")), KyField(1));
    EXPECT_EQ(toKyField(QString()), KyField());
    repository().registerConverter(QMetaType::QVariantList, &mSecond);
    EXPECT_EQ(toKyField(QVariantList{5}), KyField(2));
    repository().unregisterQVariantConverter(&mSecond);
    EXPECT_EQ(toKyField(QVariantList{5}), KyField());
}

TEST_F(KyConvertersRepositoryTest, PointersToObjectsFallBackToTheConverterOfQObject) {
    QBuffer buffer;
    const QVariant derived = QVariant::fromValue(&buffer);
    repository().registerConverter(QMetaType::QObjectStar, &mFirst);
    EXPECT_EQ(toKyField(derived), KyField(1));
    EXPECT_EQ(toKyField(QVariant::fromValue<QBuffer*>(nullptr)), KyField());
    repository().registerConverter(static_cast<QMetaType::Type>(derived.userType()), &mSecond);
    EXPECT_EQ(toKyField(derived), KyField(2));
}
