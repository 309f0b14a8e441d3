// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStyleParametersFixture.h"

#include "KyColor.h"

#include <QEvent>
#include <QLabel>

#include <functional>
#include <memory>
#include <utility>

namespace {

using KyStyleWidgetsTest = KyStyleParametersFixture;

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

TEST_F(KyStyleWidgetsTest, QtReadsTheColoursAsTheyWereMeant) {
    for (const int alpha : {0, 1, 2, 128, 254, 255}) {
        QLabel label;
        style().setParameter("back", KyField(KyColor(1.0f, 0.5f, 0.0f, static_cast<float>(alpha) / 255.0f)));
        style().apply(label, "QLabel { background-color: @back }");
        EXPECT_EQ(backgroundOf(label), QColor(255, 128, 0, alpha)) << label.styleSheet().toStdString();
    }
}

TEST_F(KyStyleWidgetsTest, AWidgetFollowsItsParameters) {
    QLabel label;
    style().setParameter("back", KyField(KyColor("#ff0000")));
    style().apply(label, "QLabel { background-color: @back }");
    EXPECT_EQ(backgroundOf(label), QColor(255, 0, 0));
    style().setParameter("back", KyField(KyColor("#0000ff")));
    EXPECT_EQ(backgroundOf(label), QColor(0, 0, 255));
    EXPECT_EQ(style().getTemplate(label), "QLabel { background-color: @back }");
    style().removeParameter("back");
    EXPECT_EQ(label.styleSheet(), "QLabel { background-color: @back }");
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

TEST_F(KyStyleWidgetsTest, OnlyWidgetsThatShowTheParameterGetANewSheet) {
    QLabel label;
    style().setParameter("a", KyField(1));
    style().apply(label, "QLabel { margin: @a }");
    label.setStyleSheet("QLabel { margin: 9 }");
    style().setParameter("b", KyField(1));
    EXPECT_EQ(label.styleSheet(), "QLabel { margin: 9 }");
    style().setParameter("a", KyField(2));
    EXPECT_EQ(label.styleSheet(), "QLabel { margin: 2 }");
}

TEST_F(KyStyleWidgetsTest, AWidgetMayEndOthersWhileItIsStyled) {
    Restless restless;
    auto victim = std::make_unique<QLabel>();
    QLabel last;
    style().apply(restless, "Restless { margin: @a }");
    style().apply(*victim, "QLabel { margin: @a }");
    style().apply(last, "QLabel { margin: @a }");
    restless.ensurePolished();
    restless.onStyle = [&] { victim.reset(); };
    style().setParameter("a", KyField(3));
    EXPECT_EQ(victim, nullptr);
    EXPECT_EQ(last.styleSheet(), "QLabel { margin: 3 }");
}

TEST_F(KyStyleWidgetsTest, AWidgetMayChangeOrEndTheParametersWhileItIsStyled) {
    Restless restless;
    QLabel last;
    style().apply(restless, "QWidget { margin: @a }");
    style().apply(last, "QLabel { margin: @a }");
    restless.ensurePolished();
    restless.onStyle = [] { style().setParameter("a", KyField(4)); };
    style().setParameter("a", KyField(3));
    EXPECT_EQ(restless.styleSheet(), "QWidget { margin: 4 }");
    EXPECT_EQ(last.styleSheet(), "QLabel { margin: 4 }");
    restless.onStyle = [] { style().destroy(); };
    style().setParameter("a", KyField(5));
    EXPECT_EQ(KyStyleParameters::find(), nullptr);
    EXPECT_EQ(last.styleSheet(), "QLabel { margin: 4 }");
}

} // namespace
