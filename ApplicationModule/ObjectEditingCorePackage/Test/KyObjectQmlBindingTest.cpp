// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFixture.h"

#include <QFile>
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

/// A script and its result.
using Expression = std::pair<const char*, const char*>;

TEST_F(KyObjectQmlBindingTest, ReadsWritesCallsAndRefuses) {
    const Expression cExpressions[] = {
        {"lamp.Share = 3e38; lamp.Share > 2e38", "true"},
        {"lamp.Count = 2.9; lamp.Count", "2"},
        {"lamp.Big = 6000000000; lamp.Big", "6000000000"},
        {"lamp.Label = 'hall'; lamp.Label + lamp.label", "hallhall"},
        {"lamp.Label = ''; lamp.Label.length", "0"},
        {"lamp.Mode = 'Off'; lamp.Mode", "0"},
        {"lamp.Tint = '#00ff00'; lamp.Tint.toString()", "#00ff00"},
        {"lamp.Source = 'c/d.png'; lamp.Source.toString()", "c/d.png"},
        {"lamp.Center.x = 5; lamp.Center.x + lamp.Center.y", "7"},
        {"lamp.Position = '4 5 6'; lamp.Position", "4 5 6"},
        {"[lamp.Shade, lamp.shade, lamp['odd name']].join()", "1,2,3"},
        {"lamp.Partner = lamp; lamp.Partner === lamp", "true"},
        {"lamp.Friends = [lamp, 5, 'x', [1, 2]]; lamp.Friends[0] === lamp && lamp.Friends[3][1]", "2"},
        {"lamp.Power = 1; lamp.add(2, 3)", "6"},
        {"[1, '1', lamp, spot, null].map(function(x) { return lamp.describe(x) }).join()",
         "number,text,lamp,lamp,no lamp"},
        {"[lamp.join(['x', 'y']), lamp.place('7 8 9'), lamp.getPowers()[1]].join()", "x;y;,7 8 9,2"},
        {"[spot.add(4), spot.Sum, spot.sum(1, 2)].join()", "4,8,3"},
        {"lamp.bulb === lamp.bulb && lamp.bulb.Power", "1"},
        {"lamp.Power = ''", "Error: QmlTestLamp.Power does not take a value of type QString."},
        {"lamp.Share = 1e300", "Error: QmlTestLamp.Share does not take \"1e+300\"."},
        {"lamp.Share = '-1e300'", "Error: QmlTestLamp.Share does not take \"-1e300\"."},
        {"lamp.Mode = 'Dark'", "Error: QmlTestLamp.Mode does not take \"Dark\"."},
        {"lamp.Count = 5000000000", "Error: QmlTestLamp.Count does not take \"5e+09\"."},
        {"lamp.Partner = kit", "Error: QmlTestLamp.Partner does not take a value of type QObject*."},
        {"lamp.Refusing = 5", "Error: QmlTestLamp.Refusing does not take \"5\"."},
        {"lamp.Failing", "Error: QmlTestLamp.Failing: lamp is broken"},
        {"'use strict'; lamp.Fixed = 5", "TypeError: Cannot assign to read-only property \"Fixed\""},
        {"lamp.add(1)", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.add(1, 2, 3)", "Error: QmlTestLamp.add: the arguments do not fit add(Double, Double)."},
        {"lamp.breakDown()", "Error: QmlTestLamp.breakDown: no light"},
        {"lamp.destroy()", "Error: Invalid attempt to destroy() an indestructible object"}};
    for (const auto& [script, result] : cExpressions)
        EXPECT_EQ(evaluate(script), result) << script;
    EXPECT_EQ(evaluate("[lamp.Power, lamp.Count, lamp.Mode, lamp.Partner === lamp, lamp.Friends.length].join()"),
              "1,2,0,true,4")
        << "as before what was refused";
    EXPECT_TRUE(msReports.empty()) << msReports.front();
    EXPECT_TRUE(msWarnings.empty()) << msWarnings.front();
}

TEST_F(KyObjectQmlBindingTest, FollowsUnderBothNamesAndReportsWhatFailsWithoutAScript) {
    load("QtObject { property string text: lamp.Label + lamp.label; property int heard: 0; property int counts: 0\n"
         "  property var writer: Binding { target: lamp; property: 'Power'; value: 2 + 2 }\n"
         "  property var listener: Connections { target: lamp\n"
         "    function onLabelChanged() { ++heard } function onCountChanged() { ++counts } } }");
    EXPECT_EQ(mLamp.mPower, 4);
    bind(mLamp)->setProperty("Count", "many");
    EXPECT_EQ(msReports, std::vector<std::string>{"QmlTestLamp.Count does not take \"many\"."});
    EXPECT_EQ(evaluate("lamp.Label = 'hall'"), "hall") << "no error waits in the engine";
    EXPECT_EQ(property("text") + property("heard") + property("counts"), "hallhall10");
    mLamp.notifyModified("");
    EXPECT_EQ(property("heard") + property("counts"), "21") << "a change without a name concerns all";
}

TEST_F(KyObjectQmlBindingTest, SharesAMetaObjectWithinAClass) {
    QmlTestLamp other;
    EXPECT_EQ(bind(other)->metaObject(), bind(mLamp)->metaObject());
    EXPECT_STREQ(bind(other)->metaObject()->className(), "QmlTestLamp");
    EXPECT_NE(qobject_cast<KyObjectQmlBinding*>(bind(other)), nullptr);
    const QMetaObject* before = bind(mLamp)->metaObject();
    QmlTestSpot::finalizeType();
    QmlTestLamp::finalizeType();
    QmlTestLamp third;
    EXPECT_EQ(bind(third)->metaObject(), before) << "what QML keeps by address stays right";
}

TEST_F(KyObjectQmlBindingTest, DoesWhatTheDocumentationShows) {
    QFile file(KY_TEST_DATA_DIR "/../../../docs/qml.md");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QString example = text.section("```qml\n", 1, 1).section("```", 0, 0);
    load(example.toUtf8().constData());
    EXPECT_EQ(property("title") + " " + property("changes"), "hall, 4 tags 1");
    EXPECT_EQ(mLamp.mPower, 4);
    EXPECT_TRUE(msWarnings.empty()) << msWarnings.front();
}

TEST_F(KyObjectQmlBindingTest, ShowsOwnAttributesAndThoseThatCome) {
    mKit.addAttribute("Speed", KyField(2.5));
    publish("late", *KyObjectQmlBinding::create(mKit, mConverter.get()));
    load("QtObject { property real speed: late.Speed; property int heard: 0\n"
         "  property var listener: Connections { target: late; function onSpeedChanged() { ++heard } } }");
    EXPECT_EQ(evaluate("late.speed = 3; late.Colour + late.Speed"), "NaN");
    EXPECT_EQ(property("speed") + property("heard"), "31");
    for (int i = 0; i < 20; ++i)
        mKit.addAttribute("Late" + std::to_string(i), KyField(i));
    load("QtObject { property int last: late.Late19; property int kinds: 0\n"
         "  property var listener: Connections { target: late; function onKindChanged() { ++kinds } } }");
    EXPECT_EQ(evaluate("late.Late19 = 5; late.twice(late.late19)"), "10");
    EXPECT_EQ(property("last") + property("kinds"), "50") << "late ones have a notifier of their own";
    mKit.clearCategory("");
    EXPECT_EQ(evaluate("late.Speed + late.Late19 + late.Kind"), "NaNkit");
    EXPECT_EQ(evaluate("late.Speed = 7"), "Error: QmlTestKit.Speed: the attribute is gone.");
    mKit.addAttribute("Speed", KyField("slow"));
    EXPECT_EQ(evaluate("late.Speed + typeof late.speed"), "slowstring") << "back with another type";
    EXPECT_EQ(evaluate("late.Speed = 'fast'; late.Speed"), "fast");
}

TEST_F(KyObjectQmlBindingTest, OutlivesItsObject) {
    auto* brief = new QmlTestLamp;
    QPointer<QObject> binding = bind(*brief);
    publish("brief", *brief);
    load("QtObject { property string text: '' + brief.Label + brief.Count; property var tags: brief.Tags }");
    delete brief;
    EXPECT_TRUE(binding) << "deleted later, not while QML is at it";
    EXPECT_EQ(property("text"), "undefined");
    EXPECT_EQ(evaluate("brief.Count = 5; brief.Label = 'x'; [brief.Label, brief.Tags, '' + brief.Count].join()"),
              ",,undefined");
    EXPECT_EQ(evaluate("brief.add(1, 2)"), "Error: add: the object is gone.");
    deleteLater();
    EXPECT_FALSE(binding);
}

TEST_F(KyObjectQmlBindingTest, ServesTwoEngines) {
    QQmlEngine second;
    KyQmlFixture::publish("lamp", bind(mLamp), second);
    EXPECT_EQ(second.evaluate("lamp.Label = 'shared'; lamp.describe(lamp)").toString(), "lamp");
    second.evaluate("lamp.add()");
    EXPECT_EQ(msReports.size(), 1u) << "the binding is at home in the first engine, which runs nothing";
    EXPECT_EQ(evaluate("lamp.Label") + second.evaluate("'fine'").toString().toStdString(), "sharedfine");
}

TEST_F(KyObjectQmlBindingTest, IsNotCollectedByJavaScript) {
    const QPointer<QObject> binding = KyObjectQmlBinding::create(mSpot);
    mEngine.globalObject().setProperty("held", mEngine.newQObject(binding.data()));
    evaluate("held = null");
    mEngine.collectGarbage();
    deleteLater();
    EXPECT_TRUE(binding);
    delete binding.data();
}

TEST_F(KyObjectQmlBindingTest, StopsWhenTakingAValueEndsObjectOrBinding) {
    evaluate(
        "var array = ['x', 'y']; Object.defineProperty(array, 0, {get: function() { brief.callHook(); return 1 }})");
    const Expression cExpressions[] = {{"brief.Friends = array", "Error: QmlTestLamp.Friends: the object is gone."},
                                       {"brief.Tags.append(array)", "false"},
                                       {"brief.join(array)", "Error: join: the object is gone."}};
    for (const auto& [script, result] : cExpressions) {
        auto* brief = new QmlTestLamp;
        publish("brief", *bind(*brief));
        brief->mHook = [brief] { brief->destroy(); };
        EXPECT_EQ(evaluate(script), result);
        QmlTestLamp lasting;
        QPointer<QObject> binding = KyObjectQmlBinding::create(lasting);
        publish("brief", *binding);
        lasting.mHook = [binding] { delete binding.data(); };
        evaluate(script);
        EXPECT_FALSE(binding) << script;
        EXPECT_TRUE(lasting.mFriends.empty());
        EXPECT_EQ(lasting.mTags.size(), 3u);
    }
}

TEST_F(KyObjectQmlBindingTest, ShowsTheSameDayInEveryTimeZone) {
    const QByteArray before = qgetenv("TZ");
    for (const char* zone : {"America/New_York", "UTC", "Pacific/Auckland", "America/Sao_Paulo"}) {
        qputenv("TZ", zone);
        QQmlEngine engine;
        KyQmlFixture::publish("lamp", bind(mLamp), engine);
        for (const KyDate& day : {KyDate(2020, 2, 29), KyDate(2018, 11, 4), KyDate(1969, 12, 31)}) {
            mLamp.mBorn = day;
            mLamp.mFriends = {KyField(day)};
            const int shown = engine.evaluate("lamp.Born = lamp.Born; lamp.Born.getDate()").toInt();
            EXPECT_EQ(shown, day.getDay()) << zone;
            EXPECT_EQ(engine.evaluate("lamp.Friends[0].getDate()").toInt(), day.getDay()) << zone;
            EXPECT_EQ(mLamp.mBorn, day) << zone;
        }
        engine.evaluate("lamp.setBorn(new Date(2021, 0, 15))");
        EXPECT_EQ(mLamp.mBorn, KyDate(2021, 1, 15)) << zone;
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}

} // namespace
