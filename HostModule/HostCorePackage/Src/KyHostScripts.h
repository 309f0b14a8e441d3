// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostOptions.h"

#include <memory>

class KyHost;
class KyHostDrawing;
class KyHostErrors;
class KyHostSettings;
class KyHostStage;

/// Runs what the command line names, chunks, scripts, models and drawings in their order, in a Lua state that has
/// `scene`, `camera`, `view`, `trackball`, `shaper`, `devices`, `host` and every class of the object model; after a
/// drawing also `drawing` and `drawingView`.
///
/// Running it all again begins with a new Lua state and an empty scene. The scene before stays on the stage until
/// everything has succeeded; after a failure it remains, as still as the failure found it, since what moved it went
/// with the old state, and the scripts' globals name it again. Windows that scripts made, and those of drawings, end
/// with the run that made them.
class KyHostScripts {
public:
    KyHostScripts(const KyHostOptions& options, KyHostErrors& errors, KyHost& host, KyHostStage& stage,
                  const KyHostSettings& settings);
    ~KyHostScripts();

    /// False when anything failed; the rest is run all the same.
    bool run();
    /// As run(), from the beginning. A script with a syntax error is refused before anything is given up.
    bool runAgain();

    /// A file that is shown and not run, by its extension.
    static bool isModel(const std::string& path);
    static bool isDrawing(const std::string& path);
    /// A file that is run.
    static bool isScript(const KyHostOptions::Item& item);

private:
    /// What scripts hold goes.
    void resetState();
    void prepareState();
    bool runItems();
    bool runItem(const KyHostOptions::Item& item);
    bool addModel(const std::string& path);
    bool addDrawing(const std::string& path);
    void bindDrawing();
    bool hasScripts() const;
    bool checkSyntax();

    const KyHostOptions& mOptions;
    KyHostErrors& mErrors;
    KyHost& mHost;
    KyHostStage& mStage;
    const KyHostSettings& mSettings;
    /// Null until a drawing is shown.
    std::unique_ptr<KyHostDrawing> mDrawing;
};
