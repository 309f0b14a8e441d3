// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "../../SceneModule/ViewCorePackage/Test/KyDrawingTest.h"

#include "GridPage.h"
#include "KyLamp.h"
#include "LetterboxPass.h"
#include "Turntable.h"

#include "KyQSettingsDialog.h"
#include "KyQtConversion.h"

#include "KyModuleManager.h"

#include <QApplication>
#include <QFile>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTemporaryDir>

#include <fstream>
#include <memory>

namespace {

class DocsTest : public testing::Test {
protected:
    DocsTest() { KyModuleManager::get().initialize(); }
    ~DocsTest() override { KyModuleManager::get().finalize(); }

    /// The files of the documents' blocks of that language.
    static std::vector<std::string> listFiles(const std::string& wanted) {
        std::vector<std::string> files;
        std::ifstream blocks(KY_DOCS_BLOCKS "/blocks.txt");
        for (std::string language, document, file, line;
             std::getline(blocks, language, '\t') && std::getline(blocks, document, '\t') &&
             std::getline(blocks, file, '\t') && std::getline(blocks, line);)
            if (language == wanted)
                files.push_back(KY_DOCS_BLOCKS "/" + file);
        return files;
    }

    static KyInputEvent makeEvent(KyInputEvent::Type type, int x, std::uint32_t state) {
        KyInputEvent event;
        event.setType(type);
        event.setPosition(x, 10);
        event.setState(state);
        return event;
    }
};

class DocsDrawingTest : public KyDrawingTest {};

} // namespace

TEST_F(DocsTest, QmlShowsAndChangesTheLampAsItIsDescribed) {
    const std::vector<std::string> files = listFiles("qml");
    EXPECT_FALSE(files.empty());
    for (const std::string& file : files) {
        KyLamp lamp;
        lamp.setLabel("old");
        QQmlEngine engine;
        const QVariant binding = KyApplication::toQVariant(KyField(static_cast<KyObject*>(&lamp)));
        engine.rootContext()->setContextProperty("lamp", binding.value<QObject*>());
        QQmlComponent component(&engine, QUrl::fromLocalFile(QString::fromStdString(file)));
        const std::unique_ptr<QObject> document(component.create());
        ASSERT_TRUE(document) << component.errorString().toStdString();
        EXPECT_EQ(document->property("title").toString().toStdString(), "hall, 1 tags");
        EXPECT_EQ(document->property("changes").toInt(), 1);
        EXPECT_EQ(lamp.getPower(), 3.0);
        EXPECT_EQ(lamp.getTag(0), "new");
    }
}

TEST_F(DocsTest, TheTurntableTurnsItsNodeWithTheLeftButtonAlone) {
    const KyHolder<KyNode> globe(new KyNode);
    auto* turntable = new Turntable;
    turntable->setObject(globe.get());
    turntable->setSpeed(0.5);
    const std::uint32_t left = KyInputEvent::cLeftButton;
    EXPECT_TRUE(turntable->setInputEvent(makeEvent(KyInputEvent::eMousePressed, 100, left)));
    EXPECT_TRUE(turntable->setInputEvent(makeEvent(KyInputEvent::eMouseMoved, 102, left)));
    EXPECT_NEAR(globe->getOrientation().angle(), 1.0, 1e-9);
    EXPECT_FALSE(turntable->setInputEvent(makeEvent(KyInputEvent::eMouseMoved, 110, left | KyInputEvent::cShift)));
    EXPECT_FALSE(turntable->setInputEvent(makeEvent(KyInputEvent::eMouseReleased, 120, 0)));
    EXPECT_NEAR(globe->getOrientation().angle(), 1.0, 1e-9);
    turntable->destroy();
    ASSERT_TRUE(Turntable::getType());
    KyObject* const byName = KyObject::create("Turntable");
    ASSERT_TRUE(byName);
    EXPECT_TRUE(byName->getAttribute("Speed"));
    byName->destroy();
}

TEST_F(DocsTest, RecordsLeaveTheRegistryAndComeAgain) {
    const auto expectRemoval = [](auto getType, auto finalizeType, const std::string& name) {
        for (int i = 0; i < 2; ++i) {
            const KyType* const type = getType();
            EXPECT_TRUE(type);
            EXPECT_EQ(KyType::getType(name), type);
            finalizeType();
            EXPECT_FALSE(KyType::getType(name));
        }
    };
    expectRemoval(&KyLamp::getType, &KyLamp::finalizeType, "KyLamp");
    expectRemoval(&Turntable::getType, &Turntable::finalizeType, "Turntable");
    expectRemoval(&LetterboxPass::getType, &LetterboxPass::finalizeType, "LetterboxPass");
}

TEST_F(DocsTest, TheGridPageShowsAndSavesWhatIsSet) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("grid.xml");
    Grid grid;
    grid.editSettings()->setFilePath(path);
    GridPage page(grid);
    KyQSettingsDialog dialog;
    EXPECT_TRUE(dialog.showPage("GridPage"));
    auto* const box = page.findChild<QDoubleSpinBox*>();
    ASSERT_TRUE(box);
    EXPECT_EQ(box->value(), 1.0);
    box->setValue(2.5);
    EXPECT_TRUE(dialog.apply());
    EXPECT_EQ(grid.getSpacing(), 2.5);
    box->setValue(7.0);
    page.reset();
    EXPECT_EQ(box->value(), 2.5);

    Grid next;
    next.editSettings()->setFilePath(path);
    EXPECT_TRUE(next.editSettings()->open());
    next.updateDataFromSettings();
    EXPECT_EQ(next.getSpacing(), 2.5);
}

TEST_F(DocsDrawingTest, TheLetterboxBlackensAboveAndBelow) {
    const KyHolder<KyScene> scene(new KyScene);
    const KyHolder<KyCamera> camera(new KyCamera);
    scene->setBackground(KyColor(0, 1, 0));
    auto* pass = KyScenePass::create();
    pass->setScene(scene.get());
    pass->setCamera(camera.get());
    mView->setMainPass(pass);
    auto* bars = new LetterboxPass;
    bars->setAspect(2.0);
    mView->addPass(bars);
    const auto wide = draw();
    for (const auto& [y, color] :
         {std::pair(1, KyColor(0, 0, 0)), std::pair(18, KyColor(0, 0, 0)), std::pair(22, KyColor(0, 1, 0)),
          std::pair(98, KyColor(0, 1, 0)), std::pair(102, KyColor(0, 0, 0)), std::pair(118, KyColor(0, 0, 0))})
        kyExpectColor(wide->getPixel(80, y), color);
    bars->setAspect(1.0);
    EXPECT_TRUE(mCanvas->needsRedraw());
    kyExpectColor(draw()->getPixel(80, 1), KyColor(0, 1, 0));
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
