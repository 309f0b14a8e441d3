// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

/// Where errors go while it lives: those of scripts unchanged, those of the libraries and of the program itself after
/// the program's name, all to standard error, with standard output flushed first so that the order is kept. One in a
/// process: the script engine and the foundation report to plain functions.
class KyHostErrors {
public:
    /// Calls what it is given, and puts out of the way whatever stands on the terminal meanwhile.
    using Around = std::function<void(const std::function<void()>& write)>;

    /// Traceback: print where in the script an error came from, after the error.
    explicit KyHostErrors(bool printsTracebacks);
    ~KyHostErrors();
    KyHostErrors(const KyHostErrors&) = delete;
    KyHostErrors& operator=(const KyHostErrors&) = delete;

    /// Errors of scripts, coroutines included. That a form is shown without some of its parts is none.
    unsigned getNbScriptErrors() const { return mNbScriptErrors; }
    /// Takes the last one back: a person has seen it and can answer it.
    void forgetLastScriptError() { --mNbScriptErrors; }
    void setAround(Around around) { mAround = std::move(around); }

    /// "kyhost: " and the message on a line of its own; works without an instance.
    static void write(const std::string& message);

private:
    static void onScriptError(const std::string& message);
    static void onReport(const std::string& text);
    static void writeLine(const std::string& line);

    static KyHostErrors* msCurrent;

    bool mPrintsTracebacks;
    unsigned mNbScriptErrors = 0;
    Around mAround;
};
