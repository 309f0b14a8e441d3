// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <memory>

/// Keeps the GL state that drawing here changes (bindings, viewport, scissor, blending, depth, culling, masks, clear
/// values, pixel storage) and puts it back when it ends, so that a toolkit that draws in the same context finds what it
/// left. Without a current context it does nothing. Lives on the stack.
class KYSCENE_EXPORT KyGraphicsStateScope {
public:
    KyGraphicsStateScope();
    ~KyGraphicsStateScope();
    KyGraphicsStateScope(const KyGraphicsStateScope&) = delete;
    KyGraphicsStateScope& operator=(const KyGraphicsStateScope&) = delete;

private:
    struct State;

    std::unique_ptr<State> mState;
};
