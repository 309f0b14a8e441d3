// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyWindowTesting.h"

#include "KyQmlPass.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyOffscreenContext.h"
#include "KyRendererContext.h"

#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

constexpr int cWidth = 120, cHeight = 80;
constexpr const char* cForeignVariable = "KY_TEST_FOREIGN_GL";

inline std::string makeFill(const char* color, const char* more = "") {
    return std::string("import QtQuick 2.15\nRectangle { color: \"") + color + "\"\n" + more + "}\n";
}

inline void writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(text);
}

/// A QML pass over a blue view.
struct KyQmlOverlay {
    KyQmlOverlay() {
        mCanvas->setSize(cWidth, cHeight);
        mTarget->setSize(cWidth, cHeight);
        mBack->setClearColor(KyColor(0.0f, 0.0f, 1.0f));
        mCanvas->insertView(mBack.get());
        mOverlay.reset(KyQmlPass::createQmlPassOverlayView(mBack.get(), true, true));
        mPass.reset(KyQmlPass::cast(mOverlay->getMainPass()));
    }
    QColor getColor() const {
        const KyHolder<KyImage> picture(mTarget->readPixels());
        return kyToImage(picture.get()).pixelColor(cWidth / 2, cHeight / 2);
    }

    KyHolder<KyCanvas> mCanvas{new KyCanvas};
    KyHolder<KyFrameBuffer> mTarget{KyFrameBuffer::create()};
    KyHolder<KyGraphicsViewMultiPass> mBack{KyGraphicsViewMultiPass::create()};
    KyHolder<KyGraphicsViewMultiPass> mOverlay;
    KyHolder<KyQmlPass> mPass;
};

class KyQmlPassTest : public testing::Test, protected KyQmlOverlay {
protected:
    void SetUp() override {
        QDir(mDirectory.path()).mkdir("qml");
        std::string error;
        if (qEnvironmentVariableIsSet(cForeignVariable))
            mDevice = KyOffscreenContext::create(error);
        else
            mDevice = KyQGraphicsDevice::createOffscreen(error);
        ASSERT_TRUE(mDevice && mDevice->makeCurrent()) << error;
    }

    QString write(const std::string& text) const {
        writeFile(path, QByteArray::fromStdString(text));
        return path;
    }
    void render() {
        KyRendererContext context(mDevice.get());
        context.setTarget(mTarget.get());
        ASSERT_TRUE(mCanvas->render(context));
    }
    void show(const std::string& text) {
        mPass->setQml(write(text));
        render();
    }
    bool showsSoon(Qt::GlobalColor color) {
        return kyRunUntil([&] {
            render();
            return getColor() == QColor(color);
        });
    }
    QVariantList getErrors() const { return mPass->getQmlContext()->contextProperty("qmlError").toList(); }
    void click(const char* name) {
        auto* button = mPass->getQuickItem()->findChild<QQuickItem*>(name);
        ASSERT_TRUE(button);
        click(button->mapToScene(QPointF(button->width() / 2, button->height() / 2)));
    }
    void click(const QPointF& place) {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, place, place, Qt::LeftButton, held, Qt::NoModifier);
            if (QQuickWindow* window = mPass->getQuickWindow())
                QCoreApplication::sendEvent(window, &event);
        }
    }

    QTemporaryDir mDirectory;
    const QString path = mDirectory.filePath("qml/panel.qml");
    std::unique_ptr<KyGraphicsDevice> mDevice;
};
