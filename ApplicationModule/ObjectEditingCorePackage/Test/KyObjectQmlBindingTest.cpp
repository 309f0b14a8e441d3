// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFixture.h"

#include <QFile>
#include <QMetaProperty>
#include <QPointer>

namespace {

class KyObjectQmlBindingTest : public KyQmlFixture {
protected:
    void SetUp() override {
        KyQmlFixture::SetUp();
        mLamp.mBulb = &mBulb;
        publish("lamp", mLamp);
        publish("spot", *KyObjectQmlBinding::create(mSpot, mConverter.get()));
        publish("kit", *KyObjectQmlBinding::create(mKit, mConverter.get()));
    }
    using KyQmlFixture::publish;
    void publish(const QString& name, QObject& object) { KyQmlFixture::publish(name, &object, mEngine); }

    QmlTestLamp mBulb;
    QmlTestLamp mLamp;
    QmlTestSpot mSpot;
    QmlTestKit mKit;
};

struct Expression {
    const char* script;
    const char* result;
};

TEST_F(KyObjectQmlBindingTest, ReadsWritesAndCallsFromJavaScript) {
    const Expression cExpressions[] = {
        {"lamp.Power", "1"},
        {"lamp.power = 2.5; lamp.Power", "2.5"},
        {"lamp.Power = '3.25'; lamp.power", "3.25"},
        {"lamp.Count = 7; lamp.Count + 1", "8"},
        {"lamp.Count = 2.9; lamp.Count", "2"},
        {"lamp.Big", "5000000000"},
        {"lamp.Big = 6000000000; lamp.Big", "6000000000"},
        {"lamp.Label = 'hall'; lamp.Label + lamp.label", "hallhall"},
        {"lamp.Label = ''; lamp.Label.length", "0"},
        {"lamp.Label = 5; typeof lamp.Label + lamp.Label", "string5"},
        {"lamp.On = true; lamp.On", "true"},
        {"lamp.Mode", "1"},
        {"lamp.Mode = 2; lamp.Mode", "2"},
        {"lamp.Mode = 'Off'; lamp.Mode", "0"},
        {"lamp.Tint.toString()", "#ff0000"},
        {"lamp.Tint = '#00ff00'; lamp.Tint.toString()", "#00ff00"},
        {"lamp.Source.toString()", "a/b.png"},
        {"lamp.Source = 'c/d.png'; lamp.Source.toString()", "c/d.png"},
        {"lamp.Center = Qt.point(3, 4); lamp.Center.y", "4"},
        {"lamp.Center = Qt.point(0, 0); lamp.Center.y", "0"},
        {"lamp.Center.x = 5; lamp.Center.x + lamp.Center.y", "5"},
        {"lamp.Position", "1 2 3"},
        {"lamp.Position = '4 5 6'; lamp.Position", "4 5 6"},
        {"lamp.Born = new Date(2021, 2, 1); lamp.Born.getFullYear()", "2021"},
        {"lamp.Fixed", "42"},
        {"lamp.Shade + ',' + lamp.shade", "1,2"},
        {"lamp['odd name']", "3"},
        {"lamp.Nothing", "undefined"},
        {"lamp.Partner", "null"},
        {"lamp.Partner = lamp; lamp.Partner === lamp", "true"},
        {"lamp.Partner = null; lamp.Partner", "null"},
        {"lamp.bulb.Power", "1"},
        {"lamp.bulb === lamp.bulb", "true"},
        {"lamp.Friends = [lamp, 5, 'x', [1, 2]]; lamp.Friends[0] === lamp", "true"},
        {"lamp.Friends[3][1] + lamp.Friends.length", "6"},
        {"lamp.Power = 1; lamp.add(2, 3)", "6"},
        {"lamp.describe(1)", "number"},
        {"lamp.describe('1')", "text"},
        {"lamp.describe(lamp)", "lamp"},
        {"lamp.describe(spot)", "lamp"},
        {"lamp.describe(null)", "no lamp"},
        {"lamp.join(['x', 'y'])", "x;y;"},
        {"lamp.place('7 8 9')", "7 8 9"},
        {"lamp.getPowers()[1]", "2"},
        {"lamp.getPartner()", "null"},
        {"lamp.sum(1, 2)", "3"},
        {"lamp.breakDown ? 'callable' : ''", "callable"},
        {"spot.Angle + spot.Power", "31"},
        {"spot.add(4)", "4"},
        {"spot.Sum + spot.sum(1, 2)", "11"},
        {"kit.Kind + kit.kind", "kitkit"},
        {"kit.twice(4)", "8"},
    };
    for (const auto& [script, result] : cExpressions)
        EXPECT_EQ(evaluate(script), result) << script;
    EXPECT_TRUE(msReports.empty()) << msReports.front();
    EXPECT_TRUE(msWarnings.empty()) << msWarnings.front();
}

TEST_F(KyObjectQmlBindingTest, RefusesWithAnErrorAndLeavesTheObject) {
    const Expression cExpressions[] = {
        {"lamp.Power = 'much'", "Error: Cannot assign QString to double"},
        {"lamp.Power = undefined", "Error: Cannot assign [undefined] to double"},
        {"lamp.Count = 5000000000", "Error: QmlTestLamp.Count does not take \"5e+09\"."},
        {"lamp.Count = 'many'", "Error: QmlTestLamp.Count does not take \"many\"."},
        {"lamp.Count = undefined", "Error: QmlTestLamp.Count does not take nothing."},
        {"lamp.Count = lamp", "Error: QmlTestLamp.Count does not take a value of type QObject*."},
        {"lamp.Count = {a: 1}", "Error: QmlTestLamp.Count does not take a value of type QVariantMap."},
        {"lamp.On = 'perhaps'", "Error: QmlTestLamp.On does not take \"perhaps\"."},
        {"lamp.Mode = 'Dark'", "Error: QmlTestLamp.Mode does not take \"Dark\"."},
        {"lamp.Position = '1 2'", "Error: QmlTestLamp.Position does not take \"1 2\"."},
        {"lamp.Partner = kit", "Error: QmlTestLamp.Partner does not take a value of type QObject*."},
        {"lamp.Partner = lamp.Tags", "Error: QmlTestLamp.Partner does not take a value of type QObject*."},
        {"lamp.Partner = 5", "Error: Cannot assign int to QObject*"},
        {"lamp.Friends = [lamp.Tags]", "Error: QmlTestLamp.Friends does not take a value of type QVariantList."},
        {"lamp.Refusing = 5", "Error: QmlTestLamp.Refusing does not take \"5\"."},
        {"lamp.Failing", "Error: QmlTestLamp.Failing: lamp is broken"},
        {"'use strict'; lamp.Fixed = 5", "TypeError: Cannot assign to read-only property \"Fixed\""},
        {"'use strict'; lamp.Tags = []", "TypeError: Cannot assign to read-only property \"Tags\""},
        {"lamp.add(1)", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.add()", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.add(1, 2, 3)", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.add(1, 2, 3, 4, 5)", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.add(1, 'x')", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.breakDown()", "Error: QmlTestLamp.breakDown: no light"},
        {"spot.add(1, 2)", "Error: QmlTestSpot.add: the arguments do not fit add(Double)."},
        {"kit.twice(1, 2)", "Error: QmlTestKit.twice: the arguments do not fit twice(Double)."},
        {"lamp.destroy()", "Error: Invalid attempt to destroy() an indestructible object"},
    };
    mLamp.mPartner = &mSpot;
    for (const auto& [script, error] : cExpressions)
        EXPECT_EQ(evaluate(script), error) << script;
    EXPECT_EQ(mLamp.mPower, 1);
    EXPECT_EQ(mLamp.mCount, 0);
    EXPECT_EQ(mLamp.mMode, 1);
    EXPECT_EQ(mLamp.mPartner, &mSpot);
    EXPECT_TRUE(mLamp.mFriends.empty());
    EXPECT_EQ(evaluate("try { lamp.add() } catch (error) { 'caught' }"), "caught");
    EXPECT_TRUE(msReports.empty()) << msReports.front();
}

TEST_F(KyObjectQmlBindingTest, ReportsWhatFailsWithoutAScript) {
    EXPECT_TRUE(bind(mLamp)->setProperty("Power", 4.0));
    EXPECT_EQ(mLamp.mPower, 4);
    bind(mLamp)->setProperty("Count", "many");
    EXPECT_EQ(msReports, std::vector<std::string>{"QmlTestLamp.Count does not take \"many\"."});
    EXPECT_EQ(evaluate("1 + 1"), "2") << "no error waits in the engine";
}

TEST_F(KyObjectQmlBindingTest, BindingsFollowBothWays) {
    load("QtObject { property string text: lamp.Label + '/' + lamp.label; property int heard: 0; property int counts: "
         "0\n"
         "  function rename() { lamp.Label = 'renamed' }\n"
         "  property var listener: Connections { target: lamp\n"
         "    function onLabelChanged() { ++heard } function onCountChanged() { ++counts } } }");
    EXPECT_EQ(property("text"), "lamp/lamp");
    mLamp.getAttribute("Label")->setValue(mLamp, KyField("hall"));
    EXPECT_EQ(property("text"), "hall/hall");
    QMetaObject::invokeMethod(mRoot.get(), "rename");
    EXPECT_EQ(property("text"), "renamed/renamed");
    EXPECT_EQ(mLamp.mLabel, "renamed");
    EXPECT_EQ(property("heard"), "2") << "one for each change";
    EXPECT_EQ(property("counts"), "0");
    mLamp.notifyModified("Unknown");
    mLamp.notifyModified("");
    EXPECT_EQ(property("heard"), "3") << "a change without a name concerns all";
    EXPECT_EQ(property("counts"), "1");
    EXPECT_TRUE(msWarnings.empty()) << msWarnings.front();
}

TEST_F(KyObjectQmlBindingTest, WritesThroughABindingElement) {
    load("QtObject { property string source: 'first'\n"
         "  property var writer: Binding { target: lamp; property: 'Label'; value: source }\n"
         "  property var counter: Binding { target: lamp; property: 'Count'; value: source.length } }");
    EXPECT_EQ(mLamp.mLabel, "first");
    mRoot->setProperty("source", "second");
    EXPECT_EQ(mLamp.mLabel, "second");
    EXPECT_EQ(mLamp.mCount, 6);
}

TEST_F(KyObjectQmlBindingTest, SharesAMetaObjectWithinAClass) {
    QmlTestLamp other;
    EXPECT_EQ(bind(other)->metaObject(), bind(mLamp)->metaObject());
    EXPECT_STREQ(bind(other)->metaObject()->className(), "QmlTestLamp");
    EXPECT_NE(qobject_cast<KyObjectQmlBinding*>(bind(other)), nullptr);
    const QMetaObject* before = bind(mLamp)->metaObject();
    QmlTestSpot::finalizeType();
    QmlTestLamp::finalizeType();
    QmlTestLamp::initializeType();
    QmlTestSpot::initializeType();
    QmlTestLamp third;
    EXPECT_EQ(bind(third)->metaObject(), before) << "what QML keeps by address stays right";
    EXPECT_EQ(evaluate("lamp.Power"), "1");
}

TEST_F(KyObjectQmlBindingTest, TellsQtTheTypesOfItsProperties) {
    struct Row {
        const char* name;
        const char* type;
        bool isWritable;
    };
    const Row cRows[] = {
        {"Power", "double", true},     {"power", "double", true},   {"Count", "QVariant", true},
        {"Label", "QString", true},    {"Tint", "QColor", true},    {"Center", "QPointF", true},
        {"Born", "QDate", true},       {"Fixed", "double", false},  {"Position", "QVariant", true},
        {"Partner", "QObject*", true}, {"Tags", "QObject*", false}, {"bulb", "QObject*", false},
        {"Friends", "QVariant", true},
    };
    const QMetaObject& meta = *bind(mLamp)->metaObject();
    for (const auto& [name, type, isWritable] : cRows) {
        const QMetaProperty property = meta.property(meta.indexOfProperty(name));
        EXPECT_STREQ(property.typeName(), type) << name;
        EXPECT_EQ(property.isWritable(), isWritable) << name;
        EXPECT_TRUE(property.hasNotifySignal()) << name;
    }
    EXPECT_EQ(bind(mLamp)->property("Label").toString(), "lamp");
    EXPECT_EQ(bind(mLamp)->property("Count").toInt(), 0);
}

TEST_F(KyObjectQmlBindingTest, DoesWhatTheDocumentationShows) {
    QFile file(KY_TEST_DATA_DIR "/../../../docs/qml.md");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QString example = text.section("```qml\n", 1, 1).section("```", 0, 0);
    load(example.toUtf8().constData());
    EXPECT_EQ(property("title"), "hall, 4 tags");
    EXPECT_EQ(property("changes"), "1");
    EXPECT_EQ(mLamp.mPower, 4);
    EXPECT_EQ(mLamp.mTags.back(), "new");
    EXPECT_TRUE(msWarnings.empty()) << msWarnings.front();
}

TEST_F(KyObjectQmlBindingTest, ShowsOwnAttributesAndThoseThatCome) {
    mKit.addAttribute("Speed", KyField(2.5));
    publish("late", *KyObjectQmlBinding::create(mKit, mConverter.get()));
    load("QtObject { property real speed: late.Speed; property int heard: 0\n"
         "  property var listener: Connections { target: late; function onSpeedChanged() { ++heard } } }");
    EXPECT_EQ(evaluate("late.speed = 3; late.Speed"), "3");
    EXPECT_EQ(property("speed"), "3");
    EXPECT_EQ(property("heard"), "1");
    EXPECT_EQ(evaluate("late.Colour"), "undefined");
    for (int i = 0; i < 20; ++i)
        mKit.addAttribute("Late" + std::to_string(i), KyField(i));
    EXPECT_EQ(evaluate("late.Late19 + late.late0"), "19");
    load("QtObject { property int last: late.Late19; property int kinds: 0\n"
         "  property var listener: Connections { target: late; function onKindChanged() { ++kinds } } }");
    EXPECT_EQ(evaluate("late.Late19 = 5; late.twice(late.Late19)"), "10");
    EXPECT_EQ(property("last"), "5");
    EXPECT_EQ(property("kinds"), "0") << "late ones have a notifier of their own";
    mKit.removeAttribute("Late19");
    EXPECT_EQ(evaluate("late.Late19"), "undefined");
    EXPECT_EQ(evaluate("late.Late19 = 7; late.Late19"), "undefined");
    mKit.clearCategory("");
    EXPECT_EQ(evaluate("late.Speed + late.Kind"), "0kit") << "typed ones read as their type's default";
}

TEST_F(KyObjectQmlBindingTest, OutlivesItsObject) {
    auto* brief = new QmlTestLamp;
    QPointer<QObject> binding = bind(*brief);
    publish("brief", *brief);
    load("QtObject { property string text: '' + brief.Label + brief.Count; property var tags: brief.Tags }");
    EXPECT_EQ(property("text"), "lamp0");
    delete brief;
    EXPECT_TRUE(binding) << "deleted later, not while QML is at it";
    EXPECT_EQ(property("text"), "undefined");
    for (const char* script : {"brief.Count", "brief.Tags === null ? undefined : 1", "brief.Partner || undefined"})
        EXPECT_EQ(evaluate(script), "undefined") << script;
    EXPECT_EQ(evaluate("brief.Count = 5; brief.Power = 5; brief.Power"), "0");
    EXPECT_EQ(evaluate("brief.add(1, 2)"), "Error: add: the object is gone.");
    deleteLater();
    EXPECT_FALSE(binding);
    EXPECT_EQ(evaluate("typeof brief"), "object");
    EXPECT_EQ(evaluate("brief.Count"), "undefined");
}

TEST_F(KyObjectQmlBindingTest, SurvivesAMethodThatEndsObjectOrBinding) {
    auto* brief = new QmlTestLamp;
    publish("brief", *brief);
    brief->mHook = [brief] { brief->destroy(); };
    EXPECT_EQ(evaluate("brief.callHook(); brief.Count"), "undefined");
    QPointer<QObject> binding = bind(mLamp);
    mLamp.mHook = [binding] { delete binding.data(); };
    EXPECT_EQ(evaluate("lamp.callHook()"), "undefined");
    EXPECT_FALSE(binding);
    EXPECT_NE(bind(mLamp), nullptr) << "a new one";
}

TEST_F(KyObjectQmlBindingTest, ServesTwoEngines) {
    QQmlEngine second;
    KyQmlFixture::publish("lamp", bind(mLamp), second);
    EXPECT_EQ(second.evaluate("lamp.Label = 'shared'; lamp.describe(lamp)").toString(), "lamp");
    EXPECT_EQ(evaluate("lamp.Label"), "shared");
    second.evaluate("lamp.add()");
    EXPECT_EQ(msReports.size(), 1u) << "the binding is at home in the first engine, which runs nothing";
    EXPECT_EQ(evaluate("'fine'"), "fine");
    EXPECT_EQ(second.evaluate("'fine'").toString(), "fine");
}

TEST_F(KyObjectQmlBindingTest, IsNotCollectedByJavaScript) {
    mLamp.mPartner = &mSpot;
    QPointer<QObject> binding = KyObjectQmlBinding::create(mSpot);
    mEngine.globalObject().setProperty("held", mEngine.newQObject(binding.data()));
    EXPECT_EQ(evaluate("held.Angle"), "30");
    evaluate("held = null");
    mEngine.collectGarbage();
    deleteLater();
    EXPECT_TRUE(binding);
    delete binding.data();
}

} // namespace
