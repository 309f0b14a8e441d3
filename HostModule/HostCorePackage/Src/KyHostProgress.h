// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostOverlay.h"

#include "KySignal.h"
#include "KyTask.h"

#include <QCoreApplication>
#include <QString>

#include <functional>

class KyHostStage;

/// Shows the person long work, KyProgress's and the scripts' download, and lets them cancel it: as a bar
/// over the view where there is a window, else as a line, in English as all there, on the terminal that standard error
/// goes to, if any. Work that is over in half a second is not shown.
///
/// Work that keeps the program from its frames still lets events through: the window is drawn and can be closed.
class KyHostProgress : public KyHasSlots, private KyTask {
    Q_DECLARE_TR_FUNCTIONS(KyHostProgress)

public:
    struct Listeners {
        /// Brings the view to the screen; false when there is none.
        std::function<bool()> showView;
        /// Lets events through in the middle of the work.
        std::function<void()> processEvents;
        /// Whether the program ends, so that no work may keep it.
        std::function<bool()> isEnding;
    };

    KyHostProgress(KyHostStage& stage, Listeners listeners);
    ~KyHostProgress() override;

    bool isShown() const { return mIsShown; }
    /// Cancels what is shown; false when there is nothing to cancel.
    bool cancel();

private:
    struct Title {
        QString english;
        /// In the language of the windows.
        QString translated;
    };

    /// The share is that of the whole, 0 to 1; negative when nobody knows.
    void show(const Title& title, double share);
    void hide();
    void onChanged(const std::string& title, double share);
    bool execute() override;
    void showDownload(double seconds);
    void paint(QPainter& painter) const;
    void writeLine();

    KyHostOverlay mOverlay;
    const Listeners mListeners;
    const bool mHasTerminal;
    Title mTitle;
    double mShare = 0.0;
    bool mIsShown = false;
    bool mIsOnTerminal = false;
    bool mIsProcessing = false;
    /// Microseconds of KyTimer; 0 while there is no download.
    long long mDownloadBegin = 0;
};
