// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DScene.h"
#include "Ky2DStyle.h"
#include "Ky2DText.h"

#include <QGraphicsSimpleTextItem>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

std::string getShownText(const Ky2DText& text) {
    Ky2DNode::applyModification();
    return dynamic_cast<QGraphicsSimpleTextItem*>(text.getQGraphicsItem())->text().toStdString();
}

} // namespace

TEST(Ky2DText, WhiteSpaceIsHandledByMode) {
    using Row = std::tuple<int, std::string, std::string>;
    const Row rows[] = {{0, " a\r\n\tb  ", " a\r\n\tb  "},
                        {1, "  \t ", ""},
                        {1, " a \t b ", "a b"},
                        {1, "a\r\nb\nc\rd", "abcd"},
                        {1, "a \n b", "a b"},
                        {2, "a\nb\rc", "a b c"},
                        {2, "  a\tb ", "  a\tb "},
                        {2, "a\r\nb", "a  b"},
                        {3, "a\n b ", "a\n b "},
                        {1, std::string("a\0 b", 4), std::string("a\0 b", 4)},
                        {1, "\xe9 \xa0 b", "\xe9 \xa0 b"}};
    const std::unique_ptr<Ky2DText> text(Ky2DText::create());
    for (const auto& [mode, given, expected] : rows) {
        text->setWhiteSpaceHandling(mode);
        text->setText(given);
        EXPECT_EQ(expected, text->getWhiteSpaceHandledText()) << mode << " " << given;
    }
    text->setWhiteSpaceHandling(Ky2DText::eWhiteSpaceDefault);
    text->setText(" shown \n text ");
    EXPECT_EQ("shown text", getShownText(*text));
    text->setText("\xe9t\xe9");
    EXPECT_EQ("\xc3\xa9t\xc3\xa9", getShownText(*text));
}

TEST(Ky2DText, AnchorsShiftByTheSizeThatTheTextHasAfterTheUpdate) {
    const std::tuple<int, int, double, double> rows[] = {{eStart, 0, 0.0, 0.0},     {eMiddle, eTop, 0.5, 0.0},
                                                         {eEnd, eCenter, 1.0, 0.5}, {eStart, eLine, 0.0, 0.815},
                                                         {eEnd, eBottom, 1.0, 1.0}, {9, 9, 0.0, 0.0}};
    for (const auto& [anchor, verticalAnchor, widthPart, heightPart] : rows) {
        const std::unique_ptr<Ky2DText> text(Ky2DText::create());
        text->setText("A caption");
        text->setX(100);
        text->setY(50);
        text->setQtOffset(KyVec2d(3, 4));
        text->editStyle()->setTextAnchor(static_cast<KyTextAnchor>(anchor));
        text->editStyle()->setTextVerticalAnchor(static_cast<KyTextVerticalAnchor>(verticalAnchor));
        Ky2DNode::applyModification();
        const auto expectPlace = [&](double x, double y) {
            const QGraphicsItem* item = text->getQGraphicsItem();
            const QRectF bound = item->boundingRect();
            const QPointF place = item->mapToScene(QPointF());
            EXPECT_NEAR(x - widthPart * bound.width(), place.x(), 1e-9) << anchor;
            EXPECT_NEAR(y - heightPart * bound.height(), place.y(), 1e-9) << verticalAnchor;
            EXPECT_EQ(QPointF(), item->pos());
        };
        expectPlace(103, 54);
        text->setText("Another, much longer caption");
        Ky2DNode::applyModification();
        expectPlace(103, 54);
        text->editStyle()->setFontSize(40);
        Ky2DNode::applyModification();
        expectPlace(103, 54);
    }
}

TEST(Ky2DText, ARotatedTextAndItsCopyTurnAboutTheNodesOrigin) {
    const std::unique_ptr<Ky2DText> text(Ky2DText::create());
    text->setText("x");
    text->setX(10);
    text->setRotation(90);
    text->setTranslation(5, 5);
    text->setZValue(7);
    text->setVisible(false);
    const std::unique_ptr<Ky2DText> copy(text->clone());
    Ky2DNode::applyModification();
    // A position that is no number leaves the item where it was.
    copy->setX(std::numeric_limits<double>::quiet_NaN());
    Ky2DNode::applyModification();
    for (const Ky2DText* each : {text.get(), copy.get()}) {
        const QPointF corner = each->getQGraphicsItem()->mapToScene(QPointF());
        EXPECT_NEAR(5, corner.x(), 1e-9);
        EXPECT_NEAR(15, corner.y(), 1e-9);
        EXPECT_EQ(7.0, each->getQGraphicsItem()->zValue());
        EXPECT_FALSE(each->getQGraphicsItem()->isVisible());
    }
}
