// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQmlTarget_p.h"

#include <QImage>

/// Lets Qt Quick's software renderer paint on an image, and uploads that in whatever context the view draws with.
class KyQmlImageTarget : public KyQmlTarget {
public:
    void initialize(QQuickRenderControl& control) override;
    bool resize(const QSize& size, QQuickWindow& window) override;
    void share(KyFrameBuffer& buffer) override;
    void render(QQuickWindow& window, QQuickRenderControl& control) override;
    void clear() override;
    void publish(KyTexture& texture) override;
    KyPassPixel::Bytes readPixel(int x, int y) override;

private:
    QImage mImage;
};
