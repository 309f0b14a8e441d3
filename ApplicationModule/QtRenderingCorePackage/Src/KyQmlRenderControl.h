// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QPointer>
#include <QQuickRenderControl>
#include <QWindow>

/// Renders a quick window that is never shown, and knows the window in which the picture finally appears: Qt asks for
/// that one where a place on the desktop or a pixel ratio matters (input methods, pop-ups, text).
///
/// ```
/// pass->getRenderControl()->setRenderWindow(shownWindow);
/// ```
class KYAPPLICATION_EXPORT KyQmlRenderControl : public QQuickRenderControl {
    Q_OBJECT

public:
    using QQuickRenderControl::QQuickRenderControl;

    /// Not owned; null, the default, for none. The offset is the place of the picture in it, device-independent pixels.
    void setRenderWindow(QWindow* window, const QPoint& offset = {});
    QWindow* renderWindow(QPoint* offset) override;

private:
    QPointer<QWindow> mRenderWindow;
    QPoint mOffset;
};
