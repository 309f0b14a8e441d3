// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPassTesting.h"

#include "KyException.h"
#include "KyOffscreenContext.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// The part of the pixels of which a component differs by more than edges and letters may.
double compare(const QImage& a, const QImage& b) {
    constexpr int cTolerance = 48;
    if (a.size() != b.size() || a.isNull())
        return 1.0;
    int nbDifferent = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor left = a.pixelColor(x, y), right = b.pixelColor(x, y);
            nbDifferent += std::abs(left.red() - right.red()) > cTolerance ||
                           std::abs(left.green() - right.green()) > cTolerance ||
                           std::abs(left.blue() - right.blue()) > cTolerance;
        }
    return static_cast<double>(nbDifferent) / (a.width() * a.height());
}

QImage paintWithQt(QGraphicsScene& scene, const QSize& size, const QRectF& source) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    scene.render(&painter, QRectF(QPointF(), size), source, Qt::IgnoreAspectRatio);
    return image;
}

constexpr double cLargestDifference = 0.02;

TEST_P(KyQtPassTest, ShowsASceneAsQtPaintsIt) {
    Ky2DScene& scene = *mPass.edit2DScene();
    addRect(scene, -60, -50, 50, Qt::red);
    addRect(scene, -20, -30, 70, QColor(0, 0, 255, 128))->setRotation(20.0);
    scene.getQGraphicsScene()->addText("A text")->setPos(0, 20);
    mPass.setViewRectSize({160.0f, 120.0f});
    const QImage shown = mOverlay.draw();
    EXPECT_EQ(mPass.isPaintedByFrameBuffer(), GetParam() == KyQtPass::eFrameBuffer);
    const QRectF source(-80, -60, 160, 120);
    const QImage expected = paintWithQt(*scene.getQGraphicsScene(), {160, 120}, source);
    EXPECT_LE(compare(shown, expected), cLargestDifference);
    EXPECT_GT(compare(shown, expected.mirrored()), 0.2);
    // Half-transparent blue over white, with no dark rim.
    const QColor blended = shown.pixelColor(100, 60);
    EXPECT_NEAR(blended.red(), 127, 2);
    EXPECT_EQ(blended.blue(), 255);
}

TEST_P(KyQtPassTest, ShowsAWidgetInTheSizeOfThePicture) {
    const auto panel = makePanel();
    QGraphicsProxyWidget* const proxy = mPass.setQWidget(panel.get(), false);
    ASSERT_TRUE(proxy);
    EXPECT_EQ(mPass.setQWidget(panel.get(), true), proxy);
    mOverlay.settle();
    for (const QSize& size : {QSize(160, 120), QSize(301, 207)}) {
        mOverlay.setSize(size.width(), size.height());
        mOverlay.settle();
        EXPECT_EQ(panel->size(), size);
        const QImage expected = paintWithQt(*mPass.editQGraphicsScene(), size, QRectF(QPointF(), size));
        EXPECT_LE(compare(mOverlay.draw(), expected), cLargestDifference);
    }
    mPass.setViewScale({0.5f, 2.0f});
    mOverlay.settle();
    EXPECT_EQ(panel->size(), QSize(150, 414));
    EXPECT_EQ(mPass.getScenePosition({10.0f, 10.0f}, mOverlay.view.get()), KyVec2f(5.0f, 20.0f));
}

TEST_P(KyQtPassTest, PaintsWhenSomethingChangedAndElseNot) {
    Ky2DRect* const rect = addRect(*mPass.edit2DScene(), 0, 0, 50, Qt::red);
    QGraphicsItem* const item = mPass.editQGraphicsScene()->addRect(1, 2, 3, 4);
    using Changes = std::vector<std::pair<const char*, std::function<void()>>>;
    const Changes cChanges{
        {"node", [&] { rect->setTranslation(5, 5); }},
        {"item",
         [&] {
             item->setPos(7, 7);
             kyRunFrames(2);
         }},
        {"position", [&] { mPass.setViewPosition(KyVec2f(1.0f, 2.0f)); }},
        {"rectangle", [&] { mPass.setViewRectSize(KyVec2f(300.0f, 200.0f)); }},
        {"scale", [&] { mPass.setViewScale(KyVec2f(2.0f, 2.0f)); }},
        {"proportions", [&] { mPass.setKeepAspectRatioEnabled(false); }},
        {"size", [&] { mOverlay.setSize(170, 90); }},
        {"scene", [&] { mPass.set2DScene(Ky2DScene::create(), true); }},
    };
    int nbSignals = 0;
    mPass.needUpdateSignal().connect([&nbSignals](const KyQtPass*) { ++nbSignals; });
    for (const auto& [name, change] : cChanges) {
        mOverlay.settle();
        nbSignals = 0;
        EXPECT_EQ(mOverlay.countPaintings(change), 1u) << name;
        EXPECT_EQ(nbSignals, 1) << name;
    }
    const Changes cNoChanges{
        {"nothing", [] {}},
        {"same scene", [&] { mPass.set2DScene(mPass.edit2DScene(), false); }},
        {"same position", [&] { mPass.setViewPosition(mPass.getViewPosition()); }},
        {"not a number", [&] { mPass.setViewScale(KyVec2f(NAN, 1.0f)); }},
        {"no regions", [&] { QMetaObject::invokeMethod(&mPass, "onQGraphicsSceneChanged", Q_ARG(QList<QRectF>, {})); }},
    };
    mOverlay.settle();
    nbSignals = 0;
    for (const auto& [name, change] : cNoChanges) {
        EXPECT_EQ(mOverlay.countPaintings(change), 0u) << name;
        EXPECT_FALSE(mOverlay.canvas->needsRedraw()) << name;
    }
    EXPECT_EQ(nbSignals, 0);
}

TEST_P(KyQtPassTest, TellsTheColourUnderAPixel) {
    addRect(*mPass.edit2DScene(), 0, 0, 40, QColor(255, 0, 0, 128));
    addRect(*mPass.edit2DScene(), -40, -40, 40, Qt::green);
    mPass.setViewRectSize({160.0f, 120.0f});
    EXPECT_EQ(mOverlay.getColor(90, 70), KyColor(0, 0, 0, 0)) << "no frame yet";
    mOverlay.render();
    const KyColor half = mOverlay.getColor(90.7f, 70.2f);
    EXPECT_NEAR(half.red, 1.0f, 0.01f);
    EXPECT_NEAR(half.alpha, 0.5f, 0.01f);
    EXPECT_EQ(mOverlay.getColor(50, 30), KyColor(0, 1, 0, 1));
    for (const KyVec2f& outside : {KyVec2f(1, 1), KyVec2f(-1, 70), KyVec2f(160, 70), KyVec2f(90, 120),
                                   KyVec2f(1e20f, 0), KyVec2f(std::numeric_limits<float>::quiet_NaN(), 0)})
        EXPECT_EQ(mOverlay.getColor(outside.x, outside.y), KyColor(0, 0, 0, 0)) << outside.x;
    mPass.setViewPosition({500.0f, 0.0f});
    EXPECT_EQ(mOverlay.getColor(50, 30), KyColor(0, 1, 0, 1)) << "until it is painted";
    mOverlay.render();
    EXPECT_EQ(mOverlay.getColor(50, 30), KyColor(0, 0, 0, 0));
}

TEST_P(KyQtPassTest, BearsAnySize) {
    addRect(*mPass.edit2DScene(), 0, 0, 40, Qt::red);
    for (const QSize& size : {QSize(0, 0), QSize(16384, 4), QSize(1, 16384), QSize(1, 1), QSize(160, 120)}) {
        mOverlay.setSize(size.width(), size.height());
        mOverlay.render();
    }
    // Scales that make no picture.
    mPass.setQWidget(new QWidget, true);
    for (const float scale : {0.0f, -1.0f, 1e30f, 1.0f}) {
        mPass.setViewScale({scale, 1.0f});
        mOverlay.render();
        EXPECT_FALSE(mPass.isUpdateNeeded() && scale != 1.0f) << scale;
        EXPECT_EQ(mOverlay.getColor(1, 1).alpha > 0.0f, scale == 1.0f) << scale;
    }
    mPass.setQWidget(nullptr, false);
    mOverlay.settle();
    const std::uint64_t before = mPass.getFrameBuffer()->getColorTexture()->getVersion();
    EXPECT_EQ(mOverlay.countPaintings([&] { mPass.setViewRectSize({0.0f, 100.0f}); }), 0u);
    EXPECT_GT(mPass.getFrameBuffer()->getColorTexture()->getVersion(), before);
}

INSTANTIATE_TEST_SUITE_P(Methods, KyQtPassTest, testing::Values(KyQtPass::eFrameBuffer, KyQtPass::eImage),
                         [](const auto& test) { return test.param == KyQtPass::eImage ? "Image" : "FrameBuffer"; });

TEST(KyQtPassPositionTest, FollowsTheWindowOntoTheScene) {
    struct Case {
        int width, height;
        bool keepsRatio;
        KyVec2f scale, pixel, expected;
    };
    const Case cCases[] = {
        {200, 100, true, {1, 1}, {100, 50}, {10, 20}},     {200, 100, true, {1, 1}, {0, 0}, {-90, -30}},
        {100, 200, true, {1, 1}, {0, 0}, {-40, -80}},      {100, 200, false, {1, 1}, {100, 200}, {60, 70}},
        {200, 100, true, {2, -1}, {200, 100}, {210, -30}},
    };
    const KyHolder<KyCanvas> canvas(new KyCanvas);
    const KyHolder<KyGraphicsViewMultiPass> view(KyQtPass::createQtPassOverlayView(nullptr, true, false));
    canvas->insertView(view.get());
    KyQtPass& pass = *KyQtPass::cast(view->getMainPass());
    pass.setViewPosition({10.0f, 20.0f});
    pass.setViewRectSize({100.0f, 100.0f});
    for (const Case& c : cCases) {
        canvas->setSize(c.width, c.height);
        pass.setKeepAspectRatioEnabled(c.keepsRatio);
        pass.setViewScale(c.scale);
        const KyVec2f position = pass.getScenePosition(c.pixel, view.get());
        EXPECT_NEAR(position.x, c.expected.x, 1e-3f);
        EXPECT_NEAR(position.y, c.expected.y, 1e-3f);
        pass.adaptQGraphicsView(view.get());
        const QPointF back = pass.editQGraphicsView()->viewportTransform().map(
            QPointF(static_cast<double>(position.x), static_cast<double>(position.y)));
        EXPECT_NEAR(back.x(), static_cast<double>(c.pixel.x), 1e-3);
        EXPECT_NEAR(back.y(), static_cast<double>(c.pixel.y), 1e-3);
    }
    const std::unique_ptr<Ky2DScene> copied(pass.edit2DScene()->clone());
    Ky2DRect* const rect = addRect(*pass.edit2DScene(), 0, 0, 60, Qt::red);
    std::vector<KyIntersected*> results;
    EXPECT_TRUE(pass.pick({100.0f, 50.0f}, view.get(), results));
    EXPECT_EQ(results.size(), 1u);
    for (KyIntersected* result : results)
        result->destroy();
    rect->destroy();
    const KyHolder<KyQtPass> copy(pass.clone());
    EXPECT_EQ(copy->getViewPosition(), pass.getViewPosition());
    EXPECT_TRUE(copy->owns2DScene() && copy->edit2DScene() != pass.edit2DScene());
    endDeferred();
}

TEST(KyQtPassEnvironmentTest, ARendererThatSharesNothingWithQtShowsItAsWell) {
    std::string error;
    const auto first = KyOffscreenContext::create(error);
    const auto second = KyOffscreenContext::create(error);
    ASSERT_TRUE(first && second) << error;
    for (const auto method : {KyQtPass::eAutomatic, KyQtPass::eFrameBuffer}) {
        QtPassOverlay overlay(*first, method);
        addRect(*overlay.pass->edit2DScene(), -40, -40, 80, Qt::red);
        overlay.pass->setViewRectSize({160.0f, 120.0f});
        EXPECT_EQ(overlay.draw().pixelColor(80, 60), QColor(Qt::red));
        EXPECT_EQ(overlay.draw().pixelColor(2, 2), QColor(Qt::white));
        EXPECT_FALSE(overlay.pass->isPaintedByFrameBuffer());
        overlay.settle();
        EXPECT_EQ(overlay.countPaintings([&second] { second->makeCurrent(); }), 0u);
    }
}

TEST(KyQtPassEnvironmentTest, ChoosesTheWayThatCostsLessAndWorks) {
    std::string error;
    const auto device = KyQGraphicsDevice::createOffscreen(error, KyWindow::getDefaultFormat());
    ASSERT_TRUE(device) << error;
    const auto paintsByFrameBuffer = [&device](KyQtPass::PaintMethod method) {
        QtPassOverlay overlay(*device, method);
        addRect(*overlay.pass->edit2DScene(), -200, -200, 400, Qt::red);
        overlay.pass->editQGraphicsScene()->addText("A text");
        EXPECT_EQ(overlay.draw().pixelColor(80, 20), QColor(Qt::red));
        return overlay.pass->isPaintedByFrameBuffer();
    };
    device->makeCurrent();
    EXPECT_EQ(paintsByFrameBuffer(KyQtPass::eAutomatic), !device->isSoftware());
    const QSurfaceFormat former = QSurfaceFormat::defaultFormat();
    QSurfaceFormat::setDefaultFormat(KyWindow::getDefaultFormat());
    EXPECT_TRUE(paintsByFrameBuffer(KyQtPass::eFrameBuffer)) << "no core profile";
    QSurfaceFormat::setDefaultFormat(former);
}

TEST(KyQtPassEnvironmentTest, WorksAtOtherScaleFactors) {
    for (const char* factor : {"1.5", "2"})
        EXPECT_EQ(kyRunProcess("*KyQtPassTest.Shows*:*KyQtPassTest.Tells*", "QT_SCALE_FACTOR", factor), 0);
}

TEST(KyQtPassEnvironmentTest, APassThatLivesWhenTheLibraryEndsShowsNothing) {
    std::string error;
    const auto device = KyQGraphicsDevice::createOffscreen(error, KyWindow::getDefaultFormat());
    ASSERT_TRUE(device) << error;
    QLabel label("label");
    QtPassOverlay overlay(*device);
    overlay.pass->setQWidget(&label, false);
    overlay.settle();
    KyQtPass::finalizeType();
    KyQtPass::initializeType();
    EXPECT_FALSE(overlay.pass->editQWidget() || overlay.pass->editQGraphicsView() || label.isVisible());
    EXPECT_EQ(overlay.draw().pixelColor(80, 60), QColor(Qt::white));
    overlay.pass->adaptQGraphicsView(overlay.view.get());
}

TEST(KyQtPassScriptTest, IsWorkedByItsAttributes) {
    const KyHolder<KyQtPass> pass(KyQtPass::cast(KyObject::create("KyQtPass")));
    ASSERT_TRUE(pass);
    const auto set = [&pass](const char* name, const KyField& value) {
        return pass->getAttribute(name)->setValue(*pass, value);
    };
    EXPECT_TRUE(set("ViewScale", KyField(KyVec2f(2.0f, 3.0f))));
    EXPECT_EQ(pass->getViewScale(), KyVec2f(2.0f, 3.0f));
    EXPECT_TRUE(set("KeepAspectRatio", KyField(false)));
    EXPECT_FALSE(pass->isKeepAspectRatioEnabled());
    EXPECT_TRUE(set("PaintMethod", KyField(std::int32_t{KyQtPass::eImage})));
    set("PaintMethod", KyField(std::int32_t{7}));
    EXPECT_EQ(pass->getPaintMethod(), KyQtPass::eImage);
    Ky2DScene scene;
    EXPECT_TRUE(set("Scene2D", KyField(&scene)));
    EXPECT_TRUE(pass->edit2DScene() == &scene && !pass->owns2DScene());
    ASSERT_TRUE(pass->editSignal("needUpdate"));
    EXPECT_EQ(pass->getSignalAccess(pass->getNbSignals() - 1), 2);
    endDeferred();
}

TEST(KyQtPassScriptTest, LoadsAFormAndItsPropertiesByName) {
    const KyHolder<KyQtPass> pass(KyQtPass::create());
    const QTemporaryDir folder;
    const auto write = [&folder](const char* text) {
        QFile file(folder.filePath("form.ui"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
        return file.fileName().toStdString();
    };
    static std::string reports;
    const auto handler = KyException::setReportHandler([](const std::string& text) { reports += text + '\n'; });
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(pass->setWidgetProperty("", "enabled", KyField(false)));
    EXPECT_EQ(pass->getError(), "there is no widget");
    EXPECT_EQ(reports, "KyQtPass: there is no widget.\n") << "once";
    EXPECT_TRUE(pass->loadForm(write("<ui version='4.0'><class>Form</class><widget class='QWidget' name='form'>"
                                     "<widget class='QLineEdit' name='edit'><property name='text'>"
                                     "<string>first</string></property></widget></widget></ui>")))
        << pass->getError();
    const QPointer<QWidget> form = pass->editQWidget();
    EXPECT_EQ(pass->getWidgetProperty("edit", "text").toString(), "first");
    EXPECT_TRUE(pass->setWidgetProperty("edit", "text", KyField(std::string("second"))));
    EXPECT_EQ(form->findChild<QLineEdit*>("edit")->text(), "second");
    EXPECT_TRUE(pass->setWidgetProperty("form", "enabled", KyField(false)));
    EXPECT_FALSE(form->isEnabled());
    EXPECT_FALSE(pass->setWidgetProperty("edit", "colour", KyField(1)));
    EXPECT_FALSE(pass->setWidgetProperty("other", "text", KyField(1)));
    EXPECT_FALSE(pass->loadForm(write("<ui><broken")));
    EXPECT_FALSE(pass->getError().empty());
    EXPECT_FALSE(pass->loadForm("not/there.ui"));
    EXPECT_NE(reports.find("KyQtPass: cannot open \"not/there.ui\": "), std::string::npos) << reports;
    KyException::setReportHandler(handler);
    EXPECT_EQ(pass->editQWidget(), form) << "the former stays";
}

} // namespace
