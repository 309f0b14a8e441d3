// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyReportsFixture.h"
#include "KyStyleParameters.h"

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include "KyColor.h"
#include "KyType.h"
#include "KyURL.h"
#include "KyVec3.h"

#include <QEvent>
#include <QLabel>

#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace {

/// The default parameters, made anew for every case.
class KyStyleParametersTest : public KyReportsFixture {
protected:
    KyStyleParametersTest() { KyStyleParameters::initializeClass(); }
    ~KyStyleParametersTest() override { KyStyleParameters::finalizeClass(); }

    static KyStyleParameters& style() { return KyStyleParameters::get(); }
};

using KyStyleWidgetsTest = KyStyleParametersTest;

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

/// Runs code when it gets a new style, which only widgets that have been polished are told.
class Restless : public QWidget {
public:
    std::function<void()> onStyle;

protected:
    void changeEvent(QEvent* event) override {
        QWidget::changeEvent(event);
        if (event->type() == QEvent::StyleChange && onStyle)
            std::exchange(onStyle, nullptr)();
    }
};

QColor backgroundOf(QWidget& widget) {
    widget.ensurePolished();
    return widget.palette().color(QPalette::Window);
}

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
        {KyField(KyURL("http://host/a.png")), "url(\"http://host/a.png\")"}};
    for (const auto& [value, expected] : cases) {
        ASSERT_TRUE(style().setParameter("value", value)) << expected;
        EXPECT_EQ(style().resolve("a: @value;"), std::string("a: ") + expected + ";");
        EXPECT_EQ(style().getParameter("value"), value);
    }
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyStyleParametersTest, PlaceholdersAreReplacedAndAnUnknownNameReportedOnceStays) {
    style().setParameter("a", KyField("A"));
    style().setParameter("ab", KyField("AB"));
    style().setParameter("_1", KyField("ONE"));
    const std::pair<const char*, const char*> cases[] = {
        {"@a", "A"},    {"@a@ab", "AAB"}, {"@a-b", "A-b"}, {"@_1", "ONE"}, {"@@", "@"},
        {"@@@a", "@A"}, {"@", "@"},       {"@ a", "@ a"},  {"x@", "x@"},   {"@a\xC3\xA9", "A\xC3\xA9"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(style().resolve(text), expected) << text;
    EXPECT_TRUE(msReports.empty());
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
    const std::pair<std::string, KyField> cases[] = {{"1a", KyField(1)},
                                                     {"a-b", KyField(1)},
                                                     {"\xC3\xA9", KyField(1)},
                                                     {std::string("a\0b", 3), KyField(1)},
                                                     {"a", KyField()},
                                                     {"a", KyField(cNoNumber)},
                                                     {"a", KyField(KyColor(0.0f, cInfinite, 0.0f))},
                                                     {"a", KyField(KyVec3d(1, 2, 3))},
                                                     {"a", KyField(static_cast<KyObject*>(nullptr))}};
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

TEST_F(KyStyleParametersTest, ACloneHasItsOwnParametersAndTheDefaultStaysTheDefault) {
    style().setParameter("a", KyField(1));
    const std::unique_ptr<KyObject> object(style().clone());
    KyStyleParameters* copy = KyStyleParameters::cast(object.get());
    ASSERT_NE(copy, nullptr);
    copy->setParameter("a", KyField(2));
    EXPECT_EQ(style().resolve("@a") + copy->resolve("@a"), "12");
    EXPECT_EQ(KyStyleParameters::find(), &style());
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

TEST_F(KyStyleWidgetsTest, QtReadsTheColoursAsTheyWereMeant) {
    for (const int alpha : {0, 1, 2, 128, 254, 255}) {
        QLabel label;
        style().setParameter("back", KyField(KyColor(1.0f, 0.5f, 0.0f, static_cast<float>(alpha) / 255.0f)));
        style().apply(label, "QLabel { background-color: @back }");
        EXPECT_EQ(backgroundOf(label), QColor(255, 128, 0, alpha)) << label.styleSheet().toStdString();
    }
}

TEST_F(KyStyleWidgetsTest, AWidgetFollowsTheParametersThatItShowsAndNoOthers) {
    QLabel label;
    const char* const text = "QLabel { background-color: @back }";
    style().setParameter("back", KyField(KyColor("#ff0000")));
    style().apply(label, text);
    EXPECT_EQ(backgroundOf(label), QColor(255, 0, 0));
    label.setStyleSheet("QLabel { margin: 9 }");
    style().setParameter("other", KyField(1));
    EXPECT_EQ(label.styleSheet(), "QLabel { margin: 9 }");
    style().setParameter("back", KyField(KyColor("#0000ff")));
    EXPECT_EQ(backgroundOf(label), QColor(0, 0, 255));
    EXPECT_EQ(style().getTemplate(label), text);
    style().removeParameter("back");
    EXPECT_EQ(label.styleSheet(), text);
}

TEST_F(KyStyleWidgetsTest, ANewTemplateTakesThePlaceOfTheOldOneAndAReleasedWidgetKeepsItsStyle) {
    QLabel label;
    auto ended = std::make_unique<QLabel>();
    style().apply(*ended, "QLabel { margin: @a }");
    style().apply(label, "QLabel { margin: @a }");
    EXPECT_EQ(msReports.size(), 1u) << "the parameter comes after its template";
    style().apply(label, "QLabel { font-family: @a }");
    EXPECT_EQ(style().getNbWidgets(), 2u);
    ended.reset();
    EXPECT_EQ(style().getNbWidgets(), 1u);
    style().setParameter("a", KyField("\xC3\xA9"));
    EXPECT_EQ(label.styleSheet(), QString::fromUtf8("QLabel { font-family: \xC3\xA9 }"));
    EXPECT_TRUE(style().release(label));
    EXPECT_FALSE(style().release(label));
    style().setParameter("a", KyField(2));
    EXPECT_EQ(label.styleSheet(), QString::fromUtf8("QLabel { font-family: \xC3\xA9 }"));
    EXPECT_EQ(style().getTemplate(label), "");
}

TEST_F(KyStyleWidgetsTest, AWidgetMayEndOthersAndChangeOrEndTheParametersWhileItIsStyled) {
    Restless restless;
    auto victim = std::make_unique<QLabel>();
    QLabel last;
    for (QWidget* widget :
         {static_cast<QWidget*>(&restless), static_cast<QWidget*>(victim.get()), static_cast<QWidget*>(&last)})
        style().apply(*widget, "QWidget { margin: @a }");
    restless.ensurePolished();
    restless.onStyle = [&] { victim.reset(); };
    style().setParameter("a", KyField(2));
    EXPECT_EQ(victim, nullptr);
    EXPECT_EQ(last.styleSheet(), "QWidget { margin: 2 }");
    restless.onStyle = [] { style().setParameter("a", KyField(4)); };
    style().setParameter("a", KyField(3));
    EXPECT_EQ(restless.styleSheet(), "QWidget { margin: 4 }");
    EXPECT_EQ(last.styleSheet(), "QWidget { margin: 4 }");
    restless.onStyle = [] { style().destroy(); };
    style().setParameter("a", KyField(5));
    EXPECT_EQ(KyStyleParameters::find(), nullptr);
    EXPECT_EQ(last.styleSheet(), "QWidget { margin: 4 }");
}

} // namespace
