// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTestFixture.h"

#include <QFile>
#include <QLabel>
#include <QPixmap>
#include <QWidget>

class KyQtFormTest : public KyQtTestFixture {
protected:
    static void write(const QString& name, const QByteArray& text) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    static QByteArray makeForm(const QByteArray& content) {
        return R"(<?xml version="1.0" encoding="UTF-8"?><ui version="4.0"><class>Form</class>)"
               R"(<widget class="QWidget" name="form">)" +
               content + "</widget></ui>";
    }

    static QByteArray makeGridItem(const QByteArray& place) {
        return makeForm("<layout class='QGridLayout'><item " + place + "><widget class='QLabel'/></item></layout>");
    }

    static inline int msNbWarnings = 0;
};

TEST_F(KyQtFormTest, AFormIsBuiltBelowItsParent) {
    QDir().mkdir("forms");
    QPixmap picture(5, 4);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save("forms/p.png"));
    write("forms/a.ui",
          makeForm(R"(<layout class="QVBoxLayout" name="box"><item><widget class="QPushButton" name="go">)"
                   R"(<property name="text"><string>Gö</string></property></widget></item>)"
                   R"(<item><widget class="QLabel" name="picture"><property name="pixmap"><pixmap>p.png</pixmap>)"
                   R"(</property></widget></item></layout>)"));
    KyQtLuaBinding::setDataPath("forms");
    expectRuns("parent = QWidget() form = loadUi('a.ui', parent) top = loadUi('a.ui') go = form:findChild('go') "
               "connect(go, 'toggled(bool)', function() end)");
    expectTexts({{"form:parent() == parent, top:parent(), go:text(), toQPushButton(go) == go", "true, nil, Gö, true"},
                 {"toQVBoxLayout(form:layout()) ~= nil, form:findChild('picture')", "true, QLabel(picture)"}});
    publish("none", nullptr);
    expectRuns("deleteQObject(parent)");
    EXPECT_EQ(eval("go, none"), "QPushButton(deleted), nil");
    expectRuns("top:findChild('picture'):setPixmap('forms/p.png') top:findChild('picture'):setPixmap(QIcon())");
}

TEST_F(KyQtFormTest, NumbersThatAreNoCountsAndLongTablesAreLoaded) {
    write("a.ui", makeForm("<widget class='QTableWidget' name='t'><property name='rowCount'><number>2000</number>"
                           "</property><property name='columnCount'><number>2</number></property>"
                           "<attribute name='horizontalHeaderMinimumSectionSize'><number>-1</number></attribute>"
                           "<attribute name='verticalHeaderDefaultSectionSize'><number>1200</number></attribute>"
                           "<item row='1999' column='1'/></widget>"));
    expectRuns("form = loadUi('a.ui', nil) form:setProperty('rowCount', 5000)");
    EXPECT_EQ(eval("form:findChild('t'):property('rowCount')"), "2000");
}

TEST_F(KyQtFormTest, BrokenFormsAreReported) {
    const QByteArray good = makeForm(R"(<widget class="Nonsense" name="x"/><widget class="QLabel" name="l"/>)");
    QByteArray deep;
    for (int i = 0; i < 100000; ++i)
        deep += R"(<widget class="QWidget" name="d">)";
    const std::pair<QByteArray, const char*> rows[] = {
        {"", "loadUi : a.ui : "},
        {"<ui", "loadUi : a.ui : 1: "},
        {"<html/>", "loadUi : a.ui : "},
        {QByteArray("\0\1\2", 3), "loadUi : a.ui : "},
        {good.left(good.size() - 8), "loadUi : a.ui : 1: "},
        {R"(<ui version="4.0"><widget class="Nonsense" name="x"/></ui>)", "unknown widget Nonsense"},
        {"<ui>" + deep, "nested too deeply"},
        {makeGridItem("row='-1'"), "-1 rows or columns are out of range"},
        {makeGridItem("row='0' column='99999999'"), "out of range"},
        {makeGridItem("row='0' rowspan='0'"), "out of range"},
        {makeForm("<widget class='QTableWidget'><property name='rowCount'><number>2147483648</number></property>"
                  "</widget>"),
         "2147483648 rows or columns are out of range"},
    };
    for (const auto& [text, error] : rows) {
        write("a.ui", text);
        expectOutput({{"form = loadUi('a.ui', nil)", error}});
        EXPECT_EQ(eval("form"), "nil");
    }
    expectOutput({{"form = loadUi('none.ui', nil)", "loadUi : none.ui : "}, {"loadUi('', nil)", "loadUi : "}});
    write("a.ui", good);
    expectOutput({{"form = loadUi('a.ui', nil)", "unknown widget Nonsense"}});
    EXPECT_EQ(eval("form, form:findChild('l')"), "QWidget(form), QLabel(l)");
    for (int size = 0; size < good.size(); ++size) {
        write("a.ui", good.left(size));
        EXPECT_NE(run("assert(loadUi('a.ui') == nil)"), "") << size;
        EXPECT_EQ(msOutput.find("assertion"), std::string::npos) << size;
    }
}

TEST_F(KyQtFormTest, WhatIsLeftOutIsAWarningSaidOnce) {
    KyScriptEngine::setPrintCallback([](const std::string& message) {
        msOutput += message;
        msNbWarnings += KyQtLuaBinding::isWarning() ? 1 : 1000;
    });
    const QByteArray buddy = "<property name='buddy'><cstring>none</cstring></property>";
    const std::pair<QByteArray, const char*> rows[] = {
        {"<widget class='QScrollArea'><widget class='QWidget'><widget class='QLabel'>" + buddy +
             "</widget></widget><widget class='QWidget' name='second'/></widget>",
         "no place for widget second"},
        {"<widget class='MyThing' name='x'/>", "MyThing"},
        {"<layout class='QVBoxLayout'><item><widget class='MyThing' name='x'/></item></layout>", "MyThing"},
        {"<layout class='QVBoxLayout'><item><layout class='Nonsense'/></item></layout>", "Nonsense"},
        {"<layout class='QGridLayout' rowstretch='x'><item row='0' column='0'><widget class='QLabel'/></item></layout>",
         "loadUi : a.ui : "},
    };
    for (const auto& [content, report] : rows) {
        write("a.ui", makeForm(content));
        msNbWarnings = 0;
        expectOutput({{"form = loadUi('a.ui')", report}});
        EXPECT_EQ(eval("form"), "QWidget(form)");
        EXPECT_EQ(msNbWarnings, 1) << msOutput;
        expectRuns("form:show() deleteQObject(form)");
    }
}
