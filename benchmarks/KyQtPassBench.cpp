// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyQGraphicsDevice.h"
#include "KyQtPass.h"

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyFrameBuffer.h"
#include "KyMeshNode.h"
#include "KyRendererContext.h"
#include "KyScene.h"
#include "KyScenePass.h"

#include <QGraphicsScene>
#include <QGridLayout>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLPaintDevice>
#include <QPainter>
#include <QPushButton>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr QSize cSize(800, 600);
constexpr int cNbRows = 8, cNbColumns = 5;

QWidget* makePanel() {
    auto* const panel = new QWidget;
    auto* const layout = new QGridLayout(panel);
    for (int i = 0; i < cNbRows * cNbColumns; ++i)
        layout->addWidget(new QPushButton(QString("Button %1").arg(i)), i / cNbColumns, i % cNbColumns);
    return panel;
}

/// A canvas off screen.
struct Stage {
    std::string error;
    std::unique_ptr<KyQGraphicsDevice> device = KyQGraphicsDevice::createOffscreen(error);
    KyHolder<KyFrameBuffer> target{KyFrameBuffer::create()};
    KyHolder<KyCanvas> canvas{new KyCanvas};
    KyHolder<KyGraphicsViewMultiPass> view{KyGraphicsViewMultiPass::create()};

    explicit Stage(const QSize& size) {
        canvas->setSize(size.width(), size.height());
        target->setSize(size.width(), size.height());
        canvas->insertView(view.get());
    }
    void render() {
        KyRendererContext context(device.get());
        context.setTarget(target.get());
        if (!device->makeCurrent() || !canvas->render(context))
            std::abort();
        device->getContext()->functions()->glFinish();
    }
};

/// A panel of buttons in a pass that is drawn by itself, and what it has to do.
struct DirtyFixture : Stage {
    KyHolder<KyQtPass> pass{KyQtPass::create()};
    std::unique_ptr<KyQGraphicsDevice> peerDevice = KyQGraphicsDevice::createOffscreen(error);
    std::unique_ptr<QOpenGLFramebufferObject> peerBuffer;
    std::unique_ptr<QOpenGLPaintDevice> peerPaper;

    explicit DirtyFixture(KyQtPass::PaintMethod method)
        : Stage(cSize) {
        pass->setPaintMethod(method);
        pass->setQWidget(makePanel(), true);
        view->setMainPass(pass.get());
        for (int i = 0; i < 3; ++i)
            render();
        const KyQGraphicsDevice::Scope current(*peerDevice);
        peerBuffer = std::make_unique<QOpenGLFramebufferObject>(cSize, QOpenGLFramebufferObject::CombinedDepthStencil,
                                                                GL_TEXTURE_2D, GL_RGBA8);
        peerPaper = std::make_unique<QOpenGLPaintDevice>(cSize);
        peerPaper->setPaintFlipped(true);
    }
    ~DirtyFixture() {
        const KyQGraphicsDevice::Scope current(*peerDevice);
        peerPaper.reset();
        peerBuffer.reset();
    }
    void paint() {
        const QList<QRectF> regions{QRectF(0, 0, 1, 1)};
        QMetaObject::invokeMethod(pass.get(), "onQGraphicsSceneChanged", Q_ARG(QList<QRectF>, regions));
        KyRendererContext context(device.get());
        pass->adaptView(*view);
        pass->preRender(context);
        pass->doRender(context, *view);
        pass->postRender(context);
    }
    void paintPeer() {
        const KyQGraphicsDevice::Scope current(*peerDevice);
        QOpenGLFunctions& gl = *peerDevice->getContext()->functions();
        peerBuffer->bind();
        gl.glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        gl.glClear(GL_COLOR_BUFFER_BIT);
        QPainter painter(peerPaper.get());
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        pass->editQGraphicsScene()->render(&painter);
        painter.end();
        gl.glFinish();
    }
};

template <KyQtPass::PaintMethod Method>
KyBenchmarkSides prepareDirty() {
    const auto fixture = std::make_shared<DirtyFixture>(Method);
    return {[fixture](long count) {
                fixture->device->makeCurrent();
                const std::uint64_t before = fixture->pass->getNbPaintings();
                for (long i = 0; i < count; ++i)
                    fixture->paint();
                if (fixture->pass->getNbPaintings() - before != static_cast<std::uint64_t>(count))
                    std::abort();
            },
            [fixture](long count) {
                fixture->device->makeCurrent();
                for (long i = 0; i < count; ++i)
                    fixture->paintPeer();
            },
            fixture};
}

/// The same ball with and without a pass that has nothing to paint.
struct BallStage : Stage {
    KyHolder<KyQtPass> pass;

    explicit BallStage(KyQtPass* overlay)
        : Stage(cSize / 4)
        , pass(overlay) {
        const KyHolder<KyScene> scene(new KyScene);
        auto* const ball = new KyMeshNode;
        ball->makeSphere(1.0);
        scene->addChild(ball);
        const KyHolder<KyCamera> camera(new KyCamera);
        camera->setPosition(KyVec3d(0.0, 0.0, 6.0));
        const KyHolder<KyScenePass> main(KyScenePass::create());
        main->setScene(scene.get());
        main->setCamera(camera.get());
        view->setMainPass(main.get());
        if (overlay) {
            overlay->setPriority(-1.0f);
            overlay->setQWidget(makePanel(), true);
            view->addPass(overlay);
        }
        for (int i = 0; i < 3; ++i)
            render();
    }
    void run(long count) {
        const std::uint64_t before = pass ? pass->getNbPaintings() : 0;
        for (long i = 0; i < count; ++i)
            render();
        if (pass && pass->getNbPaintings() != before)
            std::abort();
    }
};

KyBenchmarkSides prepareIdle() {
    const auto ours = std::make_shared<BallStage>(KyQtPass::create());
    const auto peer = std::make_shared<BallStage>(nullptr);
    return {[ours](long count) { ours->run(count); }, [peer](long count) { peer->run(count); }, ours};
}

} // namespace

std::vector<KyBenchmark> getQtPassBenchmarks() {
    std::string error;
    if (!KyQGraphicsDevice::createOffscreen(error)) {
        std::fprintf(stderr, "kybench: the rows of the Qt pass are left out: %s\n", error.c_str());
        return {};
    }
    using enum KyBenchmark::Gate;
    return {
        {"Qt pass, one dirty frame", "QGraphicsScene::render, same frame buffer", 1.03, eTime, 5,
         &prepareDirty<KyQtPass::eFrameBuffer>},
        {"Qt pass, one dirty frame, the way it chooses", "QGraphicsScene::render, same frame buffer", 1.03, eTime, 5,
         &prepareDirty<KyQtPass::eAutomatic>},
        {"Qt pass, idle frame", "no pass at all", 1.01, eTime, 40, &prepareIdle},
    };
}
