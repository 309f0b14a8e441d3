// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyQGraphicsDevice.h"
#include "KyQmlPass.h"
#include "KyQmlRenderControl.h"

#include "KyCanvas.h"
#include "KyRendererContext.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryFile>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr QSize cSize(800, 600);

constexpr const char* cPanel = R"(import QtQuick 2.15
Rectangle {
    color: "#20242c"
    Repeater {
        model: 200
        Rectangle {
            x: index % 20 * 40; y: Math.floor(index / 20) * 60
            width: 36; height: 50; radius: 6; color: "#8030a0ff"
            Text { anchors.centerIn: parent; text: index; color: "white" }
        }
    }
})";

QSurfaceFormat makeFormat() {
    QSurfaceFormat format;
    format.setAlphaBufferSize(8);
    format.setDepthBufferSize(16);
    format.setStencilBufferSize(8);
    return format;
}

/// The panel in a pass, and in a loop that does nothing else.
struct QmlFixture {
    std::string error;
    std::unique_ptr<KyQGraphicsDevice> device = KyQGraphicsDevice::createOffscreen(error);
    KyHolder<KyCanvas> canvas{new KyCanvas};
    KyHolder<KyGraphicsViewMultiPass> view{KyGraphicsViewMultiPass::create()};
    KyHolder<KyQmlPass> pass{KyQmlPass::create()};
    QTemporaryFile file;

    std::unique_ptr<KyQGraphicsDevice> peerDevice = KyQGraphicsDevice::createOffscreen(error, makeFormat());
    KyQmlRenderControl control;
    QQuickWindow window{&control};
    std::unique_ptr<QOpenGLFramebufferObject> buffer;
    std::unique_ptr<QQuickItem> item;

    QmlFixture() {
        if (!file.open() || file.write(cPanel) < 0 || !file.flush())
            std::abort();
        canvas->setSize(cSize.width(), cSize.height());
        canvas->insertView(view.get());
        view->setMainPass(pass.get());
        pass->setQml(QUrl::fromLocalFile(file.fileName()), false);
        device->makeCurrent();
        render();
        makePeer();
    }
    ~QmlFixture() {
        const KyQGraphicsDevice::Scope current(*peerDevice);
        control.invalidate();
        item.reset();
        buffer.reset();
    }

    void makePeer() {
        const KyQGraphicsDevice::Scope current(*peerDevice);
        QQmlComponent component(KyQmlPass::getQmlEngine(), QUrl::fromLocalFile(file.fileName()));
        item.reset(qobject_cast<QQuickItem*>(component.create()));
        item->setParentItem(window.contentItem());
        item->setSize(cSize);
        window.setColor(Qt::transparent);
        window.setGeometry(QRect(QPoint(), cSize));
        control.initialize(peerDevice->getContext());
        buffer = std::make_unique<QOpenGLFramebufferObject>(cSize, QOpenGLFramebufferObject::CombinedDepthStencil,
                                                            GL_TEXTURE_2D);
        window.setRenderTarget(buffer.get());
    }

    static void change(QQuickItem& panel) {
        QQuickItem* const tile = panel.childItems().first();
        tile->setRotation(tile->rotation() + 1.0);
    }
    void render() {
        KyRendererContext context(device.get());
        pass->adaptView(*view);
        pass->preRender(context);
        pass->doRender(context, *view);
        pass->postRender(context);
    }
    void renderOurs(long count) {
        device->makeCurrent();
        const auto before = pass->getTexture()->getVersion();
        for (long i = 0; i < count; ++i) {
            change(*pass->getQuickItem());
            render();
            device->getContext()->functions()->glFinish();
        }
        if (pass->getTexture()->getVersion() - before != static_cast<std::uint64_t>(count))
            std::abort();
    }
    void renderPeer(long count) {
        device->makeCurrent();
        for (long i = 0; i < count; ++i) {
            change(*item);
            {
                const KyQGraphicsDevice::Scope current(*peerDevice);
                control.polishItems();
                control.sync();
                control.render();
                QOpenGLFramebufferObject::bindDefault();
                peerDevice->getContext()->functions()->glFlush();
            }
            device->getContext()->functions()->glFinish();
        }
    }
};

KyBenchmarkSides prepareDirty() {
    const auto fixture = std::make_shared<QmlFixture>();
    return {[fixture](long count) { fixture->renderOurs(count); },
            [fixture](long count) { fixture->renderPeer(count); }, fixture};
}

} // namespace

std::vector<KyBenchmark> getQmlPassBenchmarks() {
    std::string error;
    if (!KyQGraphicsDevice::createOffscreen(error)) {
        std::fprintf(stderr, "kybench: the row of the QML pass is left out: %s\n", error.c_str());
        return {};
    }
    return {{"QML pass, one dirty frame", "bare QQuickRenderControl loop", 1.05, KyBenchmark::Gate::eTime, 20,
             &prepareDirty}};
}
