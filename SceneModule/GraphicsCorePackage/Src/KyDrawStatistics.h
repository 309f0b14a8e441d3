// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <cstdint>

/// What the scene library has asked the device to draw since the program began, on the thread that draws; the
/// difference of two readings is what lay between. What others draw, such as Qt, is not in it.
///
/// ```
/// const KyDrawStatistics before = KyDrawStatistics::get();
/// canvas->render(context);
/// const std::uint64_t nbCalls = KyDrawStatistics::get().nbCalls - before.nbCalls;
/// ```
struct KYSCENE_EXPORT KyDrawStatistics {
    /// Draw calls.
    std::uint64_t nbCalls = 0;
    /// Triangles, lines and points in them.
    std::uint64_t nbPrimitives = 0;

    /// All until now.
    static const KyDrawStatistics& get() { return edit(); }
    /// One draw call of so many primitives.
    static void count(std::uint64_t nbPrimitives) {
        KyDrawStatistics& all = edit();
        ++all.nbCalls;
        all.nbPrimitives += nbPrimitives;
    }

private:
    static KyDrawStatistics& edit();
};
