// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPass.h"
#include "KyQtPassEventHandler.h"

#include "Ky2DScene.h"
#include "KyQtFormLoader_p.h"
#include "KyQtValues.h"
#include "KyQtVariant.h"

#include "KyGraphicsViewMultiPass.h"
#include "KyProgramSourceManager.h"
#include "KyScreenPass.h"

#include "KyCallSignatures.h"
#include "KyException.h"
#include "KyResource.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"

#include <QApplication>
#include <QFile>
#include <QMetaProperty>
#include <QWidget>

const KyType* KyQtPass::msType = nullptr;

namespace {

/// It paints before the pass that shows it.
constexpr float cPriority = -1.0f;

KyScreenPass* makeScreenPass(bool isBlended) {
    auto* const screen = KyScreenPass::create();
    screen->setPriority(0.0f);
    screen->setVerticalFlip(true);
    screen->setBackgroundColor(KyColor(0.0f, 0.0f, 0.0f, 0.0f));
    screen->setSplitStereoTexCoord(false);
    KyShader* const shader = screen->editShader();
    shader->setVertexProgram(KyProgramSourceManager::get().getSource("KyPrevious_vp.glsl"));
    shader->setFragmentProgram(KyProgramSourceManager::get().getSource("KyPrevious_fp.glsl"));
    if (isBlended) {
        shader->setState(KyShaderState::eDepthTest, false);
        shader->setBlendFunction({KyBlendFactor::eOne, KyBlendFactor::eOneMinusSrcAlpha, KyBlendEquation::eAdd});
    }
    return screen;
}

} // namespace

void KyQtPass::initializeType() {
    if (msType)
        return;
    using P = KyQtPass;
    msType =
        KyTypeBuilder<P>("KyQtPass", KyGraphicsPass::getType())
            .factory()
            .attribute("ViewPosition", &P::getViewPosition, &P::setViewPosition)
            .attribute("ViewRectSize", &P::getViewRectSize, &P::setViewRectSize)
            .attribute("ViewScale", &P::getViewScale, &P::setViewScale)
            .attribute("KeepAspectRatio", &P::isKeepAspectRatioEnabled, &P::setKeepAspectRatioEnabled)
            .attribute("OverrideCacheMode", &P::isOverrideCacheModeInWidgetMode, &P::setOverrideCacheModeInWidgetMode)
            .attribute(
                "PaintMethod", [](P& pass) { return static_cast<std::int32_t>(pass.getPaintMethod()); },
                [](P& pass, std::int32_t method) { return pass.setPaintMethod(static_cast<PaintMethod>(method)); })
            .attribute("Scene2D", &P::edit2DScene, [](P& pass, Ky2DScene* scene) { pass.set2DScene(scene, false); })
            .attribute("NbPaintings", &P::getNbPaintings)
            .signal<&P::needUpdateSignal>("needUpdate")
            .method("set2DScene", &P::set2DScene)
            .method("edit2DScene", &P::edit2DScene)
            .method("loadForm", &P::loadForm)
            .method("getError", &P::getError)
            .method("getWidgetProperty", &P::getWidgetProperty)
            .method("setWidgetProperty", &P::setWidgetProperty)
            .staticMethod("createQtPassOverlayView", &P::createQtPassOverlayView)
            .enumeration({{"eAutomatic", eAutomatic}, {"eFrameBuffer", eFrameBuffer}, {"eImage", eImage}})
            .build();
    KyCallSignatures::add(
        "KyQtPass",
        {"createQtPassOverlayView(parent, isBlended, hasHandler): KyGraphicsViewMultiPass|{ MainPass: KyQtPass }|nil",
         "getWidgetProperty(objectName, property)", "setWidgetProperty(objectName, property, value)", "loadForm(path)",
         "set2DScene(scene, own)", "needUpdate(pass)"});
}

void KyQtPass::finalizeType() {
    closeAll();
    KyType::remove(msType);
}

const KyType* KyQtPass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQtPass::getObjectType() const {
    return getType();
}

KyQtPass* KyQtPass::cast(KyObject* object) {
    return kyCast<KyQtPass>(object);
}

KyQtPass* KyQtPass::create() {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        return new KyQtPass;
    KyException::create("KyQtPass::create(): there is no QApplication.");
    return nullptr;
}

KyGraphicsViewMultiPass* KyQtPass::createQtPassOverlayView(KyGraphicsViewMultiPass* parent, bool isBlended,
                                                           bool hasHandler) {
    KyQtPass* const pass = create();
    if (!pass)
        return nullptr;
    pass->setPriority(cPriority);
    if (hasHandler)
        pass->setEventHandler(KyQtPassEventHandler::create());
    auto* const view = KyGraphicsViewMultiPass::create();
    view->setName("OverlayQtPass");
    view->setMainPass(pass);
    view->addPass(makeScreenPass(isBlended));
    if (isBlended)
        view->setClearOrder(KyGraphicsViewMultiPass::eClearNothing);
    if (parent)
        parent->insert(view, -1);
    return view;
}

/// A script may try the same in every frame: that is reported once.
void KyQtPass::fail(const std::string& error) {
    if (error == mError)
        return;
    mError = error;
    KyException::create("KyQtPass: " + error + ".");
}

bool KyQtPass::loadForm(const std::string& path) {
    // While a script runs, relative paths begin at its own folder.
    const KyURL url = KyResource::resolve(KyURL(path, KyURL::eLocalPath));
    QFile file(KyApplication::toQUrl(url).toLocalFile());
    if (!file.open(QIODevice::ReadOnly)) {
        fail("cannot open \"" + path + "\": " + file.errorString().toStdString());
        return false;
    }
    QString error;
    std::unique_ptr<QWidget> widget(kyBuildPlainForm(file, error));
    if (!widget || !setQWidget(widget.get(), true)) {
        const std::string text = error.toStdString();
        fail("cannot use the form \"" + path + "\": " + (text.empty() ? "there is no scene to show it in" : text));
        return false;
    }
    static_cast<void>(widget.release());
    mError.clear();
    return true;
}

bool KyQtPass::findWidget(const std::string& objectName, QWidget*& found) {
    const QString name = QString::fromStdString(objectName);
    found = mWidget && !name.isEmpty() && mWidget->objectName() != name ? mWidget->findChild<QWidget*>(name)
                                                                        : mWidget.data();
    if (!found)
        fail(mWidget ? "no widget is named \"" + objectName + "\"" : std::string("there is no widget"));
    return found != nullptr;
}

KyField KyQtPass::getWidgetProperty(const std::string& objectName, const std::string& property) {
    QWidget* widget = nullptr;
    if (!findWidget(objectName, widget))
        return {};
    const QVariant value = widget->property(property.c_str());
    if (value.isValid())
        mError.clear();
    else
        fail("there is no property \"" + property + "\"");
    return KyApplication::toKyField(value);
}

bool KyQtPass::setWidgetProperty(const std::string& objectName, const std::string& property, const KyField& value) {
    QWidget* widget = nullptr;
    if (!findWidget(objectName, widget))
        return false;
    const int index = widget->metaObject()->indexOfProperty(property.c_str());
    if (index < 0 || !widget->metaObject()->property(index).write(widget, KyApplication::toQVariant(value))) {
        fail("the property \"" + property + "\" is not there or refuses the value");
        return false;
    }
    mError.clear();
    return true;
}
