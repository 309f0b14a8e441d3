// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DEllipse.h"
#include "Ky2DLine.h"
#include "Ky2DPath.h"
#include "Ky2DRaster.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"
#include "Ky2DTestNodes.h"

#include "KyAttributeInterface.h"
#include "KyField.h"
#include "KyFunction.h"
#include "KyType.h"
#include "KyURL.h"

#include <QFile>
#include <QFont>
#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

using namespace std::string_literals;

class Ky2DShapeTest : public testing::Test {
protected:
    template <class Item>
    static Item& updated(Ky2DNode& node) {
        node.update();
        return dynamic_cast<Item&>(*node.getQGraphicsItem());
    }

    /// A value for every attribute of a shape, none the first one.
    std::map<std::string, KyField> makeValues(bool isSymbol) const {
        const QString path = mFolder.filePath(isSymbol ? "a.svg" : "a.png");
        QFile file(path);
        QImage picture(40, 20, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        if (isSymbol && file.open(QIODevice::WriteOnly))
            file.write("<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'><circle r='20'/></svg>");
        else
            EXPECT_TRUE(picture.save(path));
        return {{"X", 30.0},
                {"Y", 40.0},
                {"Width", 100.0},
                {"Height", 60.0},
                {"RX", 20.0},
                {"RY", 10.0},
                {"StartAngle", 33.0},
                {"SpanAngle", 200.0},
                {"P1", KyVec2d(20, 30)},
                {"P2", KyVec2d(150, 120)},
                {"PathData", "M20 20L150 30L90 160Z"s},
                {"Text", "  two  words "s},
                {"WhiteSpaceHandling", 1},
                {"Opacity", 0.5},
                {"PreserveAspectRatio", false},
                {"ImageURL", KyURL("file:///none.png")},
                {"FileLocalPath", path.toStdString()},
                {"Color", KyColor(0, 0.5f, 0)}};
    }

    static QImage draw(Ky2DNode& node) {
        Ky2DScene scene;
        scene.insertChild(&node, Ky2DNode::cAppend);
        Ky2DNode::applyModification();
        QImage image = Ky2DRaster::makePaper();
        QPainter painter(&image);
        scene.getQGraphicsScene()->render(&painter, image.rect(), image.rect());
        scene.removeChild(&node, false);
        return image;
    }

    /// The C++ setter: by name a change is told in any case.
    static void callSetter(Ky2DNode& node, const std::string& attribute, const KyField& value) {
        KyField result;
        for (const KyType* type = node.getObjectType(); type; type = type->getParent())
            for (const auto& method : type->getAllMethods())
                if (method->getName() == "set" + attribute && method->invoke(&node, {&value, 1}, result))
                    return;
    }

    /// The item has all that the style says, as far as its kind takes it.
    static void expectStyled(const Ky2DNode& node) {
        QPen pen;
        QBrush brush;
        QFont font;
        node.getStyle()->configureTextStyle(&pen, &brush, &font);
        const QGraphicsItem* item = node.getQGraphicsItem();
        const auto* shape = dynamic_cast<const QAbstractGraphicsShapeItem*>(item);
        const auto* line = dynamic_cast<const QGraphicsLineItem*>(item);
        const auto* text = dynamic_cast<const QGraphicsSimpleTextItem*>(item);
        EXPECT_EQ(shape ? shape->pen() : line ? line->pen() : pen, pen);
        EXPECT_EQ(shape ? shape->brush() : brush, brush);
        EXPECT_EQ(text ? text->font() : font, font);
    }

    QTemporaryDir mFolder;
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
    constexpr QPointF cOutline[] = {{120, 230}, {130, 230}, {130, 250}, {120, 250}, {120, 230}};
    ASSERT_EQ(path.elementCount(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(QPointF(path.elementAt(i)), cOutline[i]) << i;
        EXPECT_EQ(path.elementAt(i).isLineTo(), i != 0) << i;
    }
    setRect(rect, 11, 20, 5, 0);
    EXPECT_EQ(updated<QGraphicsPathItem>(rect).path().elementCount(), 17);
    EXPECT_EQ(rect.getRY(), 0);
    constexpr double cEmpty[][4] = {
        {0, 0, 0, 5},         {0, 0, 5, 0},        {0, 0, -5, 5},         {0, 0, 5, -5},        {0, 0, cNaN, 5},
        {0, 0, 5, cNaN},      {cNaN, 0, 5, 5},     {0, cNaN, 5, 5},       {cInfinity, 0, 5, 5}, {0, 0, 5, cInfinity},
        {0, 0, cInfinity, 5}, {-1e128, 0, 5, 5},   {0, -1e128, 2e128, 5}, {0, 1e128, 5, 5},     {5e127, 0, 5e127, 5},
        {0, 0, 5, 1e308},     {1e308, 0, 1e308, 5}};
    for (const double radius : {0.0, 3.0})
        for (const auto& [x, y, width, height] : cEmpty) {
            setRect(rect, width, height, radius, radius);
            rect.setX(x);
            rect.setY(y);
            EXPECT_TRUE(updated<QGraphicsPathItem>(rect).path().isEmpty()) << x << ' ' << y << ' ' << width;
            EXPECT_TRUE(rect.getQGraphicsItem()->boundingRect().isNull());
        }
    setRect(rect, 6e127, 6e127, 1e127, 1e127);
    EXPECT_EQ(updated<QGraphicsPathItem>(rect).path().elementCount(), 17);
    rect.setQtOffset(KyVec2d(0, 9e127));
    EXPECT_TRUE(updated<QGraphicsPathItem>(rect).path().isEmpty());
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
    ellipse.setRX(-3);
    ellipse.setRY(-4);
    EXPECT_EQ(updated<QGraphicsEllipseItem>(ellipse).rect(), QRectF(107, 216, 6, 8));
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
    EXPECT_EQ(updated<QGraphicsLineItem>(line).line(), QLineF(11, 22, 13, 24));
}

TEST_F(Ky2DShapeTest, NothingIsDrawnThatLiesNowhere) {
    Ky2DLine line;
    Ky2DEllipse ellipse;
    line.setP2(KyVec2d(cNaN, 0));
    ellipse.setX(cInfinity);
    for (Ky2DNode* node : std::initializer_list<Ky2DNode*>{&line, &ellipse}) {
        node->editStyle()->setStrokeMode(eSolidLine);
        node->editStyle()->setStrokeCap(eSquareCap);
        node->editStyle()->setStrokeWidth(20);
        EXPECT_EQ(draw(*node), Ky2DRaster::makePaper());
        EXPECT_TRUE(node->getQGraphicsItem()->boundingRect().isNull());
        EXPECT_TRUE(node->getQGraphicsItem()->shape().isEmpty());
    }
    line.setP2(KyVec2d(50, 50));
    EXPECT_NE(draw(line), Ky2DRaster::makePaper());
}

TEST_F(Ky2DShapeTest, EveryAttributeIsKeptToldDrawnAndCopied) {
    const std::pair<std::string, unsigned> shapes[] = {{"Ky2DRect", 6},    {"Ky2DEllipse", 6}, {"Ky2DLine", 2},
                                                       {"Ky2DPath", 2},    {"Ky2DText", 4},    {"Ky2DImage", 8},
                                                       {"Ky2DSvgImage", 9}};
    for (const auto& [name, count] : shapes) {
        const std::unique_ptr<Ky2DNode> node(Ky2DNode::cast(KyObject::create(name)));
        ASSERT_TRUE(node) << name;
        const std::map<std::string, KyField> values = makeValues(name == "Ky2DSvgImage");
        const KyType* type = node->getObjectType();
        const unsigned first = Ky2DNode::getType()->getNbAttributes();
        EXPECT_EQ(type->getNbAttributes(), first + count) << name;
        Listener listener(*node);
        for (unsigned i = first; i < type->getNbAttributes(); ++i) {
            const KyAttributeInterface& attribute = *type->getAttribute(i);
            const std::string& key = attribute.getName();
            if (key == "Command")
                continue;
            node->update();
            ASSERT_TRUE(attribute.setValue(*node, values.at(key), 0)) << key;
            EXPECT_TRUE(node->isGeometryModified()) << key;
            listener.entries.clear();
            callSetter(*node, key, values.at(key));
            const auto isOwn = [&key](const std::string& entry) { return entry.starts_with(key + " 2 "); };
            EXPECT_EQ(std::ranges::count_if(listener.entries, isOwn), 1) << name << ' ' << key;
            KyField read;
            EXPECT_TRUE(attribute.getValue(*node, read, 0));
            EXPECT_EQ(read, values.at(key)) << key;
        }
        node->setRotation(5);
        node->editStyle()->setStrokeMode(eDashLine);
        node->editStyle()->setStrokeColor(KyColor(0, 0, 1));
        node->editStyle()->setFillColor(KyColor(1, 0, 0));
        const QImage drawn = draw(*node);
        EXPECT_GT(Ky2DRaster::countDifferences(drawn, Ky2DRaster::makePaper()), 50) << name;
        expectStyled(*node);
        const std::unique_ptr<Ky2DNode> copy(node->clone());
        EXPECT_EQ(copy->getObjectType(), type);
        EXPECT_NE(copy->getQGraphicsItem(), node->getQGraphicsItem());
        EXPECT_EQ(draw(*copy), drawn) << name;
    }
}
