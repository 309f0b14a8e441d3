// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyWindow.h"

#include <QOpenGLWidget>

/// The canvas as a widget, for layouts: other widgets stand beside it, and above it, half transparent if they like,
/// because Qt draws it into a buffer and composes that with the rest. Windows put into a widget cannot do that. It
/// takes the focus by clicks and tabs, mouse moves without button and touches. Qt does not paint in it, so its context
/// is a core one.
///
/// What the canvas used goes to the widget's own event functions and no further; the rest goes on to Qt's parents.
///
/// ```
/// layout->addWidget(new KyQGLWindow(canvas));
/// ```
class KYAPPLICATION_EXPORT KyQGLWindow : public QOpenGLWidget, public KyWindow {
public:
    static const KyType* getType();
    static KyQGLWindow* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Hidden, with that canvas or with null a new one. Null, and reported, when there is no QApplication.
    static KyQGLWindow* create(KyCanvas* canvas = nullptr);
    /// Needs a QApplication.
    explicit KyQGLWindow(KyCanvas* canvas = nullptr, QWidget* parent = nullptr);
    ~KyQGLWindow() override;

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
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;

private:
    static const KyType* msType;
};
