// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

#include "KyHolder.h"
#include "KyImage.h"
#include "KyURL.h"

#include <QDir>
#include <QThread>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

namespace {

class KyHostViewTest : public KyHostProcessTest {
protected:
    KyHostViewTest() {
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            mHeadless.remove(variable);
    }

    KyHolder<KyImage> load(const QString& name) const {
        return KyHolder<KyImage>(KyImage::create(KyURL(getPath(name).toStdString(), KyURL::eLocalPath)));
    }

    /// Draws off screen, with no display in reach, into shot.png.
    KyHostResult draw(const QStringList& arguments) {
        std::swap(mEnvironment, mHeadless);
        const KyHostResult result = run(QStringList{"--offscreen", "--screenshot", "shot.png"} + arguments);
        std::swap(mEnvironment, mHeadless);
        return result;
    }

    QProcessEnvironment mHeadless = mEnvironment;
};

/// Distinct colours in a coarse grid over the picture.
std::size_t countColors(const KyImage& image) {
    std::set<std::string> colors;
    for (int y = 0; y < image.getHeight(); y += 3)
        for (int x = 0; x < image.getWidth(); x += 3)
            colors.insert(image.getPixel(x, y).toString(2));
    return colors.size();
}

/// How many pixels are red for the most part.
int countRed(const KyImage& image) {
    int count = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x) {
            const KyColor color = image.getPixel(x, y);
            if (color.red > 2.0f * color.green && color.red > 2.0f * color.blue && color.red > 0.2f)
                ++count;
        }
    return count;
}

constexpr const char* cRedBall = "local ball = KyMeshNode() ball:makeSphere(1) ball:setColor(1, 0, 0) "
                                 "scene:addChild(ball) camera:lookAt(0, 0, 5, 0, 0, 0)";

} // namespace

TEST_F(KyHostViewTest, ThePictureShowsWhatTheScriptMade) {
    for (const auto& [script, fewest, most] :
         {std::tuple{"camera:lookAt(0, 0, 5, 0, 0, 0)", 0, 0}, {cRedBall, 1000, 8000}}) {
        const KyHostResult result = draw({"--frames", "1", "--size", "160x120", "-e", script});
        ASSERT_EQ(0, result.code) << result;
        const KyHolder<KyImage> picture = load("shot.png");
        ASSERT_TRUE(picture);
        EXPECT_EQ(160, picture->getWidth());
        EXPECT_GE(countRed(*picture), fewest);
        EXPECT_LE(countRed(*picture), most);
    }
}

TEST_F(KyHostViewTest, ThePictureIsTheLastFrame) {
    const QString leave = QString(cRedBall) +
                          " return coroutine.create(function() for i = 1, 2 do coroutine.yield() end "
                          "ball = scene.Children[0] ball.Visible = false end)";
    for (const auto& [frames, isThere] : {std::pair{"2", true}, std::pair{"3", false}}) {
        const KyHostResult result = draw({"--frames", frames, "--size", "80x60", "-e", leave});
        ASSERT_EQ(0, result.code) << result;
        const KyHolder<KyImage> picture = load("shot.png");
        ASSERT_TRUE(picture);
        EXPECT_EQ(isThere, countRed(*picture) > 0) << frames;
    }
}

TEST_F(KyHostViewTest, ExamplesDrawMoreThanABackground) {
    mHeadless.insert("QT_QPA_PLATFORM", "nonsense"); // Off screen, any choice does.
    for (const char* name : {"hello.lua", "objects.lua", "values.lua", "coroutines.lua", "model.lua", "gear.obj"}) {
        const KyHostResult result =
            draw({"--frames", "3", "--size", "320x180", QString(KY_TEST_DATA_DIR "/../../../examples/") + name});
        ASSERT_EQ(0, result.code) << name << result;
        EXPECT_EQ("", result.errors) << name;
        const KyHolder<KyImage> picture = load("shot.png");
        ASSERT_TRUE(picture);
        EXPECT_GT(countColors(*picture), 150u) << name;
    }
}

TEST_F(KyHostViewTest, APictureThatCannotBeWrittenIsNamed) {
    const KyHostResult result = draw({"--frames", "1", "--screenshot", "no/such/folder/a.png"});
    EXPECT_EQ(1, result.code);
    EXPECT_PRED2(contains, result.errors, "'no/such/folder/a.png'");
}

TEST_F(KyHostViewTest, APictureTakesThePlaceOfTheOneBeforeAtOnce) {
    write("other.png", "before");
    QFile::link(getPath("other.png"), getPath("shot.png"));
    QFile before(getPath("other.png"));
    ASSERT_TRUE(before.open(QIODevice::ReadOnly));
    const KyHostResult result = draw({"--frames", "1", "--size", "8x6"});
    ASSERT_EQ(0, result.code) << result;
    EXPECT_EQ("before", before.readAll().toStdString());
    EXPECT_EQ(8, load("other.png")->getWidth());
    EXPECT_EQ(2, QDir(mFolder.path()).entryList(QDir::Files | QDir::Hidden).size());
}

TEST_F(KyHostViewTest, AChangedScriptIsRunAgainAndAFailingOneKeepsThePicture) {
    write("a.lua", cRedBall);
    QProcess process;
    process.setProcessEnvironment(mHeadless);
    process.setWorkingDirectory(mFolder.path());
    process.start(getProgram(), {"--offscreen", "--watch", "--frames", "150", "--size", "80x60", "--screenshot",
                                 "shot.png", "a.lua"});
    ASSERT_TRUE(process.waitForStarted());
    QThread::msleep(700);
    write("b.lua", "scene:removeAllChildren() error('broken', 0)");
    QFile::remove(getPath("a.lua"));
    QFile::rename(getPath("b.lua"), getPath("a.lua"));
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ("broken\n", process.readAllStandardError().toStdString());
    EXPECT_EQ(1, process.exitCode());
    const KyHolder<KyImage> picture = load("shot.png");
    ASSERT_TRUE(picture);
    EXPECT_GT(countRed(*picture), 100);
}
