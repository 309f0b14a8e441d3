// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

/// Whether a pass must be painted anew. What is shown may ask for its next picture while it is painted: such a request
/// outlives the painting.
///
/// ```
/// if (mUpdate.request())
///     tell();
/// mUpdate.begin();
/// paint();
/// if (mUpdate.end())
///     setNeedUpdate(true);
/// ```
class KyPassUpdate {
public:
    /// True at the start: nothing was painted yet.
    bool isNeeded() const { return mIsNeeded; }
    /// True when it was not needed before: the time to tell others.
    bool request() {
        mIsRequestedAgain = mIsRequestedAgain || mIsPainting;
        return !std::exchange(mIsNeeded, true);
    }
    void clear() { mIsNeeded = false; }

    /// What is requested from now on is not part of this picture.
    void begin() {
        mIsPainting = true;
        mIsRequestedAgain = false;
    }
    /// Clears the request that was painted; true when there was another one in the meantime, to be made again.
    bool end() {
        mIsPainting = false;
        mIsNeeded = false;
        return std::exchange(mIsRequestedAgain, false);
    }

private:
    bool mIsNeeded = true;
    bool mIsPainting = false;
    bool mIsRequestedAgain = false;
};
