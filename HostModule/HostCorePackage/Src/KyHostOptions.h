// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

/// What the command line asks for.
///
/// ```
/// KyHostOptions options;
/// std::string error;
/// if (!KyHostOptions::parse({"--offscreen", "hello.lua"}, options, error))
///     std::cerr << error;
/// ```
struct KyHostOptions {
    enum View { eWindow, eOffscreen, eNoView, eNbViews };
    enum Request { eRun, eShowHelp, eShowVersion, eListDevices, eDescribeScripts, eNbRequests };

    /// One thing to run or show, in the order of the command line.
    struct Item {
        enum Kind { eFile, eChunk, eNbKinds };

        Kind kind = eFile;
        /// Path of a script, model or drawing, or the text of a chunk.
        std::string text;
    };

    /// Where scripts are to stop.
    struct Breakpoint {
        /// Path or name of the script.
        std::string script;
        /// From 1.
        int line = 0;
    };

    static constexpr int cMaxSize = 16384;
    static constexpr int cMaxPort = 65535;

    Request request = eRun;
    View view = eWindow;
    std::vector<Item> items;
    /// Frames after which the program ends.
    std::optional<int> nbFrames;
    /// PNG file for the last frame; empty for none.
    std::string screenshot;
    /// Pixels, 1 to cMaxSize.
    int width = 1280;
    int height = 720;
    /// Modules of device drivers beside those that are installed.
    std::vector<std::string> drivers;
    bool loadsInstalledDrivers = true;
    /// Name of a published object to be shown in an editor; empty for none.
    std::string inspected;
    /// Folder for the annotations of what scripts see, and file for its reference; empty for none.
    std::string stubs;
    std::string reference;
    /// Code of the language of windows and dialogs; empty for that of the settings.
    std::string language;
    bool hasDebugger = false;
    std::vector<Breakpoint> breakpoints;
    /// Loopback port for editors that debug the scripts; 0 for any that is free.
    std::optional<int> debugPort;
    bool waitsForClient = false;
    bool showsStatistics = false;
    bool isInteractive = false;
    bool isWatching = false;
    bool isSandboxed = false;
    /// Also bounded; see KyScriptSandbox.
    bool isSandboxStrict = false;
    bool printsResults = false;
    bool printsTracebacks = false;

    /// Reads the arguments after the program's name. False, and one line without a line end in `error`, when they are
    /// no valid command line. Whether files exist is not looked at.
    static bool parse(const std::vector<std::string>& arguments, KyHostOptions& options, std::string& error);
    /// The text of --help, made of the same table that parse() uses.
    static std::string getHelp();
};
