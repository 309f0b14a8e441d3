// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyWindow.h"

#include <QOpenGLWindow>

/// The window of a program that shows a canvas and nothing else: Qt's QOpenGLWindow, whose context and frames it uses.
/// Its signal "drawn" is sent when the frame was swapped.
///
/// ```
/// KyQOpenGLWindow* window = KyQOpenGLWindow::create(canvas);
/// window->setTitle("Engine");
/// window->show();
/// ```
class KYAPPLICATION_EXPORT KyQOpenGLWindow : public QOpenGLWindow, public KyWindow {
public:
    static const KyType* getType();
    static KyQOpenGLWindow* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Hidden, with that canvas or with null a new one. Null, and reported, when there is no QGuiApplication.
    static KyQOpenGLWindow* create(KyCanvas* canvas = nullptr);
    /// Needs a QGuiApplication.
    explicit KyQOpenGLWindow(KyCanvas* canvas = nullptr, QWindow* parent = nullptr);
    ~KyQOpenGLWindow() override;

    /// Of the object, not only of the platform's window as QWindow's.
    void destroy() override { KyWindow::destroy(); }

    double getPixelRatio() const override;
    std::string getCaption() const override;
    void setCaption(const std::string& caption) override;
    bool isShown() const override;
    void setShown(bool isShown) override;
    void requestRedraw() override;

protected:
    QSize getDeviceSize() const override;
    void resizeTo(const QSize& size) override;
    QObject& editQObject() override { return *this; }
    void initializeGL() override;
    void paintGL() override;
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    static const KyType* msType;
};
