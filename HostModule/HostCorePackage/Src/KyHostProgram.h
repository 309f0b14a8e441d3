// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHost.h"
#include "KyHostDebugger.h"
#include "KyHostDrawing.h"
#include "KyHostErrors.h"
#include "KyHostFileWatch.h"
#include "KyHostInspector.h"
#include "KyHostLoop.h"
#include "KyHostOptions.h"
#include "KyHostProgress.h"
#include "KyHostPrompt.h"
#include "KyHostScripts.h"
#include "KyHostSettings.h"
#include "KyHostStage.h"
#include "KyHostStatistics.h"
#include "KyHostSurface.h"

#include "KyObjectReference.h"

#include <QTimer>

#include <memory>
#include <optional>
#include <string>

/// One run of the program, from the command line to the exit code. Everything of it lives between the initialisation
/// and the finalisation of the modules.
class KyHostProgram {
public:
    enum ExitCode { eSuccess = 0, eFailure = 1, eBadUsage = 2, eNbExitCodes };

    /// What main() does.
    static int run(int argc, char** argv);

private:
    explicit KyHostProgram(const KyHostOptions& options);
    ~KyHostProgram();
    KyHostProgram(const KyHostProgram&) = delete;
    KyHostProgram& operator=(const KyHostProgram&) = delete;

    int execute();
    /// Writes what scripts see, after those of the command line.
    int describeScripts();
    void speak() const;
    bool openSurface();
    void openWindow(std::string& error);
    void openPrompt();
    void watchFiles();
    void runLoop();
    void openWhatIsShown();
    void openOverlays();
    void listenToKeys();
    /// Brings the view to the screen while something long goes on; false when there is none.
    bool showView();
    /// False, and said, when the port that editors use cannot be had.
    bool openDebugger();
    /// Says it when there is no object of the name that is to be inspected.
    void checkInspector() const;
    void runAgain();
    bool savePicture();
    void onPromptEnded();
    KyHostLoop::Limits getLimits() const;

    const KyHostOptions& mOptions;
    KyHostErrors mErrors;
    KyHostSettings mSettings{KyHostSettings::getDefaultPath()};
    KyHost mHost;
    /// Outlives what the stage has on the device.
    std::unique_ptr<KyHostSurface> mSurface;
    KyHostStage mStage;
    KyHostScripts mScripts;
    std::unique_ptr<KyHostLoop> mLoop;
    std::unique_ptr<KyHostProgress> mProgress;
    /// Null without a view.
    std::unique_ptr<KyHostStatistics> mStatistics;
    std::unique_ptr<KyHostFileWatch> mWatch;
    std::unique_ptr<KyHostPrompt> mPrompt;
    /// The window of a 2D scene where that is all there is to see, else null.
    KyObjectReference mDrawingView;
    std::unique_ptr<QObject> mDrawingKeys;
    std::unique_ptr<KyHostDebugger> mDebugger;
    /// Null unless an object is inspected.
    std::unique_ptr<KyHostInspector> mInspector;
    QTimer mReloadTimer;
    bool mHasPromptEnded = false;
};
