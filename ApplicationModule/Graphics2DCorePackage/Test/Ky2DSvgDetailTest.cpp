// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DImage.h"
#include "Ky2DSvgDocuments.h"
#include "Ky2DText.h"

#include <QFile>
#include <QGraphicsPixmapItem>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <string>
#include <tuple>
#include <vector>

using namespace Ky2DSvgDocuments;

TEST(Ky2DSvgDetailTest, CapsAreDrawnWhereThereIsNoLength) {
    const std::tuple<const char*, const char*, const char*, int> rows[] = {
        {"M20 100h160", "round", "0 20", 9 * 78},  {"M20 100h160", "square", "0 20", 8 * 100 + 100},
        {"M20 100h160", "butt", "0 20", 0},        {"M40 100z", "round", "none", 78},
        {"M40 100L40 100", "square", "none", 100}, {"M40 100h0zm20 0v0zl40 0", "round", "none", 78 + 78 + 400},
        {"M40 100h0", "butt", "none", 0},          {"M40 100", "round", "none", 0},
    };
    for (const auto& [data, cap, dashes, ink] : rows) {
        Imported document(wrap(fmt::format("<path d='{}' fill='none' stroke='black' stroke-width='10' "
                                           "stroke-linecap='{}' stroke-dasharray='{}'/>",
                                           data, cap, dashes)));
        EXPECT_NEAR(countInk(renderGroup(document.group.release())), ink, ink / 6) << data << cap << dashes;
    }
}

TEST(Ky2DSvgDetailTest, ColoursMayHaveAnAlpha) {
    for (const char* color :
         {"rgba(255,0,0,.5)", "#ff000080", "#f008", "hsl(0 100% 50% / 50%)", "rgb(100%,0%,0%,50%)"}) {
        Imported document(wrap(fmt::format("<rect id='r' fill='{}'/>", color)));
        const KyColor fill = document.find("r")->getStyle()->getFillColor();
        EXPECT_EQ(fill.getHtmlName().substr(0, 7), "#ff0000") << color;
        EXPECT_NEAR(fill.alpha, 0.5, 0.04) << color;
        EXPECT_TRUE(document.getReports().empty()) << color;
    }
}

TEST(Ky2DSvgDetailTest, PlacesCountTheCharactersOfSpansToo) {
    const std::tuple<const char*, std::vector<double>> rows[] = {
        {"<text id='t' x='10 40 70'><tspan>ab</tspan>c</text>", {10, 40, 70}},
        {"<text id='t' x='10 40 70'>a<tspan x='90'>bc</tspan></text>", {10, 90, 70}},
        {"<text id='t' x='10 40 70 100'>a<tspan x='90 91'><tspan x='80'>b</tspan>c</tspan>d</text>", {10, 80, 91, 100}},
        {"<text id='t' x='10 40'>  <tspan> a </tspan> b</text>", {10, 40}},
    };
    for (const auto& [content, places] : rows) {
        Imported document(wrap(content));
        auto* group = document.find<Ky2DGroup>("t");
        ASSERT_TRUE(group) << content;
        std::vector<double> found;
        for (unsigned i = 0; i < group->getNbChildren() && i < places.size(); ++i)
            found.push_back(Ky2DText::cast(group->editChild(i))->getX());
        EXPECT_EQ(found, places) << content;
    }
}

TEST(Ky2DSvgDetailTest, LinksMayHaveAnotherPrefix) {
    Imported document("<svg xmlns:l='http://www.w3.org/1999/xlink'><defs><rect id='r' width='9'/></defs><use id='u' "
                      "l:href='#r'/></svg>");
    ASSERT_TRUE(document.find("u"));
    EXPECT_TRUE(document.find("u")->find("r"));
}

TEST(Ky2DSvgDetailTest, LinkedPicturesAreBoundedSharedAndLeadNowhere) {
    const QTemporaryDir folder;
    const auto import = [&folder](const char* name, const std::string& content) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(content));
        file.close();
        Ky2DSvgImporter importer;
        Group group(importer.importFile(file.fileName().toStdString()));
        return std::pair(std::move(group), importer.getNbReports() > 0 ? importer.getReport(0) : std::string());
    };
    const auto picture = [](const char* link) { return fmt::format("<image width='99' xlink:href='{}'/>", link); };
    EXPECT_EQ(import("self.svg", wrap(picture("self.svg") + "<rect width='9' height='9'/>")).second, "image");
    EXPECT_EQ(import("second.svg", wrap(picture("self.svg"))).second, "image");
    import("huge.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9000' height='9000'/>");
    import("small.svg", wrap("<rect width='200' height='200' fill='red'/>"));
    for (const auto& [link, report] : {std::pair("huge.svg", "image"), {"none.svg", "image"}, {"small.svg", ""}})
        EXPECT_EQ(import("plan.svg", wrap(picture(link))).second, report) << link;
    const Group group = import("twice.svg", wrap(picture("small.svg") + picture("small.svg"))).first;
    ASSERT_TRUE(group);
    Ky2DNode::applyModification();
    const uchar* bits[2]{};
    for (unsigned i = 0; i < 2; ++i) {
        EXPECT_EQ(Ky2DImage::cast(group->editChild(i))->getImageURL().getFileName(), "small.svg");
        bits[i] =
            dynamic_cast<QGraphicsPixmapItem&>(*group->editChild(i)->getQGraphicsItem()).pixmap().toImage().constBits();
    }
    EXPECT_EQ(bits[0], bits[1]);
}
