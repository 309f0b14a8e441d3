// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFixture.h"

#include "KyQtVariant.h"

#include <QPointer>

namespace {

using KyObjectToQVariantConverterTest = KyQmlFixture;

/// Counts what it makes and shows what is asked.
class CountingConverter : public KyObjectToQVariantConverter {
public:
    using KyObjectToQVariantConverter::canConvert;
    using KyObjectToQVariantConverter::objectModifiedSlot;

    int mNbMade = 0;

protected:
    KyObjectQmlBinding* createBinding(KyObject* object) override {
        ++mNbMade;
        return KyObjectToQVariantConverter::createBinding(object);
    }
};

TEST_F(KyObjectToQVariantConverterTest, ConvertsThroughTheFreeFunctions) {
    QmlTestLamp lamp;
    const QVariant variant = KyApplication::toQVariant(KyField(&lamp));
    EXPECT_EQ(variant.userType(), QMetaType::QObjectStar);
    EXPECT_EQ(variant.value<KyObjectQmlBinding*>()->getObject(), &lamp);
    EXPECT_EQ(KyApplication::toQVariant(KyField(&lamp)), variant) << "one binding an object";
    EXPECT_EQ(KyApplication::toKyField(variant).toKyObject(), &lamp);
    EXPECT_EQ(KyApplication::toKyField(QVariant::fromValue(variant.value<KyObjectQmlBinding*>())).toKyObject(), &lamp);
}

TEST_F(KyObjectToQVariantConverterTest, AsksTheAttributeThenTheClass) {
    CountingConverter converter;
    QmlTestLamp lamp;
    QmlTestSpot spot;
    KyDynamicObject plain;
    KyDynamicObject willing;
    KyDynamicObject unwilling;
    willing.addAttribute("QmlBinding", KyField("1"));
    unwilling.addAttribute("QmlBinding", KyField(0));
    EXPECT_FALSE(converter.canConvert(nullptr));
    EXPECT_TRUE(converter.canConvert(&lamp));
    EXPECT_FALSE(converter.canConvert(&spot)) << "the class itself says it, not its parent";
    EXPECT_FALSE(converter.canConvert(&plain));
    EXPECT_TRUE(converter.canConvert(&willing));
    EXPECT_FALSE(converter.canConvert(&unwilling));
}

TEST_F(KyObjectToQVariantConverterTest, GivesNullForWhatMayNotBeConverted) {
    QmlTestSpot spot;
    for (const KyField& field : {KyField(&spot), KyField(static_cast<KyObject*>(nullptr)), KyField(5), KyField()}) {
        const QVariant variant = mConverter->toQVariant(field);
        EXPECT_EQ(variant.userType(), QMetaType::QObjectStar);
        EXPECT_EQ(variant.value<QObject*>(), nullptr);
    }
    QObject foreign;
    for (const QVariant& variant : {QVariant(), QVariant(5), QVariant::fromValue<QObject*>(nullptr),
                                    QVariant::fromValue(&foreign), QVariant::fromValue(&mEngine)}) {
        const KyField field = mConverter->toKyField(variant);
        EXPECT_EQ(field.getKind(), cFieldKindOf<KyObjectReference>);
        EXPECT_EQ(field.toKyObject(), nullptr);
    }
}

TEST_F(KyObjectToQVariantConverterTest, KnowsItsOwnBindingsOnly) {
    QmlTestLamp lamp;
    const std::unique_ptr<KyObjectQmlBinding> foreign(KyObjectQmlBinding::create(lamp));
    EXPECT_EQ(mConverter->toKyField(QVariant::fromValue(foreign.get())).toKyObject(), nullptr);
    EXPECT_NE(bind(lamp), foreign.get());
}

TEST_F(KyObjectToQVariantConverterTest, ForgetsAnObjectThatIsDeleted) {
    auto* lamp = new QmlTestLamp;
    QPointer<QObject> binding = bind(*lamp);
    delete lamp;
    EXPECT_EQ(mConverter->getNbBindings(), 0u);
    EXPECT_TRUE(binding);
    EXPECT_EQ(mConverter->toKyField(QVariant::fromValue(binding.data())).toKyObject(), nullptr);
    deleteLater();
    EXPECT_FALSE(binding);
}

TEST_F(KyObjectToQVariantConverterTest, ActsOnTheSecondEndOnly) {
    CountingConverter converter;
    QmlTestLamp lamp;
    const QVariant variant = converter.toQVariant(KyField(&lamp));
    for (int kind = 0; kind < eNbObjectModificationTypes; ++kind)
        if (kind != eObjectEnded)
            converter.objectModifiedSlot(&lamp, static_cast<KyObjectModificationType>(kind), "Label", 0);
    EXPECT_EQ(converter.toQVariant(KyField(&lamp)), variant);
    converter.objectModifiedSlot(&lamp, eObjectEnded, "", 0);
    EXPECT_EQ(converter.getNbBindings(), 0u);
    EXPECT_EQ(converter.mNbMade, 1);
}

TEST_F(KyObjectToQVariantConverterTest, MakesNoBindingForAnObjectThatHasEnded) {
    auto lamp = std::make_unique<QmlTestLamp>();
    QVariant atTheEnd(5);
    lamp->modifiedSignal().connect([&](KyObject* object, KyObjectModificationType kind, const std::string&, int) {
        if (kind == eObjectEnded)
            atTheEnd = mConverter->toQVariant(KyField(object));
    });
    lamp.reset();
    EXPECT_EQ(atTheEnd.value<QObject*>(), nullptr);
    EXPECT_EQ(mConverter->getNbBindings(), 0u);
}

TEST_F(KyObjectToQVariantConverterTest, ForgetsABindingThatIsDeleted) {
    QmlTestLamp lamp;
    const unsigned nbBefore = lamp.modifiedSignal().getNbConnections();
    for (int round = 0; round < 3; ++round) {
        delete bind(lamp);
        EXPECT_EQ(mConverter->getNbBindings(), 0u);
    }
    EXPECT_EQ(lamp.modifiedSignal().getNbConnections(), nbBefore);
    EXPECT_NE(bind(lamp), nullptr);
}

TEST_F(KyObjectToQVariantConverterTest, ABindingWorksOnWithoutTheRegistration) {
    QmlTestLamp lamp;
    QmlTestLamp other;
    lamp.mPartner = &lamp;
    publish("lamp", lamp);
    publish("mine", other);
    repository().unregisterKyFieldConverter(mConverter.get());
    repository().unregisterQVariantConverter(mConverter.get());
    EXPECT_EQ(evaluate("lamp.Label = 'alone'; lamp.Label"), "alone");
    EXPECT_EQ(evaluate("lamp.Partner"), "null");
    EXPECT_EQ(evaluate("lamp.Partner = mine; lamp.Partner"), "null") << "a binding tells its object all the same";
    EXPECT_EQ(lamp.mPartner, &other);
}

TEST_F(KyObjectToQVariantConverterTest, EndsItsBindingsWithItself) {
    QmlTestLamp lamp;
    auto* brief = new QmlTestLamp;
    QPointer<QObject> binding = bind(lamp);
    QPointer<QObject> ending = bind(*brief);
    publish("lamp", lamp);
    load("QtObject { property var text: lamp ? lamp.Label : 'none' }");
    delete brief;
    repository().unregisterKyFieldConverter(mConverter.get());
    repository().unregisterQVariantConverter(mConverter.get());
    mConverter.reset();
    EXPECT_FALSE(binding);
    EXPECT_FALSE(ending) << "without the event loop";
    EXPECT_EQ(lamp.modifiedSignal().getNbConnections(), 0u);
    lamp.notifyModified("Label");
    EXPECT_EQ(evaluate("lamp.Label"), "undefined");
}

} // namespace
