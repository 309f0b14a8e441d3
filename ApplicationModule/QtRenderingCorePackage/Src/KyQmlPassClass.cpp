// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPass.h"
#include "KyQmlPasses_p.h"
#include "KyQmlRemains_p.h"
#include "KyQtPassEventHandler.h"

#include "KyQtText.h"

#include "KyGraphicsViewMultiPass.h"
#include "KyProgramSourceManager.h"
#include "KyScreenPass.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

#include <QCoreApplication>
#include <QEvent>
#include <QQmlEngine>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

const KyType* KyQmlPass::msType = nullptr;
QQmlEngine* KyQmlPass::msQmlEngine = nullptr;

namespace {

std::vector<KyQmlPass*>& getPasses() {
    static auto* passes = new std::vector<KyQmlPass*>;
    return *passes;
}

/// Whether it is its QML or JavaScript that calls: the stack then has more than this question.
bool isRunning(QQmlEngine& engine) {
    return engine.evaluate(QStringLiteral("new Error().stack")).toString().contains(QLatin1Char('\n'));
}

/// The engine's own part in a change of the language: it hears of none.
class Retranslator : public QObject {
public:
    explicit Retranslator(QQmlEngine& engine)
        : QObject(&engine) {
        QCoreApplication::instance()->installEventFilter(this);
    }
    /// Later: it may be QML that changes the language.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::LanguageChange && watched == QCoreApplication::instance())
            QMetaObject::invokeMethod(parent(), "retranslate", Qt::QueuedConnection);
        return false;
    }
};

} // namespace

void KyQmlPasses::add(KyQmlPass* pass) {
    getPasses().push_back(pass);
}

void KyQmlPasses::remove(KyQmlPass* pass) {
    std::erase(getPasses(), pass);
}

void KyQmlPasses::cleanUp() {
    for (KyQmlPass* pass : std::vector(getPasses())) {
        pass->cleanupGraphicsRessources();
        pass->cleanupModelRessources();
    }
}

void KyQmlPass::initializeType() {
    if (msType)
        return;
    using P = KyQmlPass;
    msType = KyTypeBuilder<P>("KyQmlPass", KyGraphicsPass::getType())
                 .factory()
                 .attribute("Qml", &P::getQmlText, &P::setQmlText)
                 .attribute("ErrorsReportEnabled", &P::isErrorsReportEnabled, &P::setEnableErrorsReport)
                 .attribute("Loaded", &P::isLoaded)
                 .attribute("Error", &P::getErrorText)
                 .component<&P::getTexture>("Texture")
                 .signal<&P::needUpdateSignal>("needUpdate")
                 .signal<&P::textureHandleModifiedSignal>("textureHandleModified")
                 .signal<&P::qmlLoadedSignal>("qmlLoaded")
                 .method("setQml", &P::setQmlText)
                 .method("reload", &P::onReloadCurrentQml)
                 .method("setFboSize",
                         [](P& pass, int width, int height) {
                             pass.setFboSize({width, height});
                         })
                 .method("addImportPath",
                         [](P& pass, const std::string& path) { pass.addImportPath(KyApplication::toQString(path)); })
                 .method("setContextObject", &P::setContextObject)
                 .staticMethod("createQmlPassOverlayView", &P::createQmlPassOverlayView)
                 .build();
    KyCallSignatures::add("KyQmlPass",
                          {"addImportPath(path)",
                           "createQmlPassOverlayView(parent, isBlended, hasEventHandler): KyGraphicsViewMultiPass|{ "
                           "MainPass: KyQmlPass }|nil",
                           "setContextObject(name, object)", "setFboSize(width, height)", "needUpdate(pass)"});
}

void KyQmlPass::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQmlPass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQmlPass::getObjectType() const {
    return getType();
}

KyQmlPass* KyQmlPass::cast(KyObject* object) {
    return kyCast<KyQmlPass>(object);
}

void KyQmlPass::finalizeClass() {
    endQmlEngine();
    finalizeType();
}

void KyQmlPass::endQmlEngine() {
    KyQmlPasses::cleanUp();
    std::unique_ptr<QQmlEngine> engine(std::exchange(msQmlEngine, nullptr));
    if (engine && !QCoreApplication::closingDown() && isRunning(*engine)) {
        KyQmlRemains::create()->engine = std::move(engine);
        return;
    }
    KyQmlRemains::endAll();
}

QQmlEngine* KyQmlPass::getQmlEngine() {
    if (msQmlEngine || !QCoreApplication::instance() || QCoreApplication::closingDown())
        return msQmlEngine;
    // An application that ends before the library takes what it needs along.
    qAddPostRoutine(&KyQmlPass::endQmlEngine);
    msQmlEngine = new QQmlEngine;
    new Retranslator(*msQmlEngine);
    return msQmlEngine;
}

KyGraphicsViewMultiPass* KyQmlPass::createQmlPassOverlayView(KyGraphicsViewMultiPass* parent, bool isBlended,
                                                             bool hasEventHandler) {
    const KyHolder<KyQmlPass> pass(create());
    pass->setPriority(-1.0f);
    if (hasEventHandler)
        pass->setEventHandler(KyQtPassEventHandler::create());
    const KyHolder<KyScreenPass> screen(KyScreenPass::create());
    screen->setPriority(0.0f);
    screen->setBackgroundColor({0.0f, 0.0f, 0.0f, 0.0f});
    screen->setSplitStereoTexCoord(false);
    KyShader* shader = screen->editShader();
    const KyProgramSourceManager& sources = KyProgramSourceManager::get();
    shader->setVertexProgram(sources.getSource("KyPrevious_vp.glsl"));
    shader->setFragmentProgram(sources.getSource("KyPrevious_fp.glsl"));
    KyGraphicsViewMultiPass* view = KyGraphicsViewMultiPass::create();
    view->setName("OverlayQmlPass");
    view->setMainPass(pass.get());
    view->addPass(screen.get());
    if (isBlended) {
        view->setClearOrder(KyGraphicsViewMultiPass::eClearNothing);
        shader->setState(KyShaderState::eDepthTest, false);
        shader->setBlendFunction({KyBlendFactor::eOne, KyBlendFactor::eOneMinusSrcAlpha, KyBlendEquation::eAdd});
    }
    if (parent)
        parent->insert(view, -1);
    return view;
}
