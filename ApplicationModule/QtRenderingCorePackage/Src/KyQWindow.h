// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyWindow.h"

#include <QWindow>

#include <memory>

class QOpenGLContext;

/// The plainest window for a canvas: a QWindow with a GL context of its own that is drawn when it is exposed and when
/// a frame is requested. Its signal "drawn" is sent when the buffers were swapped.
///
/// ```
/// KyQWindow* window = KyQWindow::create(canvas);
/// window->resize(800, 600);
/// window->show();
/// ```
class KYAPPLICATION_EXPORT KyQWindow : public QWindow, public KyWindow {
public:
    static const KyType* getType();
    static KyQWindow* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Hidden, with that canvas or with null a new one. Null, and reported, when there is no QGuiApplication.
    static KyQWindow* create(KyCanvas* canvas = nullptr);
    /// Needs a QGuiApplication.
    explicit KyQWindow(KyCanvas* canvas = nullptr, QWindow* parent = nullptr);
    ~KyQWindow() override;

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
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
    bool prepareContext() override;

private:
    void draw();

    std::unique_ptr<QOpenGLContext> mContext;

    static const KyType* msType;
};
