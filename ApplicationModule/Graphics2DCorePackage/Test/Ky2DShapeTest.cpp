// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DEllipse.h"
#include "Ky2DLine.h"
#include "Ky2DPath.h"
#include "Ky2DRaster.h"
#include "Ky2DRect.h"

#include "KyAttributeInterface.h"
#include "KyField.h"
#include "KyType.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

class Ky2DShapeTest : public testing::Test {
protected:
    template <class Item>
    static Item& updated(Ky2DNode& node) {
        node.update();
        return dynamic_cast<Item&>(*node.getQGraphicsItem());
    }
};

void setRect(Ky2DRect& rect, double width, double height, double rx, double ry) {
    rect.setX(20);
    rect.setY(30);
    rect.setWidth(width);
    rect.setHeight(height);
    rect.setRX(rx);
    rect.setRY(ry);
}

struct Corners {
    double width, height, rx, ry;
    const char* peer;
};

constexpr Corners cCorners[] = {
    {120, 80, 0, 0, ""},
    {120, 80, 30, 10, "rx='30' ry='10'"},
    {120, 80, 25, 0, "rx='25' ry='25'"},
    {120, 80, -3, 25, "rx='25' ry='25'"},
    {120, 80, 25, -1, "rx='25' ry='25'"},
    {20, 80, 50, 20, "rx='10' ry='20'"},
    {120, 80, 90, 90, "rx='60' ry='40'"},
    {120, 80, -3, -4, ""},
    {120, 80, cNaN, 5, ""},
};

} // namespace

TEST_F(Ky2DShapeTest, CornersAreRoundedAsInSvg) {
    for (const Corners& corners : cCorners) {
        Ky2DRect rect;
        setRect(rect, corners.width, corners.height, corners.rx, corners.ry);
        const QByteArray size =
            "width='" + QByteArray::number(corners.width) + "' height='" + QByteArray::number(corners.height) + "' ";
        const QImage peer = Ky2DRaster::renderSvg("<rect x='20' y='30' " + size + corners.peer);
        EXPECT_LE(Ky2DRaster::countDifferences(peer, Ky2DRaster::renderNode(rect)), 8)
            << corners.rx << ' ' << corners.ry;
    }
}

TEST_F(Ky2DShapeTest, ARectangleIsFourLinesOrNothing) {
    Ky2DRect rect;
    setRect(rect, 10, 20, 0, 0);
    rect.setQtOffset(KyVec2d(100, 200));
    const QPainterPath path = updated<QGraphicsPathItem>(rect).path();
    ASSERT_EQ(path.elementCount(), 5);
    EXPECT_EQ(path.boundingRect(), QRectF(120, 230, 10, 20));
    for (int i = 1; i < 5; ++i)
        EXPECT_TRUE(path.elementAt(i).isLineTo());
    setRect(rect, 11, 20, 5, 0);
    EXPECT_EQ(updated<QGraphicsPathItem>(rect).path().elementCount(), 17);
    EXPECT_EQ(rect.getRY(), 0);
    constexpr double cEmpty[][2] = {{0, 5}, {5, 0}, {-5, 5}, {5, -5}, {cNaN, 5}, {5, cNaN}};
    for (const auto& [width, height] : cEmpty) {
        setRect(rect, width, height, 3, 3);
        EXPECT_TRUE(updated<QGraphicsPathItem>(rect).path().isEmpty()) << width << ' ' << height;
    }
}

TEST_F(Ky2DShapeTest, AnEllipseLiesAroundItsCentre) {
    Ky2DEllipse ellipse;
    ellipse.setX(10);
    ellipse.setY(20);
    ellipse.setRX(3);
    ellipse.setRY(4);
    ellipse.setQtOffset(KyVec2d(100, 200));
    EXPECT_EQ(updated<QGraphicsEllipseItem>(ellipse).rect(), QRectF(107, 216, 6, 8));
    EXPECT_EQ(updated<QGraphicsEllipseItem>(ellipse).spanAngle(), 5760);
    ellipse.setX(cInfinity);
    EXPECT_EQ(updated<QGraphicsEllipseItem>(ellipse).rect(), QRectF());
}

TEST_F(Ky2DShapeTest, AnglesAreCutToSixteenths) {
    constexpr int cLeast = std::numeric_limits<int>::min(), cMost = std::numeric_limits<int>::max();
    const std::pair<double, int> angles[] = {{22.49, 359}, {-22.49, -359}, {0, 0},           {0.06, 0},
                                             {cNaN, 0},    {1e300, cMost}, {-1e300, cLeast}, {cInfinity, cMost}};
    Ky2DEllipse ellipse;
    for (const auto& [degrees, sixteenths] : angles) {
        ellipse.setSpanAngle(degrees);
        EXPECT_EQ(updated<QGraphicsEllipseItem>(ellipse).spanAngle(), sixteenths) << degrees;
        ellipse.setStartAngle(degrees);
        EXPECT_EQ(updated<QGraphicsEllipseItem>(ellipse).startAngle(), sixteenths) << degrees;
    }
}

TEST_F(Ky2DShapeTest, ALineRunsBetweenItsPoints) {
    Ky2DLine line;
    line.setP1(KyVec2d(1, 2));
    line.setP2(KyVec2d(3, 4));
    line.setQtOffset(KyVec2d(10, 20));
    line.editStyle()->setStrokeMode(eSolidLine);
    line.editStyle()->setStrokeWidth(7);
    EXPECT_EQ(updated<QGraphicsLineItem>(line).line(), QLineF(11, 22, 13, 24));
    EXPECT_EQ(updated<QGraphicsLineItem>(line).pen().widthF(), 7);
    line.setP2(KyVec2d(cNaN, 0));
    EXPECT_EQ(updated<QGraphicsLineItem>(line).line(), QLineF());
}

TEST_F(Ky2DShapeTest, EveryAttributeIsKeptCopiedAndMarksTheGeometry) {
    const std::pair<const char*, KyField> values[] = {
        {"X", KyField(1.0)},
        {"Y", KyField(2.0)},
        {"Width", KyField(30.0)},
        {"Height", KyField(40.0)},
        {"RX", KyField(5.0)},
        {"RY", KyField(6.0)},
        {"StartAngle", KyField(7.0)},
        {"SpanAngle", KyField(8.0)},
        {"P1", KyField(KyVec2d(1, 2))},
        {"P2", KyField(KyVec2d(3, 4))},
        {"PathData", KyField(std::string("M0 0L7 8"))},
    };
    constexpr std::pair<const char*, int> cTypes[] = {
        {"Ky2DRect", 6}, {"Ky2DEllipse", 6}, {"Ky2DLine", 2}, {"Ky2DPath", 1}};
    for (const auto& [type, expected] : cTypes) {
        int count = 0;
        const std::unique_ptr<Ky2DNode> node(Ky2DNode::cast(KyObject::create(type)));
        ASSERT_TRUE(node) << type;
        for (const auto& [name, value] : values) {
            const KyAttributeInterface* attribute = node->getAttribute(name);
            if (!attribute)
                continue;
            node->update();
            EXPECT_TRUE(attribute->setValue(*node, value, 0)) << name;
            EXPECT_TRUE(node->isGeometryModified()) << name;
            KyField read;
            EXPECT_TRUE(attribute->getValue(*node, read, 0));
            EXPECT_EQ(read, value) << name;
            ++count;
        }
        EXPECT_EQ(count, expected) << type;
        const std::unique_ptr<Ky2DNode> copy(node->clone());
        EXPECT_EQ(copy->getObjectType(), node->getObjectType());
        EXPECT_NE(copy->getQGraphicsItem(), node->getQGraphicsItem());
        node->update();
        copy->update();
        EXPECT_EQ(copy->getQGraphicsItem()->boundingRect(), node->getQGraphicsItem()->boundingRect()) << type;
    }
}
