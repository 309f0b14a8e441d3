// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassPixel_p.h"
#include "KyPassUpdate_p.h"
#include "KyQtPaintTarget_p.h"
#include "KyQtPass.h"

#include <memory>

/// What the pass needs for painting.
struct KyQtPass::Painting {
    KyPassUpdate update;
    KyPassPixel pixel;
    /// None before the first frame.
    std::unique_ptr<KyQtPaintTarget> target;
    /// From preRender to postRender of a frame that paints.
    bool isUnderWay = false;
    /// Another target is to be made for the next frame.
    bool isTargetStale = false;
};
