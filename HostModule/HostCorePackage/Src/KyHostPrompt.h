// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLineInput.h"

#include <functional>
#include <string>

class KyHost;

/// The prompt: runs the lines of standard input in the script engine and prints what they return. A line may be an
/// expression; one that is not complete is continued by the next. At a terminal its end ends the program; the end of
/// other input ends the prompt only.
class KyHostPrompt {
public:
    /// `linesRan` is called after each line that was run, and with false when it failed; `ended` when no more follow.
    struct Listeners {
        std::function<void(bool succeeded)> lineRan;
        std::function<void()> ended;
    };

    KyHostPrompt(KyHost& host, Listeners listeners);

    bool isTerminal() const { return mInput.isTerminal(); }
    /// See KyLineInput::writeAround.
    void writeAround(const std::function<void()>& write) { mInput.writeAround(write); }
    /// See KyLineInput::flushOutput.
    void flushOutput() { mInput.flushOutput(); }

private:
    bool onLine(const std::string& line);
    void onInterrupt();
    void onEnd();
    /// True when the text may become valid with more lines.
    bool isIncomplete(const std::string& error) const;
    void execute(const std::string& chunk);

    KyHost& mHost;
    Listeners mListeners;
    std::string mChunk;
    KyLineInput mInput;
};
