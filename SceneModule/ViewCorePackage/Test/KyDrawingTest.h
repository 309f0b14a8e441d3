// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "../../GraphicsCorePackage/Test/KyGlTest.h"

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyFrameBuffer.h"
#include "KyImage.h"
#include "KyMeshNode.h"
#include "KyRendererContext.h"
#include "KyScenePass.h"

/// A canvas of one view that is drawn into a buffer of 160 x 120 pixels.
class KyDrawingTest : public KyGlTest {
protected:
    KyDrawingTest()
        : mCanvas(new KyCanvas)
        , mView(KyGraphicsViewMultiPass::create())
        , mTarget(KyFrameBuffer::create()) {
        mCanvas->setSize(160, 120);
        mTarget->setSize(160, 120);
        mCanvas->insertView(mView.get());
    }

    KyHolder<KyImage> draw() {
        KyRendererContext context(mContext.get());
        context.setTarget(mTarget.get());
        EXPECT_TRUE(mCanvas->render(context));
        return KyHolder<KyImage>(mTarget->readPixels());
    }

    KyHolder<KyCanvas> mCanvas;
    KyHolder<KyGraphicsViewMultiPass> mView;
    KyHolder<KyFrameBuffer> mTarget;
};

inline void kyExpectColor(const KyColor& found, const KyColor& expected, double tolerance = 0.02) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(found[i], expected[i], tolerance) << found << " instead of " << expected;
}
