// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPassTesting.h"

#include "KyField.h"

#include <QDesktopServices>
#include <QQmlComponent>
#include <QQmlEngine>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace {

struct Failure {
    const char* name;
    const char* text;
    int line;
    const char* words;

    friend void PrintTo(const Failure& failure, std::ostream* stream) { *stream << failure.name; }
};

class KyQmlPassFailureTest : public KyQmlPassTest, public testing::WithParamInterface<Failure> {};

TEST_P(KyQmlPassFailureTest, IsReportedAndRepairedOnDisk) {
    show(GetParam().text);
    EXPECT_FALSE(mPass->isLoaded());
    EXPECT_EQ(mPass->getQmlText(), path.toStdString());
    EXPECT_NE(mPass->getErrorText().find(GetParam().words), std::string::npos) << mPass->getErrorText();
    EXPECT_EQ(mPass->getQmlContext()->contextProperty("qmlPathErrors").toString(), "panel.qml");
    ASSERT_EQ(getErrors().size(), 1);
    const QVariantMap error = getErrors().first().toMap();
    EXPECT_EQ(error["line"].toInt(), GetParam().line);
    EXPECT_TRUE(error["description"].toString().contains(GetParam().words));
    EXPECT_EQ(mPass->getQml(), QUrl(KyQmlPass::cErrorsReport));
    ASSERT_TRUE(mPass->getQuickItem());
    write(makeFill("lime"));
    EXPECT_TRUE(showsSoon(Qt::green));
    EXPECT_TRUE(mPass->isLoaded() && mPass->getErrorText().empty());
}

INSTANTIATE_TEST_SUITE_P(, KyQmlPassFailureTest,
                         testing::Values(Failure{"syntax", "import QtQuick 2.15\nItem { x: }", 2, "Expected token"},
                                         Failure{"type", "import QtQuick 2.15\n\nRectangel {}", 3, "not a type"},
                                         Failure{"import", "import Nowhere 1.0\nItem {}", 1, "not installed"},
                                         Failure{"root", "import QtQml 2.15\nQtObject {}", -1, "no Item"},
                                         Failure{"empty", "", -1, "File is empty"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(KyQmlPassTest, TheReportOpensAndReloadsTheFailingFile) {
    // Stands for the desktop: it only takes the URL.
    QQmlComponent desktop(KyQmlPass::getQmlEngine());
    QDesktopServices::setUrlHandler("file", &desktop, "loadUrl");
    mPass->setFboSize({800, 500});
    write("Rectangel {}");
    mPass->setQml(QUrl::fromLocalFile(path), false);
    render();
    ASSERT_TRUE(mPass->getQuickItem());
    click("open");
    EXPECT_EQ(desktop.url(), QUrl::fromLocalFile(path));
    QDesktopServices::unsetUrlHandler("file");
    write(makeFill("red"));
    click("reload");
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
    EXPECT_TRUE(mPass->getWatchedQml().isEmpty());
}

TEST_F(KyQmlPassTest, ABrokenReportIsOnlyLogged) {
    mPass->setErrorsReport(QUrl("qrc:///qml/Nowhere"));
    show("Rectangel {}");
    const std::string text = mPass->getErrorText();
    for (int i = 0; i < 3; ++i)
        render();
    EXPECT_EQ(mPass->getErrorText(), text);
    EXPECT_FALSE(mPass->getQuickItem());
    EXPECT_EQ(getColor(), QColor(Qt::blue));
    mPass->setEnableErrorsReport(false);
    mPass->setQml(QUrl("file:///nowhere.qml"), false);
    render();
    EXPECT_EQ(mPass->getQml(), QUrl("file:///nowhere.qml"));
}

TEST_F(KyQmlPassTest, TheReportOffersWhatThereIsRoomAndAFileFor) {
    struct Case {
        QUrl url;
        QSize size;
        bool opens, reloads;
    };
    const QUrl file = QUrl::fromLocalFile(write("Rectangel {}")), remote("http://127.0.0.1:1/a.qml");
    for (const auto& [url, size, opens, reloads] : {Case{file, {800, 500}, true, true},
                                                    {remote, {800, 500}, false, true},
                                                    {file, {200, 120}, true, true},
                                                    {file, {77, 43}, false, false}}) {
        mPass->setFboSize(size);
        mPass->setQml(url, false);
        ASSERT_TRUE(kyRunUntil([&] {
            render();
            return mPass->getQuickItem() && mPass->getQml() != url;
        }));
        const auto find = [this](const char* name) { return mPass->getQuickItem()->findChild<QQuickItem*>(name); };
        EXPECT_EQ(find("open")->isVisible(), opens) << qPrintable(url.toString()) << size.width();
        EXPECT_EQ(find("reload")->isVisible(), reloads) << qPrintable(url.toString()) << size.width();
        EXPECT_GT(find("errors")->height(), size.height() / 2.5);
    }
}

TEST_F(KyQmlPassTest, OfVeryManyErrorsTheFirstAreShown) {
    std::string text = "import QtQuick 2.15\nItem {\n";
    for (int i = 0; i < 5001; ++i)
        text += "property int a: 1\n";
    show(text + "}");
    ASSERT_EQ(getErrors().size(), 101);
    EXPECT_EQ(getErrors().first().toMap()["line"].toInt(), 4);
    EXPECT_EQ(getErrors().last().toMap()["more"].toInt(), 4900);
    EXPECT_NE(mPass->getErrorText().find("4900 more"), std::string::npos);
}

TEST_F(KyQmlPassTest, WhoListensKnowsEachAttribute) {
    std::map<std::string, std::string> known{{"Qml", ""}, {"Error", ""}, {"Loaded", "false"}};
    const auto read = [this](const std::string& name) {
        KyObject* const object = mPass.get();
        KyField value;
        object->getAttribute(name)->getValue(*object, value);
        return value.toString();
    };
    auto listening =
        mPass->modifiedSignal().connect([&](KyObject*, KyObjectModificationType, const std::string& name, int) {
            if (known.contains(name))
                known[name] = read(name);
        });
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"broken", [this] { show("Rectangel {}"); }},
        {"repaired", [this] { show(makeFill("red")); }},
        {"root deleted", [this] { delete mPass->getQuickItem(); }},
        {"shown again", [this] { show(makeFill("lime")); }},
        {"graphics ended", [this] { mPass->cleanupGraphicsRessources(); }},
        {"broken again", [this] { show("Rectangel {}"); }},
        {"model ended", [this] { mPass->cleanupModelRessources(); }}};
    for (const auto& [name, step] : steps) {
        step();
        for (const auto& [attribute, value] : known)
            EXPECT_EQ(value, read(attribute)) << attribute << ", " << name;
    }
    EXPECT_EQ(known["Error"], "");
    listening.disconnect();
}

TEST_F(KyQmlPassTest, AQmlWhosePassIsGoneHearsNothingMore) {
    KyHolder<KyQmlPass> lamp(KyQmlPass::create());
    mPass->setContextObject("lamp", lamp.get());
    show("import QtQuick 2.15\nText { text: lamp.Name; onTextChanged: console.warn('heard') }");
    static int nbMessages;
    nbMessages = 0;
    const auto before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++nbMessages; });
    lamp->setName("red");
    EXPECT_EQ(nbMessages, 1);
    mBack->remove(mOverlay.get());
    mOverlay.reset();
    mPass.reset();
    lamp->setName("lime");
    lamp.reset();
    EXPECT_EQ(nbMessages, 1);
    qInstallMessageHandler(before);
}

struct Moment {
    const char* name;
    /// QML with the script in the place of %1.
    const char* text;

    friend void PrintTo(const Moment& moment, std::ostream* stream) { *stream << moment.name; }
};

class KyQmlPassEndTest : public KyQmlPassTest, public testing::WithParamInterface<Moment> {
protected:
    /// The QML runs this once, and a bit more.
    void runInQml(const std::function<void()>& action) {
        QObject bridge;
        QObject::connect(&bridge, &QObject::objectNameChanged, [&](const QString& name) {
            if (name == "act")
                action();
        });
        const QString script = "if (bridge.objectName == '') { bridge.objectName = 'act'; bridge.objectName = 'done' }";
        mPass->setEnableErrorsReport(false);
        mPass->getQmlContext()->setContextProperty("bridge", &bridge);
        show(makeFill("red", qPrintable(QString(GetParam().text).arg(script))));
        EXPECT_TRUE(kyRunUntil([&] {
            if (mPass)
                click(QPointF(cWidth / 2, cHeight / 2));
            render();
            return bridge.objectName() == "done";
        }));
        kyRunFrames(3);
        render();
        bridge.disconnect();
    }
};

TEST_P(KyQmlPassEndTest, ItsOwnQmlMayEndThePass) {
    QPointer<KyQmlPass> pass(mPass.get());
    QPointer<QQuickWindow> window;
    runInQml([&] {
        window = mPass->getQuickWindow();
        mBack->remove(mOverlay.get());
        mOverlay.reset();
        mPass.reset();
    });
    EXPECT_FALSE(pass || window);
    EXPECT_EQ(getColor(), QColor(Qt::blue));
}

TEST_P(KyQmlPassEndTest, ItsOwnQmlMayEndItsModel) {
    runInQml([&] { mPass->cleanupModelRessources(); });
    EXPECT_EQ(getColor(), QColor(Qt::blue));
    show(makeFill("lime"));
    EXPECT_EQ(getColor(), QColor(Qt::green));
}

TEST_P(KyQmlPassEndTest, ItsOwnQmlMayEndItsGraphics) {
    QPointer<QQuickWindow> window;
    runInQml([&] {
        window = mPass->getQuickWindow();
        mPass->cleanupGraphicsRessources();
    });
    EXPECT_FALSE(window);
    EXPECT_TRUE(showsSoon(Qt::red));
}

TEST_P(KyQmlPassEndTest, ItsOwnQmlMayEndTheEngine) {
    const QPointer<QQmlEngine> engine(KyQmlPass::getQmlEngine());
    runInQml(&KyQmlPass::finalizeClass);
    EXPECT_FALSE(engine);
    KyQmlPass::initializeClass();
    show(makeFill("lime"));
    EXPECT_EQ(getColor(), QColor(Qt::green));
}

INSTANTIATE_TEST_SUITE_P(
    , KyQmlPassEndTest,
    testing::Values(Moment{"whenATimerFires", "Timer { running: true; interval: 1; onTriggered: { %1 } }"},
                    Moment{"whenClicked", "MouseArea { anchors.fill: parent; onClicked: { %1 } }"},
                    Moment{"whenCreated", "Component.onCompleted: { %1 }"},
                    Moment{"whenSized", "onWidthChanged: { %1 }"},
                    Moment{"whenPainted", "ListView { anchors.fill: parent; model: 1; delegate: Item { "
                                          "Component.onCompleted: { %1 } } }"}),
    [](const auto& test) { return std::string(test.param.name); });

struct Writing {
    const char* name;
    void (*write)(const QString& path, const QByteArray& text);

    friend void PrintTo(const Writing& writing, std::ostream* stream) { *stream << writing.name; }
};

/// A name in the same folder that was not there yet.
QString makeOtherName(const QString& path) {
    static int count = 0;
    return path + QString::number(++count);
}

void writeByRename(const QString& path, const QByteArray& text) {
    writeFile(path + "~", text);
    std::rename(qPrintable(path + "~"), qPrintable(path));
}

void writeWhileItIsOpen(const QString& path, const QByteArray& text) {
    static std::vector<std::unique_ptr<QFile>> readers;
    readers.push_back(std::make_unique<QFile>(path));
    ASSERT_TRUE(readers.back()->open(QIODevice::ReadOnly));
    writeByRename(path, text);
}

void writeFolder(const QString& path, const QByteArray& text) {
    const QString folder = QFileInfo(path).path();
    ASSERT_TRUE(QDir().rename(folder, makeOtherName(folder)) && QDir().mkdir(folder + "~"));
    writeFile(folder + "~/panel.qml", text);
    ASSERT_TRUE(QDir().rename(folder + "~", folder));
}

void writeLink(const QString& path, const QByteArray& text) {
    const QString target = makeOtherName(path);
    writeFile(target, text);
    ASSERT_TRUE(QFile::link(target, path + "~"));
    std::rename(qPrintable(path + "~"), qPrintable(path));
}

class KyQmlPassWritingTest : public KyQmlPassTest, public testing::WithParamInterface<Writing> {};

TEST_P(KyQmlPassWritingTest, ChangesAreFollowedAgainAndAgain) {
    show(makeFill("red"));
    EXPECT_EQ(getColor(), QColor(Qt::red));
    for (const auto& [name, color] : {std::pair("lime", Qt::green), {"white", Qt::white}, {"yellow", Qt::yellow}}) {
        GetParam().write(path, QByteArray::fromStdString(makeFill(name)));
        EXPECT_TRUE(showsSoon(color)) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(, KyQmlPassWritingTest,
                         testing::Values(Writing{"inPlace", &writeFile}, Writing{"byRename", &writeByRename},
                                         Writing{"whileItIsOpen", &writeWhileItIsOpen},
                                         Writing{"byFolder", &writeFolder}, Writing{"byLink", &writeLink},
                                         Writing{"afterRemoval",
                                                 [](const QString& path, const QByteArray& text) {
                                                     QFile::remove(path);
                                                     kyRunFrames(30);
                                                     writeFile(path, text);
                                                 }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(KyQmlPassTest, AFileThatChangedWhileAnotherWasShownIsReadAnew) {
    const QString other = mDirectory.filePath("other.qml");
    writeFile(other, "import QtQuick 2.15\nItem {}");
    show(makeFill("red"));
    mPass->setQml(other);
    render();
    show(makeFill("lime"));
    EXPECT_EQ(getColor(), QColor(Qt::green));
}

TEST_F(KyQmlPassTest, QmlThatMisbehavesHarmsNothing) {
    for (const char* more :
         {"Component.onCompleted: { throw new Error('no') }", "Component.onCompleted: { nothing.at.all() }",
          "Component.onCompleted: { parent.destroy() }", "width: height + 1; height: width + 1",
          "property int a: b + 1; property int b: a + 1"}) {
        show(makeFill("red", more));
        EXPECT_TRUE(mPass->isLoaded()) << more;
    }
    delete mPass->getQuickItem();
    EXPECT_FALSE(mPass->isLoaded());
    render();
    EXPECT_FALSE(mPass->getQuickItem());
    EXPECT_EQ(getColor(), QColor(Qt::blue));
}

TEST_F(KyQmlPassTest, AFinalisedLibraryLeavesItEmptyButAlive) {
    show(makeFill("red"));
    const KyHolder<KyQmlPass> copy(mPass->clone());
    EXPECT_EQ(copy->getQmlText(), path.toStdString());
    EXPECT_NE(copy->getFrameBuffer(), mPass->getFrameBuffer());
    KyQmlPass::finalizeClass();
    render();
    EXPECT_EQ(getColor(), QColor(Qt::blue));
    EXPECT_FALSE(mPass->getQmlContext() || mPass->isLoaded());
    KyQmlPass::initializeClass();
    KyObject* const object = mPass.get();
    object->getAttribute("Qml")->setValue(*object, KyField(path.toStdString()));
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
    KyField isLoaded;
    EXPECT_TRUE(object->getAttribute("Loaded")->getValue(*object, isLoaded) && isLoaded.toBool());
}

} // namespace
