// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include "KyObject.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

class KyLongWork;

/// What the program is busy with, for those who watch: a host that shows a bar, scripts that print. Pieces of work
/// come and go as KyLongWork; when several are under way the last begun is the one that is told, and that cancel()
/// ends.
///
/// One object for the process, which nobody ends. It belongs to one thread, that of open(): work elsewhere is not told.
///
/// ```
/// KyProgress::get().open();
/// KyProgress::get().changedSignal().connect([](const std::string& title, double share) {
///     std::printf("%s %.0f %%\n", title.c_str(), 100 * share);
/// });
/// ```
class KYFOUNDATION_EXPORT KyProgress : public KyObject {
public:
    /// Carries the title and the share done, 0 to 1.
    using Changed = KySignal<const std::string&, double>;

    /// Milliseconds between two tellings.
    static constexpr int cInterval = 33;

    /// The one object of the process.
    static KyProgress& get();
    static const KyType* getType();
    static KyProgress* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;
    /// Does nothing: it is nobody's to end.
    void destroy() override {}

    /// Tells work of the calling thread from now on; before, work goes unseen and costs nothing.
    void open();
    /// Tells no work any more, until the next open().
    void close();
    /// Whether work of the calling thread is told. Any thread.
    bool isOpenHere() const;

    /// Milliseconds at the beginning of work of which nothing is told, 100 unless set; negative ones count as 0.
    int getQuietTime() const { return mQuietTime; }
    /// See getQuietTime().
    void setQuietTime(int milliseconds) { mQuietTime = std::max(milliseconds, 0); }

    /// True while at least one piece of work is told.
    bool isActive() const { return !mWorks.empty(); }
    /// Of the piece of work that is told; empty when there is none.
    const std::string& getTitle() const;
    /// 0 to 1.
    double getShare() const;
    /// Seconds since it began.
    double getSeconds() const;
    /// Ends it as soon as it can; what that means is told by whoever does it. False when there is nothing to cancel.
    bool cancel();

    /// Sent with title and share while work goes on, a few times a second, and at its end with 1, or after a cancel
    /// with the share reached, unless it was over before anything was sent. Slots may cancel.
    Changed& changedSignal() { return mChangedSignal; }

private:
    friend class KyLongWork;

    KyProgress() = default;

    std::vector<KyLongWork*> mWorks;
    std::atomic<unsigned long> mThread = 0;
    int mQuietTime = 100;
    Changed mChangedSignal{"changed"};

    static const KyType* msType;
};
