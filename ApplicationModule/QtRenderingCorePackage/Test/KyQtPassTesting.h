// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQtPass.h"
#include "KyWindowTesting.h"

#include "Ky2DRect.h"
#include "Ky2DScene.h"
#include "Ky2DStyle.h"

#include "KyFrameBuffer.h"
#include "KyRendererContext.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

inline void endDeferred() {
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// An overlay of a Qt pass over white, drawn off screen by a device of one kind.
struct QtPassOverlay {
    explicit QtPassOverlay(KyGraphicsDevice& drawingDevice, KyQtPass::PaintMethod method = KyQtPass::eAutomatic,
                           int width = 160, int height = 120)
        : device(drawingDevice) {
        back->setClearColor(KyColor(1.0f, 1.0f, 1.0f));
        canvas->insertView(back.get());
        view = KyHolder(KyQtPass::createQtPassOverlayView(back.get(), true, false));
        pass = KyQtPass::cast(view->getMainPass());
        pass->setPaintMethod(method);
        setSize(width, height);
    }
    ~QtPassOverlay() {
        back->remove(view.get());
        endDeferred();
    }

    void setSize(int width, int height) {
        canvas->setSize(width, height);
        target->setSize(width, height);
    }
    bool render() {
        device.makeCurrent();
        KyRendererContext context(&device);
        context.setTarget(target.get());
        return canvas->render(context);
    }
    QImage draw() {
        render();
        return kyToImage(KyHolder<KyImage>(target->readPixels()).get());
    }
    /// Until nothing waits any more.
    void settle() {
        for (int i = 0; i < 20 && (i < 4 || pass->isUpdateNeeded()); ++i) {
            QApplication::processEvents();
            render();
        }
    }
    std::uint64_t countPaintings(const std::function<void()>& change) {
        settle();
        const std::uint64_t before = pass->getNbPaintings();
        change();
        render();
        return pass->getNbPaintings() - before;
    }
    KyColor getColor(float x, float y) { return pass->getPixelColor({x, y}, view.get()); }

    KyGraphicsDevice& device;
    KyHolder<KyFrameBuffer> target{KyFrameBuffer::create()};
    KyHolder<KyCanvas> canvas{new KyCanvas};
    KyHolder<KyGraphicsViewMultiPass> back{KyGraphicsViewMultiPass::create()};
    KyHolder<KyGraphicsViewMultiPass> view;
    KyQtPass* pass = nullptr;
};

inline Ky2DRect* addRect(Ky2DScene& scene, double x, double y, double size, const QColor& color) {
    auto* const rect = Ky2DRect::create();
    rect->setWidth(size);
    rect->setHeight(size);
    rect->setTranslation(x, y);
    rect->editStyle()->setFillColor(KyColor(static_cast<float>(color.redF()), static_cast<float>(color.greenF()),
                                            static_cast<float>(color.blueF()), static_cast<float>(color.alphaF())));
    scene.insertChild(rect, Ky2DNode::cAppend);
    return rect;
}

inline std::unique_ptr<QWidget> makePanel() {
    auto panel = std::make_unique<QWidget>();
    auto* const layout = new QVBoxLayout(panel.get());
    layout->addWidget(new QLabel("Label"));
    layout->addWidget(new QPushButton("Press"));
    auto* const edit = new QLineEdit("text");
    edit->setObjectName("edit");
    layout->addWidget(edit);
    return panel;
}

/// An overlay in each of the ways to paint.
class KyQtPassTest : public testing::TestWithParam<KyQtPass::PaintMethod> {
protected:
    KyQtPassTest() { EXPECT_TRUE(mDevice) << mError; }

    std::string mError;
    std::unique_ptr<KyQGraphicsDevice> mDevice =
        KyQGraphicsDevice::createOffscreen(mError, KyWindow::getDefaultFormat());
    QtPassOverlay mOverlay{*mDevice, GetParam()};
    KyQtPass& mPass = *mOverlay.pass;
};
