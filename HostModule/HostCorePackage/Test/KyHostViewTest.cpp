// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

#include "KyHolder.h"
#include "KyImage.h"
#include "KyURL.h"

#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <atomic>
#include <set>
#include <thread>
#include <tuple>

namespace {

class KyHostViewTest : public KyHostProcessTest {
protected:
    KyHostViewTest() {
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            mEnvironment.remove(variable);
    }

    KyHolder<KyImage> load(const QString& name) const {
        return KyHolder<KyImage>(KyImage::create(KyURL(getPath(name).toStdString(), KyURL::eLocalPath)));
    }

    /// Draws off screen, with no display in reach, into shot.png.
    KyHostResult draw(const QStringList& arguments) const {
        return run(QStringList{"--offscreen", "--screenshot", "shot.png"} + arguments);
    }

    /// The picture of a run without a failure.
    KyHolder<KyImage> take(const QStringList& arguments) const {
        const KyHostResult result = draw(arguments);
        EXPECT_EQ(0, result.code) << result;
        EXPECT_EQ("", result.errors);
        return load("shot.png");
    }
};

/// Distinct colours in a coarse grid over the picture.
std::size_t countColors(const KyImage& image) {
    std::set<std::string> colors;
    for (int y = 0; y < image.getHeight(); y += 3)
        for (int x = 0; x < image.getWidth(); x += 3)
            colors.insert(image.getPixel(x, y).toString(2));
    return colors.size();
}

int count(const KyImage& image, bool (*isCounted)(const KyColor& color)) {
    int count = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            count += isCounted(image.getPixel(x, y)) ? 1 : 0;
    return count;
}

/// How many pixels are red for the most part.
int countRed(const KyImage& image) {
    return count(image, [](const KyColor& color) {
        return color.red > 2.0f * color.green && color.red > 2.0f * color.blue && color.red > 0.2f;
    });
}

constexpr const char* cRedBall = "local ball = KyMeshNode() ball:makeSphere(1) ball:setColor(1, 0, 0) "
                                 "scene:addChild(ball) camera:lookAt(0, 0, 5, 0, 0, 0)";

} // namespace

TEST_F(KyHostViewTest, ThePictureShowsWhatTheScriptMadeInTheLastFrame) {
    const QString ball = cRedBall;
    const QString leave = ball + " return coroutine.create(function() for i = 1, 2 do coroutine.yield() end "
                                 "scene.Children[0].Visible = false end)";
    const std::tuple<const char*, QString, int, int> rows[] = {{"1", "camera:lookAt(0, 0, 5, 0, 0, 0)", 0, 0},
                                                               {"1", ball, 1000, 8000},
                                                               {"2", leave, 1000, 8000},
                                                               {"3", leave, 0, 0}};
    for (const auto& [frames, script, fewest, most] : rows) {
        const KyHolder<KyImage> picture = take({"--frames", frames, "--size", "160x120", "-e", script});
        ASSERT_TRUE(picture);
        EXPECT_EQ(160, picture->getWidth());
        EXPECT_GE(countRed(*picture), fewest) << frames;
        EXPECT_LE(countRed(*picture), most) << frames;
    }
}

TEST_F(KyHostViewTest, ExamplesDrawMoreThanABackgroundAndThoseThatNeedNoFilesInAStrictSandboxToo) {
    mEnvironment.insert("QT_QPA_PLATFORM", "nonsense"); // Off screen, any choice does.
    const std::pair<QString, QStringList> cases[] = {
        {"",
         {"hello.lua", "objects.lua", "values.lua", "coroutines.lua", "model.lua", "viewer.lua", "gear.obj", "hud.lua",
          "download.lua", "plant.lua", "plant.svg", "panel.lua", "dashboard.lua", "wall.lua", "showcase.lua",
          "devices.lua", "fly.lua", "form.lua", "settings.lua"}},
        {"--sandbox=strict", {"hello.lua", "objects.lua", "coroutines.lua", "viewer.lua", "hud.lua", "fly.lua"}}};
    for (const auto& [option, names] : cases)
        for (const QString& name : names) {
            SCOPED_TRACE((name + ' ' + option).toStdString());
            QStringList arguments{"--frames", "3", "--size", "320x180", KY_TEST_DATA_DIR "/../../../examples/" + name};
            if (!option.isEmpty())
                arguments << option;
            const KyHolder<KyImage> picture = take(arguments);
            ASSERT_TRUE(picture);
            EXPECT_GT(countColors(*picture), 150u);
        }
}

TEST_F(KyHostViewTest, ADownloadIsShownAsFarAsItIs) {
    mEnvironment.insert("no_proxy", "127.0.0.1");
    for (const int percent : {30, 60}) {
        std::atomic<quint16> port = 0;
        std::atomic<bool> hasEnded = false;
        const std::jthread serving([&] {
            QTcpServer server;
            server.listen(QHostAddress::LocalHost);
            port = server.serverPort();
            if (!server.waitForNewConnection(cPatience))
                return;
            QTcpSocket* const socket = server.nextPendingConnection();
            socket->waitForReadyRead(cPatience);
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + QByteArray(10, 'x'));
            socket->waitForBytesWritten();
            // Qt tells of progress ten times a second at most.
            QThread::msleep(150);
            socket->write(QByteArray(10 * percent - 10, 'x'));
            socket->waitForBytesWritten();
            while (!hasEnded)
                QThread::msleep(10);
        });
        while (port == 0)
            QThread::msleep(1);
        const QString chunk = QString("url, directory = 'http://127.0.0.1:%1/a', '.'").arg(port.load());
        const auto picture = take({"--frames", "60", "-e", chunk, KY_TEST_DATA_DIR "/../../../examples/download.lua"});
        hasEnded = true;
        ASSERT_TRUE(picture);
        // The bar is the only thing of its colour. The view is fitted: the panel is 720 units wide, the bar at most 640
        // by 18.
        const double scale = picture->getWidth() / 720.0, full = 640.0 * 18.0 * scale * scale;
        const int area = count(*picture, [](const KyColor& color) { return color.blue > 0.9f && color.red < 0.4f; });
        EXPECT_GT(area, 0.75 * full * percent / 100) << percent;
        EXPECT_LT(area, 1.05 * full * percent / 100) << percent;
    }
}

TEST_F(KyHostViewTest, StatisticsAreDrawnOverTheScene) {
    const QString redden = "scene.Background = Color(1, 0, 0) "
                           "return coroutine.create(function() while true do coroutine.yield() end end)";
    const QStringList scene{"--frames", "40", "--size", "480x300", "-e", redden};
    const auto plain = take(scene), shown = take(QStringList{"--statistics"} + scene);
    ASSERT_TRUE(plain && shown);
    // Bars are the only thing that is green or yellow.
    const auto countBars = [](const KyImage& image) {
        return count(image, [](const KyColor& color) { return color.green > 0.6f && color.blue < 0.6f; });
    };
    EXPECT_EQ(countBars(*plain), 0);
    EXPECT_GT(countBars(*shown), 300);
    EXPECT_EQ(countRed(*plain), 480 * 300);
    EXPECT_GT(countRed(*shown), 480 * 300 / 2) << "beside it the scene is as it was";
}

TEST_F(KyHostViewTest, APictureTakesThePlaceOfTheOneBeforeAtOnceOrIsNamed) {
    write("other.png", "before");
    QFile::link(getPath("other.png"), getPath("shot.png"));
    QFile before(getPath("other.png"));
    ASSERT_TRUE(before.open(QIODevice::ReadOnly));
    ASSERT_TRUE(take({"--frames", "1", "--size", "8x6"}));
    EXPECT_EQ("before", before.readAll().toStdString());
    EXPECT_EQ(8, load("other.png")->getWidth());
    EXPECT_EQ(2, QDir(mFolder.path()).entryList(QDir::Files | QDir::Hidden).size());
    const KyHostResult result = draw({"--frames", "1", "--screenshot", "no/such/folder/a.png"});
    EXPECT_EQ(1, result.code);
    EXPECT_PRED2(contains, result.errors, "'no/such/folder/a.png'");
}

TEST_F(KyHostViewTest, ADrawingIsShownAloneUnlessThereIsASceneAndScriptsMayChangeIt) {
    write("a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='80' height='60'>"
                   "<rect id='all' width='80' height='60' fill='blue'/></svg>");
    const QString redden = "drawing:find('all').Style.FillColor = Color('#ff0000')";
    const std::tuple<QStringList, int, int> rows[] = {{{"a.svg"}, 0, 0},
                                                      {{"a.svg", "-e", redden}, 10000, 19200},
                                                      {{"a.svg", "a.svg", "-e", redden}, 3000, 9600},
                                                      {{"a.svg", "-e", "drawingView:destroy()"}, 0, 0},
                                                      {{"a.svg", "-e", "drawing:destroy()"}, 0, 0},
                                                      {{"a.svg", "-e", cRedBall}, 1000, 8000}};
    for (const auto& [items, fewest, most] : rows) {
        SCOPED_TRACE(items.join(" ").toStdString());
        const KyHolder<KyImage> picture = take(QStringList{"--frames", "2", "--size", "160x120"} + items);
        ASSERT_TRUE(picture);
        EXPECT_EQ(160, picture->getWidth());
        EXPECT_GE(countRed(*picture), fewest);
        EXPECT_LE(countRed(*picture), most);
    }
}

TEST_F(KyHostViewTest, AChangedScriptIsRunAgainAndAFailingOneKeepsThePicture) {
    write("a.lua", cRedBall);
    QProcess process;
    start(process,
          {"--offscreen", "--watch", "--frames", "150", "--size", "80x60", "--screenshot", "shot.png", "a.lua"});
    ASSERT_TRUE(process.waitForStarted());
    QThread::msleep(700);
    write("b.lua", "scene:removeAllChildren() error('broken', 0)");
    QFile::remove(getPath("a.lua"));
    QFile::rename(getPath("b.lua"), getPath("a.lua"));
    ASSERT_TRUE(process.waitForFinished(cPatience));
    EXPECT_EQ("broken\n", process.readAllStandardError().toStdString());
    EXPECT_EQ(1, process.exitCode());
    const KyHolder<KyImage> picture = load("shot.png");
    ASSERT_TRUE(picture);
    EXPECT_GT(countRed(*picture), 100);
}

TEST_F(KyHostViewTest, ADisplayWithoutGLIsNotAskedToDrawOffScreen) {
    const KyHostResult result = KyHostProcessTest::run({"-a", "-s", "-screen 0 320x240x24 -extension GLX", getProgram(),
                                                        "--offscreen", "--frames", "2", "-e", "print('drawn')"},
                                                       {}, "xvfb-run");
    EXPECT_EQ(0, result.code) << result;
    EXPECT_PRED2(contains, result.output, "drawn\n");
}
