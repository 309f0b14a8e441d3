// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSurface.h"

#include "KyHolder.h"

#include <memory>
#include <string>

class KyFrameBuffer;
class KyHostStage;
class KyOffscreenContext;

/// Draws the stage into a frame buffer, without window or display. Where drawing takes longer than a frame stands, as
/// on a processor, it leaves frames out, so that at least half of the time is for the scripts; the picture that is
/// saved is always drawn for the purpose.
class KyHostOffscreen : public KyHostSurface {
public:
    /// Null, and the reason, when there is no GL.
    static std::unique_ptr<KyHostOffscreen> create(KyHostStage& stage, int width, int height, std::string& error);
    ~KyHostOffscreen() override;

    void draw() override;
    bool needsDrawing() const override { return false; }
    int getFrameInterval() const override;
    bool makeCurrent() override;
    bool savePicture(const std::string& path, std::string& error) override;

private:
    KyHostOffscreen(KyHostStage& stage, std::unique_ptr<KyOffscreenContext> context, int width, int height);

    KyHostStage& mStage;
    std::unique_ptr<KyOffscreenContext> mContext;
    KyHolder<KyFrameBuffer> mTarget;
    /// Microseconds of KyTimer before which no frame is drawn.
    long long mEarliestDrawing = 0;
};
