// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// What a rectangle, a volume or a box stands for; the number in its member `state`.
struct KyBoundState {
    enum {
        eNull,     ///< contains nothing, neutral when merged
        eFinite,   ///< what its members say
        eInfinite, ///< contains everything
        eNbStates
    };
};
