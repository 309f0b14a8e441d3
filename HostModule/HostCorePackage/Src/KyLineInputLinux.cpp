// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLineInput.h"

#include <QSocketNotifier>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <unistd.h>

#include <readline/history.h>
#include <readline/readline.h>

struct KyLineInput::Native {
    explicit Native(Handlers inputHandlers);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    void showPrompt();
    void hidePrompt();
    void onReadable();
    void readBytes();
    void takeLines();
    void takeLine(const std::string& line);
    void end();

    static void onEditedLine(char* text);
    static char** onComplete(const char* word, int begin, int end);
    static char* nextCandidate(const char* word, int state);

    /// The editing library keeps its state in the process and calls plain functions.
    static Native* msCurrent;

    Handlers handlers;
    bool isTerminal;
    bool isPromptShown = false;
    bool hasEnded = false;
    std::string prompt;
    std::string unfinished;
    std::string historyPath;
    std::vector<std::string> candidates;
    std::size_t nextIndex = 0;
    QSocketNotifier notifier;
};

KyLineInput::Native* KyLineInput::Native::msCurrent = nullptr;

KyLineInput::Native::Native(Handlers inputHandlers)
    : handlers(std::move(inputHandlers))
    , isTerminal(isatty(STDIN_FILENO) && isatty(STDOUT_FILENO))
    , notifier(STDIN_FILENO, QSocketNotifier::Read) {
    msCurrent = this;
    QObject::connect(&notifier, &QSocketNotifier::activated, [this] { onReadable(); });
    if (!isTerminal)
        return;
    static char program[] = "kyhost";
    static char wordBreaks[] = " \t\n\"\\'`@$><=;|&{(+-*/%^~#[],)}";
    rl_readline_name = program;
    rl_basic_word_break_characters = wordBreaks;
    rl_completer_word_break_characters = wordBreaks;
    rl_attempted_completion_function = &onComplete;
    using_history();
}

KyLineInput::Native::~Native() {
    constexpr int cNbKeptLines = 1000;
    notifier.setEnabled(false);
    if (isPromptShown)
        std::fputc('\n', stdout);
    hidePrompt();
    if (!historyPath.empty()) {
        stifle_history(cNbKeptLines);
        write_history(historyPath.c_str());
    }
    msCurrent = nullptr;
}

void KyLineInput::Native::showPrompt() {
    if (!isTerminal || isPromptShown || hasEnded)
        return;
    rl_callback_handler_install(prompt.c_str(), &onEditedLine);
    isPromptShown = true;
}

void KyLineInput::Native::hidePrompt() {
    if (!std::exchange(isPromptShown, false))
        return;
    rl_callback_handler_remove();
}

void KyLineInput::Native::onReadable() {
    if (isTerminal)
        rl_callback_read_char();
    else
        readBytes();
}

void KyLineInput::Native::readBytes() {
    char bytes[4096];
    const auto count = ::read(STDIN_FILENO, bytes, sizeof(bytes));
    if (count > 0) {
        unfinished.append(bytes, static_cast<std::size_t>(count));
        takeLines();
        return;
    }
    if (!unfinished.empty())
        takeLine(std::exchange(unfinished, {}));
    end();
}

void KyLineInput::Native::takeLines() {
    std::size_t length = 0;
    while (!hasEnded && (length = unfinished.find('\n')) != std::string::npos) {
        const std::string line = unfinished.substr(0, length);
        unfinished.erase(0, length + 1);
        takeLine(line);
    }
}

void KyLineInput::Native::takeLine(const std::string& line) {
    if (handlers.line(line))
        return;
    hasEnded = true;
    notifier.setEnabled(false);
}

void KyLineInput::Native::end() {
    if (std::exchange(hasEnded, true))
        return;
    notifier.setEnabled(false);
    handlers.end();
}

/// The terminal is given back while the line runs, so that what it prints looks as it should.
void KyLineInput::Native::onEditedLine(char* text) {
    Native& input = *msCurrent;
    input.hidePrompt();
    if (!text) {
        std::fputc('\n', stdout);
        input.end();
        return;
    }
    const std::string line(text);
    std::free(text);
    input.takeLine(line);
    input.showPrompt();
}

char** KyLineInput::Native::onComplete(const char* word, int, int) {
    Native& input = *msCurrent;
    rl_attempted_completion_over = 1;
    rl_completion_append_character = '\0';
    input.candidates = input.handlers.complete(word);
    input.nextIndex = 0;
    return rl_completion_matches(word, &nextCandidate);
}

char* KyLineInput::Native::nextCandidate(const char*, int) {
    Native& input = *msCurrent;
    if (input.nextIndex == input.candidates.size())
        return nullptr;
    return ::strdup(input.candidates[input.nextIndex++].c_str());
}

KyLineInput::KyLineInput(Handlers handlers)
    : mNative(std::make_unique<Native>(std::move(handlers))) {}

KyLineInput::~KyLineInput() = default;

bool KyLineInput::isTerminal() const {
    return mNative->isTerminal;
}

void KyLineInput::setPrompt(const std::string& prompt) {
    const bool isFirst = mNative->prompt.empty();
    mNative->prompt = prompt;
    if (isFirst)
        mNative->showPrompt();
}

void KyLineInput::keepHistory(const std::string& path) {
    if (!mNative->isTerminal)
        return;
    mNative->historyPath = path;
    read_history(path.c_str());
}

void KyLineInput::addHistory(const std::string& line) {
    const HIST_ENTRY* const last = history_length > 0 ? history_get(history_base + history_length - 1) : nullptr;
    if (mNative->isTerminal && (!last || line != last->line))
        add_history(line.c_str());
}

void KyLineInput::writeAround(const std::function<void()>& write) {
    if (!mNative->isPromptShown) {
        write();
        return;
    }
    rl_clear_visible_line();
    write();
    std::fflush(stdout);
    rl_forced_update_display();
}
