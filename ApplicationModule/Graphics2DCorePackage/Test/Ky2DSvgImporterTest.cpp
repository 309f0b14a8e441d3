// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DSvgImporter.h"

#include "Ky2DEllipse.h"
#include "Ky2DImage.h"
#include "Ky2DPath.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"
#include "Ky2DSvgDocuments.h"
#include "Ky2DText.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace Ky2DSvgDocuments;

QImage renderQt(const std::string& svg) {
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    QImage image = Ky2DRaster::makePaper();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(0, 0, 200, 200));
    return image;
}

/// Around what is not white.
QRect getInkBox(const QImage& image) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGreen(image.pixel(x, y)) < 200 || qRed(image.pixel(x, y)) < 200)
                box |= QRect(x, y, 1, 1);
    return box;
}

std::string getFill(Imported& document, const char* name) {
    const Ky2DNode* node = document.find(name);
    return node ? node->getStyle()->getFillColor().getHtmlName() : "none";
}

/// Drawn like Qt's renderer draws them, but for a few pixels at edges.
struct Drawing {
    const char* name;
    const char* content;
    int tolerance = 30;

    /// For the test runner, which would print addresses.
    friend void PrintTo(const Drawing& drawing, std::ostream* stream) { *stream << drawing.name; }
};
constexpr Drawing cDrawings[] = {
    {"Shapes",
     "<rect x='10' y='20' width='80' height='50' rx='9' fill='red'/><circle cx='140' cy='50' r='30' "
     "fill='#0a0'/><ellipse cx='60' cy='140' rx='45' ry='25' fill='#00f' stroke='#000' stroke-width='5'/><line "
     "x1='110' y1='110' x2='190' y2='170' stroke='purple' stroke-width='7'/>"},
    {"Radii", "<rect x='10' y='10' width='80' height='80' rx='30' ry='0'/><rect x='110' y='10' width='80' height='80' "
              "rx='30'/><rect x='10' y='110' width='80' height='80' rx='0' ry='30'/>"},
    {"Points", "<polyline points='10,10 60,90 110,10 160,90' fill='none' stroke='teal' stroke-width='12'/><polygon "
               "points='20 120,180-15e-1 150 190.5.5 190' fill='gold' stroke='navy' stroke-width='6'/>"},
    {"Joins", "<g fill='none' stroke='black' stroke-width='16'><path d='M20 60 L60 20 L100 60'/><path "
              "stroke-linejoin='round' d='M120 60l30-40 30 40'/><path stroke-linejoin='bevel' d='M20 120l40-40 40 "
              "40'/><path d='M120 120l12-60 12 60'/><path stroke-miterlimit='20' d='M160 160l8-70 8 70'/></g>"},
    {"Caps",
     "<g stroke='black' stroke-width='20'><line x1='30' y1='30' x2='170' y2='30'/><line stroke-linecap='round' "
     "x1='30' y1='80' x2='170' y2='80'/><line stroke-linecap='square' x1='30' y1='130' x2='170' y2='130'/></g>"},
    {"Dashes", "<g fill='none' stroke='black' stroke-width='6'><path d='M10 20H190' stroke-dasharray='20 10'/><path "
               "d='M10 50H190' stroke-dasharray='20,10' stroke-dashoffset='7'/><path d='M10 80H190' "
               "stroke-dasharray='12 4 8 4' stroke-width='3'/><path d='M10 110H190' stroke-dasharray='none'/><path "
               "d='M10 140H190' stroke-dasharray='25 9 4'/></g>"},
    {"FillRules", "<path fill-rule='evenodd' d='M20 20H180V180H20Z M60 60H140V140H60Z'/><path fill='red' "
                  "d='M70 70h60v60h-60z M90 90h20v20h-20z'/>"},
    {"Transforms",
     "<g transform='translate(100,100) rotate(30)'><rect width='60' height='30' fill='red'/><rect transform='scale(.5 "
     "-1.5),skewX(20)' width='60' height='30' fill='blue'/></g><rect transform='matrix(.7 .2 -.3 .9 40 20)' width='50' "
     "height='40'/><rect transform='rotate(45 40 150)' x='20' y='130' width='40' height='40' fill='lime'/><rect "
     "transform='translate(120)skewY(-15)' y='180' width='40' height='10' fill='orange'/>"},
    {"Inheritance",
     "<g fill='red' stroke='blue' stroke-width='4'><rect x='10' y='10' width='60' height='60'/><g "
     "fill='none' stroke-width='10'><circle cx='130' cy='50' r='30'/></g><rect x='20' y='100' width='60' "
     "height='60' style='fill:green;stroke:none'/></g>"},
    {"Opacity", "<rect width='200' height='100' fill='rgb(0,0,255)'/><rect x='20' y='50' width='60' height='100' "
                "fill='rgb(100%,0%,0%)' fill-opacity='.5'/><rect x='120' y='50' width='60' height='100' fill='none' "
                "stroke='lime' stroke-width='20' stroke-opacity='.4'/><g opacity='.5'><rect y='170' width='200' "
                "height='30'/></g>"},
    {"Use",
     "<defs><g id='mark'><rect width='30' height='30' fill='red'/><circle cx='30' cy='30' r='15'/></g></defs><use "
     "xlink:href='#mark' x='20' y='20'/><use xlink:href='#mark' transform='translate(100 100) scale(2)'/>"},
    {"Hidden", "<rect width='100' height='100' display='none'/><g visibility='hidden'><rect x='20' y='20' width='40' "
               "height='40'/></g><rect x='100' y='100' width='50' height='50' fill='red'/>"},
    {"ConstantWidth", "<g transform='scale(4)' fill='none' stroke='black'><rect x='5' y='5' width='30' height='30' "
                      "stroke-width='3' vector-effect='non-scaling-stroke'/></g>"},
    {"Text",
     "<text x='10' y='60' font-family='DejaVu Sans' font-size='30' fill='navy'>Agjpy</text><text x='100' y='120' "
     "font-family='DejaVu Sans' font-size='24' text-anchor='middle'>Middle</text><text x='190' y='170' "
     "font-family='DejaVu Sans' font-size='18' font-weight='bold' text-anchor='end'>End</text>",
     450},
    {"ScaledText",
     "<g transform='scale(20)'><text x='0.5' y='5' font-family='DejaVu Sans' font-size='2.5'>Scale</text></g>", 250},
};

class SvgDrawing : public testing::TestWithParam<Drawing> {};

} // namespace

TEST_P(SvgDrawing, IsThatOfQtsRenderer) {
    const std::string svg = wrap(GetParam().content);
    const QImage expected = renderQt(svg);
    Imported document(svg);
    ASSERT_TRUE(document.group) << document.importer.getError();
    EXPECT_EQ(document.getReports(), std::vector<std::string>());
    const QImage drawn = renderGroup(document.group.release());
    EXPECT_GT(countInk(expected), 300);
    EXPECT_LE(Ky2DRaster::countDifferences(drawn, expected), GetParam().tolerance);
    const QRect box = getInkBox(drawn);
    const QRect expectedBox = getInkBox(expected);
    EXPECT_LE((box.topLeft() - expectedBox.topLeft()).manhattanLength(), 1);
    EXPECT_LE((box.bottomRight() - expectedBox.bottomRight()).manhattanLength(), 1);
    if (testing::Test::HasFailure() && qEnvironmentVariableIsSet("KY_KEEP_IMAGES")) {
        expected.save(QStringLiteral("%1-expected.png").arg(QLatin1String(GetParam().name)));
        drawn.save(QStringLiteral("%1-drawn.png").arg(QLatin1String(GetParam().name)));
    }
}

INSTANTIATE_TEST_SUITE_P(Table, SvgDrawing, testing::ValuesIn(cDrawings),
                         [](const auto& drawing) { return std::string(drawing.param.name); });

TEST(Ky2DSvgImporterTest, TheRootMapsItsViewBox) {
    Imported document("<svg xmlns='http://www.w3.org/2000/svg' width='1in' height='50%' viewBox='10 10 20 40'>"
                      "<rect id='r' x='10' y='10' width='20' height='40'/></svg>");
    ASSERT_TRUE(document.group);
    EXPECT_EQ(document.importer.getWidth(), 96);
    EXPECT_EQ(document.importer.getHeight(), 20);
    Ky2DScene* scene = Ky2DScene::create(nullptr, true);
    scene->insertChild(document.group.get(), Ky2DNode::cAppend);
    const KyRectd bound = document.find("r")->getBound();
    // 20 by 40 into 96 by 20: half the size, in the middle.
    EXPECT_DOUBLE_EQ(bound.origin.x, 43);
    EXPECT_DOUBLE_EQ(bound.origin.y, 0);
    EXPECT_DOUBLE_EQ(bound.width, 10);
    EXPECT_DOUBLE_EQ(bound.height, 20);
    scene->removeChildByIndex(0, false);
    scene->destroy();
}

TEST(Ky2DSvgImporterTest, NestedViewportsFitTheirViewBoxes) {
    const struct {
        const char* ratio;
        KyRectd bound;
    } cases[] = {{"", {30, 10, 20, 20}},
                 {"xMinYMid", {10, 10, 20, 20}},
                 {"xMaxYMax meet", {50, 10, 20, 20}},
                 {"xMidYMid slice", {10, -10, 60, 60}},
                 {"xMidYMax slice", {10, -30, 60, 60}},
                 {"none", {10, 10, 60, 20}},
                 {"nonsense", {30, 10, 20, 20}}};
    for (const auto& c : cases) {
        Imported document(wrap(fmt::format("<svg x='10' y='5%' width='30%' height='20' viewBox='5 5 10 10' "
                                           "preserveAspectRatio='{}'><rect id='r' x='5' y='5' width='100%' "
                                           "height='10'/></svg>",
                                           c.ratio)));
        ASSERT_TRUE(document.find("r"));
        EXPECT_EQ(document.find("r")->getBound(), c.bound) << c.ratio;
    }
}

TEST(Ky2DSvgImporterTest, NodesAreFoundByIdMovedAndRestyled) {
    Imported document(wrap("<g id='layer' transform='translate(100 0)'><rect id='box' width='20' height='20' "
                           "transform='rotate(45)'/><circle id='dot' cx='5' cy='6' r='7'/></g>"));
    Ky2DNode* box = document.find("box");
    ASSERT_TRUE(box);
    EXPECT_EQ(box->getParent(), document.find("layer"));
    EXPECT_EQ(box->getTranslation(), KyVec2d(0, 0));
    EXPECT_EQ(box->getRotation(), 0);
    const auto* dot = document.find<Ky2DEllipse>("dot");
    ASSERT_TRUE(dot);
    EXPECT_EQ(dot->getRY(), 7);
    box->setTranslation(0, 100);
    box->editStyle()->setFillColor(KyColor(1, 0, 0));
    const QImage moved = renderGroup(document.group.release());
    EXPECT_EQ(moved.pixel(100, 114), qRgb(255, 0, 0));
    EXPECT_EQ(moved.pixel(100, 22), qRgb(255, 255, 255));
}

TEST(Ky2DSvgImporterTest, WhatUseMakesIsACopyWithNames) {
    Imported document(wrap("<use id='first' href='#s' width='40' height='40'/><use id='second' href='#late' x='9' "
                           "fill='blue'/><symbol id='s' viewBox='0 0 10 10'><rect id='inner' width='10' "
                           "height='10'/></symbol><defs><path id='late' d='M0 0h9v9z'/></defs>"));
    ASSERT_TRUE(document.group);
    EXPECT_EQ(document.group->getNbChildren(), 2u);
    ASSERT_TRUE(document.find("inner"));
    EXPECT_EQ(document.find("inner")->getBound().width, 40);
    EXPECT_EQ(document.find("first")->find("late"), nullptr);
    EXPECT_EQ(document.find("second")->find("late"), document.find("late"));
    EXPECT_EQ(getFill(document, "late"), "#0000ff");
    EXPECT_TRUE(document.getReports().empty());
}

TEST(Ky2DSvgImporterTest, StylesCascadeInOrder) {
    const struct {
        const char* sheet;
        const char* attributes;
        const char* fill;
    } cases[] = {
        {"", "fill='#010000'", "#010000"},
        {"*{fill:#020000}", "fill='#010000'", "#020000"},
        {"rect{fill:#030000}*{fill:#020000}", "", "#030000"},
        {".c{fill:#040000}rect{fill:#030000}", "class='a c'", "#040000"},
        {".b{fill:#040000}.a{fill:#050000}", "class='a b'", "#050000"},
        {".a{fill:#050000}.b{fill:#040000}", "class='a b'", "#040000"},
        {"#r{fill:#060000}.a.b{fill:#040000}", "class='a b'", "#060000"},
        {"rect.a{fill:#070000}.a{fill:#040000}", "class='a'", "#070000"},
        {"circle,rect/* , */{ fill : #080000 ; }", "", "#080000"},
        {"#r{fill:#060000}", "style='fill:#090000'", "#090000"},
        {"*{fill:#0a0000 !important}", "style='fill:#090000'", "#0a0000"},
        {"@media print{rect{fill:red}}rect{fill:#0b0000}", "", "#0b0000"},
        {"g rect{fill:red}rect:hover{fill:red}", "fill='#010000'", "#010000"},
        {"<!-- rect{fill:#0c0000} -->", "", "#0c0000"},
        {"rect{fill:inherit}", "fill='#010000'", "#0e0000"},
        {"rect{fill:nonsense}", "", "#0e0000"},
        {"", "color='#0f0000' fill='currentColor'", "#0f0000"},
        {"", "fill='hsl(120, 100%, 25%)'", "#008000"},
        {"", "fill='hsla(-120deg 100% 50% / .5)'", "#0000ff"},
    };
    for (const auto& c : cases) {
        Imported document(wrap(fmt::format("<g fill='#0e0000'><rect id='r' {}/></g><style><![CDATA[{}]]></style>",
                                           c.attributes, c.sheet)));
        EXPECT_EQ(getFill(document, "r"), c.fill) << c.sheet << c.attributes;
    }
}

TEST(Ky2DSvgImporterTest, LengthsHaveUnits) {
    const struct {
        const char* text;
        double width;
    } cases[] = {{"7", 7},     {"7px", 7},       {"3pt", 4},     {"1pc", 16},  {"2.54cm", 96}, {"25.4mm", 96},
                 {"1in", 96},  {"50%", 100},     {"2em", 40},    {"2ex", 20},  {"1e1", 10},    {"+.5e+1px", 5},
                 {"7ells", 0}, {"nan", 0},       {"inf", 0},     {"1e999", 0}, {"", 0},        {"-", 0},
                 {"0x10", 0},  {" 12 \n", 12.0}, {"1e308in", 0}, {"4e308", 0}};
    for (const auto& c : cases) {
        Imported document(wrap(fmt::format("<rect id='r' font-size='20' width='{}'/>", c.text)));
        const auto* rect = document.find<Ky2DRect>("r");
        ASSERT_TRUE(rect) << c.text;
        EXPECT_NEAR(rect->getWidth(), c.width, 1e-9) << c.text;
    }
}

TEST(Ky2DSvgImporterTest, PositionedSpansAreTextsOfAGroup) {
    Imported document(
        wrap("<text id='t' x='10' y='50' font-size='20'>  One\n  <tspan id='a' fill='red'>two </tspan><tspan "
             "id='b' x='100' y='90' dy='5' text-anchor='end'>three</tspan><tspan id='c' x='1 20'>xyz"
             "</tspan> </text><text id='plain' x='3' y='4' xml:space='preserve'> a\tb </text>"));
    ASSERT_TRUE(document.find<Ky2DGroup>("t"));
    const auto* a = document.find<Ky2DText>("a");
    const auto* b = document.find<Ky2DText>("b");
    const auto* c = document.find<Ky2DText>("c");
    ASSERT_TRUE(a && b && c);
    EXPECT_EQ(Ky2DText::cast(document.find<Ky2DGroup>("t")->editChild(0))->getText(), "One ");
    EXPECT_EQ(a->getText(), "two ");
    EXPECT_GT(a->getX(), 40);
    EXPECT_EQ(a->getY(), 50);
    EXPECT_EQ(b->getX(), 100);
    EXPECT_EQ(b->getY(), 95);
    EXPECT_EQ(b->getStyle()->getTextAnchor(), eEnd);
    EXPECT_EQ(c->getText(), "x");
    EXPECT_EQ(c->getX(), 1);
    EXPECT_EQ(document.find("t")->getNbChildren(), 5u);
    const auto* plain = document.find<Ky2DText>("plain");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->getText(), " a b ");
    EXPECT_EQ(plain->getX(), 3);
}

TEST(Ky2DSvgImporterTest, ASwitchShowsTheFirstThatFits) {
    Imported document(
        wrap("<switch><foreignObject requiredExtensions='x'><p/></foreignObject><rect id='no' "
             "systemLanguage='tlh'/><rect id='yes' systemLanguage='xx, en-GB'/><rect id='late'/></switch>"));
    EXPECT_TRUE(document.find("yes"));
    EXPECT_FALSE(document.find("no"));
    EXPECT_FALSE(document.find("late"));
    EXPECT_TRUE(document.getReports().empty());
}

TEST(Ky2DSvgImporterTest, WhatIsNotCarriedIsReportedOnceByName) {
    const struct {
        const char* content;
        std::vector<std::string> reports;
        const char* fill;
    } cases[] = {
        {"<linearGradient id='g'><stop stop-color='#ff0000'/><stop offset='1' style='stop-color:#0000ff'/>"
         "</linearGradient><rect fill='url(#g)'/><rect id='r' fill='url(#g)'/>",
         {"linearGradient"},
         "#800080"},
        {"<radialGradient id='g' xlink:href='#h'/><linearGradient id='h'><stop "
         "stop-color='lime'/></linearGradient><rect "
         "id='r' fill=\"url('#g')\"/>",
         {"radialGradient"},
         "#00ff00"},
        {"<pattern id='g'/><rect id='r' fill='url(#g) #123456'/>", {"pattern"}, "#123456"},
        {"<linearGradient id='g'><stop fill='url(#g)' stop-color='red'/></linearGradient><rect id='r' fill='url(#g)'/>",
         {"linearGradient"},
         "#ff0000"},
        {"<filter id='f'><feFlood/></filter><mask id='m'><odd/></mask><rect id='r' filter='url(#f)' mask='url(#m)' "
         "clip-path='none'/><path style='clip-path:url(#c);marker-end:url(#x)'/>",
         {"filter", "mask", "clipPath", "marker"},
         "#000000"},
        {"<rect id='r'><animate/><set/><animate/></rect><script>x</script><foreignObject><svg/></foreignObject>",
         {"animate", "set", "script", "foreignObject"},
         "#000000"},
        {"<thing/><thing/><rect id='r' transform='rotate(1,2)'/><other:thing/>", {"thing", "transform"}, "#000000"},
        {"<path id='r' d='M0 0 L5'/><path d='L5 5'/>", {"path data"}, "#000000"},
        {"<polygon id='r' points='1,1 x 5,5'/><polyline points='1 2 3'/>", {"points"}, "#000000"},
        {"<rect width='5 ells' rx='auto'/><rect id='r' style='stroke-width:wide'/>", {"length"}, "#000000"},
        {"<rect id='r' fill='lab(1 2 3)' stroke='red icc-color(p, 1)'/>", {"color"}, "#000000"},
        {"<text textLength='50' rotate='20'>a</text><rect id='r' style='transform:none;clip:auto'/><rect "
         "style='transform:rotate(9deg);clip:rect(0 0 0 0)'/>",
         {"rotate", "textLength", "clip", "transform"},
         "#000000"},
        {"<svg id='r' overflow='visible'/><use href='#s'/><symbol id='s' viewBox='0 0 1 1'/>", {}, "#000000"},
        {"<rect id='r'/><use href='#s'/><symbol id='s' viewBox='0 0 1 1' preserveAspectRatio='xMidYMid slice'/>",
         {"clip"},
         "#000000"},
        {"<image id='r' href='none.png'/><svg/>", {"image", "clip"}, "#000000"},
        {"<g id='r'><use href='#r'/></g><use href='other.svg#x'/>", {"use"}, "#000000"},
        {"<image id='r' href='http://example.com/a.png'/><image href='data:image/png;base64,AAAA'/>",
         {"image"},
         "#000000"},
    };
    for (const auto& c : cases) {
        Imported document(wrap(c.content));
        ASSERT_TRUE(document.group) << c.content << document.importer.getError();
        EXPECT_EQ(document.getReports(), c.reports) << c.content;
        EXPECT_EQ(getFill(document, "r"), c.fill) << c.content;
    }
}

TEST(Ky2DSvgImporterTest, PicturesLieBesideTheFileOrInIt) {
    QTemporaryDir directory;
    QImage picture(8, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(directory.filePath("red.png")));
    QFile png(directory.filePath("red.png"));
    ASSERT_TRUE(png.open(QIODevice::ReadOnly));
    const std::string data = png.readAll().toBase64().toStdString();
    QFile file(directory.filePath("plan.svg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(
        wrap("<image id='i' width='80' height='40' xlink:href='red.png'/><image y='100' width='80' height='80' "
             "preserveAspectRatio='none' opacity='.5' href='data:image/png;base64," +
             data + "'/>")));
    file.close();
    Ky2DSvgImporter importer;
    Group group(importer.importFile(file.fileName().toStdString()));
    ASSERT_TRUE(group) << importer.getError();
    EXPECT_EQ(importer.getNbReports(), 0u);
    const QImage drawn = renderGroup(group.release());
    EXPECT_EQ(drawn.pixel(40, 20), qRgb(255, 0, 0));
    EXPECT_EQ(drawn.pixel(100, 20), qRgb(255, 255, 255));
    EXPECT_NEAR(qGreen(drawn.pixel(70, 170)), 128, 2);
}

TEST(Ky2DSvgImporterTest, EmbeddedPicturesHaveABoundedSizeTogether) {
    QImage picture(4000, 4000, QImage::Format_Mono);
    picture.fill(1);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(picture.save(&buffer, "PNG"));
    std::string images;
    for (const char* type : {"a", "b", "c", "d"})
        images += fmt::format("<image id='{0}' href='data:{0};base64,{1}'/><use href='#{0}'/><use href='#{0}'/>", type,
                              png.toBase64().toStdString());
    EXPECT_EQ(Imported(wrap(images)).getReports(), std::vector<std::string>());
    images += "<image href='data:e;base64," + png.toBase64().toStdString() + "'/>";
    EXPECT_EQ(Imported(wrap(images)).getReports(), std::vector<std::string>{"image"});
}
