// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFixture.h"

#include "KyQtVariant.h"

#include <QPointer>

namespace {

using KyObjectToQVariantConverterTest = KyQmlFixture;

/// Shows what is asked; makes bindings of a class of its own, or throws.
class OwnConverter : public KyObjectToQVariantConverter {
public:
    using KyObjectToQVariantConverter::canConvert;
    using KyObjectToQVariantConverter::objectModifiedSlot;
    struct Binding : KyObjectQmlBinding {
        explicit Binding(KyObject& object)
            : KyObjectQmlBinding(object, nullptr) {}
    };

    bool mIsFailing = false;

protected:
    KyObjectQmlBinding* createBinding(KyObject* object) override {
        if (mIsFailing)
            throw std::runtime_error("no binding");
        return new Binding(*object);
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
    OwnConverter converter;
    QmlTestLamp lamp;
    QmlTestSpot spot;
    KyDynamicObject willing;
    KyDynamicObject unwilling;
    willing.addAttribute("QmlBinding", KyField("1"));
    unwilling.addAttribute("QmlBinding", KyField(0));
    EXPECT_TRUE(converter.canConvert(&lamp) && converter.canConvert(&willing));
    EXPECT_FALSE(converter.canConvert(&spot)) << "the class itself says it, not its parent";
    EXPECT_FALSE(converter.canConvert(nullptr) || converter.canConvert(&unwilling));
}

TEST_F(KyObjectToQVariantConverterTest, GivesNullForWhatMayNotBeConverted) {
    QmlTestSpot spot;
    for (const KyField& field : {KyField(&spot), KyField(static_cast<KyObject*>(nullptr)), KyField(5), KyField()})
        EXPECT_EQ(mConverter->toQVariant(field), QVariant::fromValue<QObject*>(nullptr));
    QObject foreign;
    const std::unique_ptr<KyObjectQmlBinding> other(KyObjectQmlBinding::create(spot));
    for (const QVariant& variant :
         {QVariant(), QVariant(5), QVariant::fromValue<QObject*>(nullptr), QVariant::fromValue(&foreign),
          QVariant::fromValue(&mEngine), QVariant::fromValue(other.get())})
        EXPECT_EQ(mConverter->toKyField(variant), KyField(static_cast<KyObject*>(nullptr)));
}

TEST_F(KyObjectToQVariantConverterTest, ForgetsAnObjectThatIsDeleted) {
    auto* lamp = new QmlTestLamp;
    QPointer<QObject> binding = bind(*lamp);
    const QVariant variant = KyApplication::toQVariant(KyField(lamp));
    QObject* atTheEnd = binding.data();
    lamp->modifiedSignal().connect(
        [&](KyObject* object, KyObjectModificationType, const std::string&, int) { atTheEnd = bind(*object); });
    delete lamp;
    EXPECT_EQ(atTheEnd, nullptr) << "no new one once it has ended";
    EXPECT_EQ(mConverter->getNbBindings(), 0u);
    EXPECT_TRUE(binding);
    EXPECT_EQ(KyApplication::toKyField(variant).toKyObject(), nullptr);
    deleteLater();
    EXPECT_FALSE(binding);
    EXPECT_EQ(KyApplication::toKyField(variant).toKyObject(), nullptr) << "older than its Qt object";
}

TEST_F(KyObjectToQVariantConverterTest, TakesWhatAnotherClassMakesAndActsOnTheSecondEndOnly) {
    OwnConverter converter;
    converter.mIsFailing = true;
    auto lamp = std::make_unique<QmlTestLamp>();
    const KyField field(lamp.get());
    EXPECT_EQ(converter.toQVariant(field).value<QObject*>(), nullptr);
    EXPECT_EQ(msReports, std::vector<std::string>{"QmlTestLamp.toQVariant: no binding"});
    converter.mIsFailing = false;
    const QVariant variant = converter.toQVariant(field);
    for (int kind = 0; kind < eNbObjectModificationTypes; ++kind)
        if (kind != eObjectEnded)
            converter.objectModifiedSlot(lamp.get(), static_cast<KyObjectModificationType>(kind), "Label", 0);
    EXPECT_EQ(converter.toQVariant(field), variant);
    const QPointer<KyObjectQmlBinding> binding = variant.value<KyObjectQmlBinding*>();
    EXPECT_EQ(binding->getObject(), lamp.get());
    lamp.reset();
    EXPECT_EQ(binding->getObject(), nullptr) << "which does not listen itself";
    QmlTestLamp other;
    converter.toQVariant(KyField(&other));
    converter.objectModifiedSlot(&other, eObjectEnded, "", 0);
    EXPECT_EQ(converter.getNbBindings(), 0u);
}

TEST_F(KyObjectToQVariantConverterTest, LeavesABindingThatIsAtWorkToTheEventLoop) {
    QmlTestLamp lamp;
    publish("lamp", lamp);
    const QPointer<QObject> binding = bind(lamp);
    lamp.mHook = [this] { withdraw(); };
    EXPECT_EQ(evaluate("lamp.callHook(); lamp.Count"), "undefined");
    EXPECT_TRUE(binding);
    deleteLater();
    EXPECT_FALSE(binding);
}

TEST_F(KyObjectToQVariantConverterTest, ForgetsABindingThatIsDeletedAndEndsThoseLeftWithItself) {
    QmlTestLamp lamp;
    auto* brief = new QmlTestLamp;
    const unsigned nbBefore = lamp.modifiedSignal().getNbConnections();
    delete bind(lamp);
    EXPECT_EQ(mConverter->getNbBindings(), 0u);
    EXPECT_EQ(lamp.modifiedSignal().getNbConnections(), nbBefore);
    const QPointer<QObject> binding = bind(lamp);
    const QPointer<QObject> ending = bind(*brief);
    EXPECT_TRUE(binding);
    delete brief;
    withdraw();
    EXPECT_FALSE(binding);
    EXPECT_FALSE(ending) << "without the event loop";
    EXPECT_EQ(lamp.modifiedSignal().getNbConnections(), 0u);
}

} // namespace
