// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTestFixture.h"

#include <QFile>
#include <QUrl>
#include <QVariant>
#include <QWidget>

class KyQtValuesTest : public KyQtTestFixture {};

/// The name that hosts' browser widgets have.
class QWebView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QUrl url MEMBER mUrl)

public:
    QUrl mUrl;
};

TEST_F(KyQtValuesTest, TextsAndAddressesAreObjectsToo) {
    expectTexts(
        {{"QString('ä'), QString.fromUtf8('ä'):toUtf8(), QString_toStdString(QString.fromStdString('b'))", "ä, ä, b"},
         {"QString():isEmpty(), QString('a') == QString('a'), QString('a') == 'a'", "true, true, false"},
         {"QString('http://h/p'):toQUrl():path(), QUrl('a b'):toString(), QUrl():isEmpty()", "/p, a b, true"},
         {"QUrl('x') == QUrl('x'), QUrl_toString(QString_toQUrl(QString('y'))), QIcon() == nil", "true, y, false"}});
}

TEST_F(KyQtValuesTest, SettingsComeBackInTheKindOfTheDefault) {
    expectRuns("s = QSettings('a.ini') s:beginGroup('g') s:setValue('t', true) s:setValue('f', false) "
               "s:setValue('n', 2.5) s:setValue('ü', 'Ω;,\"') s:setValue('one', {'x'}) s:setValue('none', {}) "
               "s:setValue('list', {1, {2, 'b'}}) s:setValue('map', {k = 1}) s:setValue('c', Color(1, 0, 0)) "
               "s:endGroup() s:setFileName('b.ini') s = nil collectgarbage() s = QSettings('a.ini')");
    expectTexts(
        {{"s:value('g/t', false), s:value('g/f', true), s:value('g/n', 0), s:value('g/n')", "true, false, 2.5, 2.5"},
         {"s:value('g/ü'), s:value('g/one', {})[1], #s:value('g/none', {1}), s:value('g/list')[2][2]",
          "Ω;,\", x, 0, b"},
         {"s:value('g/map').k, s:value('g/c'), s:value('x'), s:value('x', 7), QSettings_value(s, 'g/t', 1)",
          "1, 1 0 0 1, nil, 7, 1"},
         {"s:value('g/map', {}).k, s:value('g/map', {1}).k, s:value('g/map', {a = 1}).k, s:value('g/n', {a = 7}).a",
          "1, 1, 1, 7"},
         {"QSettings():fileName(), pcall(QSettings().value, QSettings(), 'x')", ", false, QSettings: there is no file"},
         {"s:contains('g/t'), s:contains('t'), s:fileName():match('[^/]*$')", "true, false, a.ini"}});
    expectRuns("s:remove('g/t')");
    EXPECT_EQ(eval("s:contains('g/t')"), "false");
    expectRuns("s:clear() s:endGroup()");
    EXPECT_EQ(eval("s:contains('g/n')"), "false");
    expectOutput({{"s:setValue('', 1)", "the key is empty"},
                  {"s:value('//')", "the key is empty"},
                  {"QSettings('')", "the file name is empty"},
                  {"s:setFileName('')", "the file name is empty"},
                  {"s:setValue('f', print)", "QSettings::setValue : unknown type of value function: function: "},
                  {"s:setValue('f', {QWidget()})", "unknown type of value table: table: "},
                  {"s:setValue('f', {1, x = 2})", "unknown type of value"},
                  {"t = {} t[1] = t s:setValue('f', t)", "unknown type of value"},
                  {"t = {} for i = 1, 30 do t = {t, t} end s:setValue('f', t)",
                   "QSettings::setValue : the value holds more than 100000 values"},
                  {"s:setValue('f', {('x'):rep(10), print})", "unknown type of value table"}});
}

TEST_F(KyQtValuesTest, ValuesSurviveAPropertyOfTheToolkit) {
    QWidget widget;
    publish("w", &widget);
    const std::pair<const char*, int> rows[] = {
        {"true", QMetaType::Bool},
        {"5", QMetaType::Int},
        {"5000000000", QMetaType::LongLong},
        {"0.5", QMetaType::Double},
        {"1e300", QMetaType::Double},
        {"'ä'", QMetaType::QString},
        {"QString('x')", QMetaType::QString},
        {"QUrl('x')", QMetaType::QUrl},
        {"URL('http://h')", QMetaType::QUrl},
        {"Color()", QMetaType::QColor},
        {"Vec2f(1, 2)", QMetaType::QPointF},
        {"Recti(1, 2, 3, 4)", QMetaType::QRectF},
        {"Date(2026, 1, 2)", QMetaType::QDate},
        {"Time(1)", QMetaType::QTime},
        {"w", QMetaType::QObjectStar},
        {"{}", QMetaType::QVariantList},
        {"{a = {1}}", QMetaType::QVariantMap},
        {"Vec3d()", QMetaType::UnknownType},
        {"{[2] = 1}", QMetaType::UnknownType},
        {"coroutine.create(function() end)", QMetaType::UnknownType},
    };
    for (const auto& [expression, type] : rows) {
        widget.setProperty("own", QVariant());
        run("w:setProperty('own', " + std::string(expression) + ")");
        EXPECT_EQ(widget.property("own").userType(), type) << expression;
    }
}

TEST_F(KyQtValuesTest, FilesAndDirectoriesAreInUnicode) {
    for (const char* name : {"Ω.txt", "b.txt", "c.dat"})
        EXPECT_TRUE(QFile(name).open(QIODevice::WriteOnly));
    QDir().mkdir("sub");
    expectTexts(
        {{"table.concat(QDir('.'):entryList('*.txt', QDir.Files), ' ')", "b.txt Ω.txt"},
         {"table.concat(QDir_entryList(QDir('.'), '', QDir.Dirs + QDir.NoDotAndDotDot), ' ')", "sub"},
         {"#QDir():entryList(QDir.Files), QDir('.'):entryList(QDir.Files, 8)[1]:len()", "3, 6"},
         {"#QDir_entryListOld(QDir('.'), '*.dat'), #QDir('none'):entryList(), QDir('a') == QDir('a')", "1, 0, true"},
         {"QFile.copy('Ω.txt', 'd.txt'), QFile.copy('Ω.txt', 'd.txt'), QFile.exists('d.txt')", "true, false, true"},
         {"QFile.rename('d.txt', 'é'), QFile.link('é', 'l'), QFile.remove('Ω.txt'), QFile.remove('')",
          "true, true, true, false"},
         {"QFile.exists('Ω.txt'), QFile.exists('é'), QFile.exists('')", "false, true, false"}});
    const std::pair<const char*, int> filters[] = {
        {"Dirs", QDir::Dirs},         {"AllDirs", QDir::AllDirs},       {"Files", QDir::Files},
        {"Drives", QDir::Drives},     {"NoSymLinks", QDir::NoSymLinks}, {"NoDotAndDotDot", QDir::NoDotAndDotDot},
        {"NoDot", QDir::NoDot},       {"AllEntries", QDir::AllEntries}, {"Readable", QDir::Readable},
        {"Writable", QDir::Writable}, {"Executable", QDir::Executable}, {"Modified", QDir::Modified},
        {"Hidden", QDir::Hidden},     {"System", QDir::System},         {"CaseSensitive", QDir::CaseSensitive},
    };
    for (const auto& [name, value] : filters)
        EXPECT_EQ(eval("QDir." + std::string(name)), std::to_string(value)) << name;
}

TEST_F(KyQtValuesTest, ControlsReportWhatTheyCannotDo) {
    expectRuns("ax = QAxWidget(nil)");
    expectOutput(
        {{"ax:dynamicCall('f', 5)", "QAxWidget::dynamicCall : parameters of the method must be in a table"},
         {"QAxWidget_dynamicCall(ax, 'f', {1, print})", "QAxWidget::dynamicCall : unknown type of parameter 2"}});
#ifndef Q_OS_WIN
    expectOutput({{"result = ax:dynamicCall('f', {1})", "no ActiveX controls"},
                  {"ax:setControl('x')", "no ActiveX controls"},
                  {"result = ax:generateDocumentation()", "no ActiveX controls"}});
    EXPECT_EQ(eval("result, toQAxWidget(ax)"), "nil, nil");
#endif
}

TEST_F(KyQtValuesTest, ABrowserIsKnownByItsName) {
    QWebView view;
    publish("view", &view);
    expectRuns("view:setUrl(QUrl('http://a/')) first = view:url() view:load('http://b/')");
    expectTexts({{"first, view:url(), toQWebView(view) == view", "http://a/, http://b/, true"}});
    expectRuns("none = QWebView(nil)");
    expectOutput({{"none:load('x')", "no browser"}, {"url = none:url()", "no browser"}});
    EXPECT_EQ(eval("url, toQWebView(none)"), "nil, nil");
}

#include "KyQtValuesTest.moc"
