// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Tells cheaply whether units may have come or gone: looking for them takes a part of a frame.
class KySpaceMouseNodes {
public:
    /// Since the last call; true at the first one, and always where the system gives no hint.
    bool haveChanged();

private:
    std::intmax_t mLastChange = 0;
};
