// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConversionFixture.h"

#include "KyTypeBuilder.h"

#include <QBuffer>

using namespace KyApplication;

namespace {

using Repository = KyFieldToQVariantConvertersRepository;

template <int Level>
class LevelObject : public LevelObject<Level - 1> {
public:
    static const KyType* getType() { return msType; }
    const KyType* getObjectType() const override { return msType; }
    static void initializeType() {
        const std::string name = "ConversionLevel" + std::to_string(Level);
        msType = KyTypeBuilder<LevelObject>(name.c_str(), LevelObject<Level - 1>::getType()).build();
    }
    static void finalizeType() { KyType::remove(msType); }

private:
    static inline const KyType* msType = nullptr;
};

template <>
class LevelObject<0> : public KyObject {};

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
    KyConvertersRepositoryTest() {
        LevelObject<1>::initializeType();
        LevelObject<2>::initializeType();
        LevelObject<3>::initializeType();
        Repository::initializeSingleton();
    }
    ~KyConvertersRepositoryTest() override {
        Repository::finalizeSingleton();
        LevelObject<3>::finalizeType();
        LevelObject<2>::finalizeType();
        LevelObject<1>::finalizeType();
    }
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

TEST_F(KyConvertersRepositoryTest, AClassHasTheConverterOfItsNearestParent) {
    repository().registerConverter(LevelObject<1>::getType(), &mFirst);
    EXPECT_EQ(repository().getConverter(LevelObject<3>::getType(), true), &mFirst);
    repository().registerConverter(LevelObject<2>::getType(), &mSecond);
    EXPECT_EQ(repository().getConverter(LevelObject<3>::getType(), true), &mSecond);
    EXPECT_EQ(repository().getConverter(LevelObject<3>::getType(), false), nullptr);
    EXPECT_EQ(repository().getConverter(LevelObject<1>::getType(), true), &mFirst);
    EXPECT_EQ(repository().getConverter(KyObject::getType(), true), nullptr);
    EXPECT_EQ(repository().getConverter(static_cast<const KyType*>(nullptr), true), nullptr);
}

TEST_F(KyConvertersRepositoryTest, UnregisteringRemovesEveryEntryThatStillIsTheConverters) {
    repository().registerConverter(LevelObject<1>::getType(), &mFirst);
    repository().registerConverter(LevelObject<2>::getType(), &mSecond);
    repository().registerConverter(LevelObject<3>::getType(), &mFirst);
    repository().registerConverter(QMetaType::QFont, &mFirst);
    repository().registerConverter(QMetaType::QPen, &mFirst);
    repository().registerConverter(QMetaType::QPen, &mSecond);
    repository().unregisterKyFieldConverter(&mFirst);
    EXPECT_EQ(repository().getConverter(LevelObject<1>::getType(), true), nullptr);
    EXPECT_EQ(repository().getConverter(LevelObject<3>::getType(), true), &mSecond);
    EXPECT_EQ(repository().getConverter(QMetaType::QFont), &mFirst);
    repository().unregisterQVariantConverter(&mFirst);
    EXPECT_EQ(repository().getConverter(QMetaType::QFont), nullptr);
    EXPECT_EQ(repository().getConverter(QMetaType::QPen), &mSecond);
}

TEST_F(KyConvertersRepositoryTest, FieldsOfObjectsGoThroughTheConverterOfTheirClass) {
    LevelObject<3> object;
    const KyField field(static_cast<KyObject*>(&object));
    EXPECT_EQ(toQVariant(field).userType(), QMetaType::QString);
    repository().registerConverter(LevelObject<2>::getType(), &mSecond);
    EXPECT_EQ(toQVariant(field), QVariant(2));
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
