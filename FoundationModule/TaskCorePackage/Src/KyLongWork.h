// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include "KyTracker.h"

#include <string>

/// A piece of work that may take long, as KyProgress tells it. Lives on the stack of whoever does the work; inert, but
/// for its tracker, where nobody watches.
///
/// ```
/// KyLongWork work("Copying the models");
/// KyTracker& tracker = work.editTracker();
/// tracker.setNbSteps(files.size());
/// ```
class KYFOUNDATION_EXPORT KyLongWork {
public:
    /// The title is a line for people. With a tracker of the caller's the work is that caller's affair: nothing is
    /// told.
    explicit KyLongWork(std::string title, KyTracker* tracker = nullptr);
    ~KyLongWork();
    KyLongWork(const KyLongWork&) = delete;
    KyLongWork& operator=(const KyLongWork&) = delete;

    /// A line for people.
    const std::string& getTitle() const { return mTitle; }
    /// Whether somebody learns of this work.
    bool isTold() const { return mIsTold; }
    /// Counts the steps: the caller's tracker where one was given, else one of its own.
    KyTracker& editTracker() { return mTracker; }
    /// See editTracker().
    const KyTracker& getTracker() const { return mTracker; }
    /// Since it began.
    double getSeconds() const;

private:
    void onReport();
    void send(double share);

    const std::string mTitle;
    const bool mIsTold;
    KyTracker mOwnTracker;
    KyTracker& mTracker;
    /// Microseconds of KyTimer; a telling is due from mNext on.
    const long long mBegin;
    long long mNext;
    bool mHasSent = false;
};
