// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Lines from standard input while the event loop runs. At a terminal with editing, history and completion by the
/// tabulator key; from a pipe or a file just the lines. One at a time in a process; the handlers run on the event
/// loop's thread and may end the program's loop, but not the input itself.
class KyLineInput {
public:
    struct Handlers {
        /// One line, without its line end; false when no more are wanted.
        std::function<bool(const std::string& line)> line;
        /// The line that was begun, and those that it continues, are given up; terminals only.
        std::function<void()> interrupt;
        /// Standard input is over, or the program has been asked to end.
        std::function<void()> end;
        /// The texts that may stand for an unfinished word.
        std::function<std::vector<std::string>(const std::string& word)> complete;
    };

    explicit KyLineInput(Handlers handlers);
    /// Gives the terminal back as it was, which a signal that ends the program does, too.
    ~KyLineInput();
    KyLineInput(const KyLineInput&) = delete;
    KyLineInput& operator=(const KyLineInput&) = delete;

    bool isTerminal() const;
    /// Shown before the lines to come; terminals only.
    void setPrompt(const std::string& prompt);
    /// Reads the lines of earlier sessions from the file and appends those of this one, each at once; terminals only.
    void keepHistory(const std::string& path);
    void addHistory(const std::string& line);
    /// Lets something else write to the terminal: the line being edited goes out of the way and comes back.
    void writeAround(const std::function<void()>& write);
    /// Brings what was printed to standard output, in whole lines while a line is being edited, which stays below.
    void flushOutput();

private:
    struct Native;

    std::unique_ptr<Native> mNative;
};
