// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLineInput.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <stdio_ext.h>
#include <termios.h>
#include <unistd.h>

#include <readline/history.h>
#include <readline/readline.h>

namespace {

/// Signals that a person or the system ends the edited line with.
constexpr int cSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr int cNbSignals = sizeof(cSignals) / sizeof(*cSignals);

/// Turns signals into bytes of a pipe while a line is being edited, for in a handler next to nothing may be called.
/// When the event loop leaves several unanswered, as a script that never yields makes it, the terminal is put back and
/// the signal does what it did without us.
class SignalPipe {
public:
    SignalPipe();
    ~SignalPipe();
    SignalPipe(const SignalPipe&) = delete;
    SignalPipe& operator=(const SignalPipe&) = delete;

    int getDescriptor() const { return mEnds[0]; }
    void catchSignals();
    void releaseSignals();
    /// The next signal; 0 when there is none.
    int take();

private:
    static void onSignal(int number);

    static constexpr int cPatience = 3;
    static SignalPipe* msCurrent;
    static volatile std::sig_atomic_t msNbUnanswered;

    int mEnds[2] = {-1, -1};
    termios mSettings{};
    struct sigaction mBefore[cNbSignals] {};
    bool mIsCatching = false;
};

SignalPipe* SignalPipe::msCurrent = nullptr;
volatile std::sig_atomic_t SignalPipe::msNbUnanswered = 0;

SignalPipe::SignalPipe() {
    msCurrent = this;
    tcgetattr(STDIN_FILENO, &mSettings);
    if (::pipe2(mEnds, O_NONBLOCK | O_CLOEXEC) != 0)
        mEnds[0] = mEnds[1] = -1;
}

SignalPipe::~SignalPipe() {
    releaseSignals();
    ::close(mEnds[0]);
    ::close(mEnds[1]);
    msCurrent = nullptr;
}

void SignalPipe::catchSignals() {
    if (mEnds[0] < 0 || std::exchange(mIsCatching, true))
        return;
    struct sigaction action {};
    action.sa_handler = &onSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (int i = 0; i < cNbSignals; ++i) {
        sigaction(cSignals[i], nullptr, &mBefore[i]);
        // Whoever started the program to outlive its terminal has the signal ignored.
        if (mBefore[i].sa_handler != SIG_IGN)
            sigaction(cSignals[i], &action, nullptr);
    }
}

void SignalPipe::releaseSignals() {
    if (!std::exchange(mIsCatching, false))
        return;
    for (int i = 0; i < cNbSignals; ++i)
        sigaction(cSignals[i], &mBefore[i], nullptr);
}

int SignalPipe::take() {
    char number = 0;
    msNbUnanswered = 0;
    return ::read(mEnds[0], &number, 1) == 1 ? number : 0;
}

void SignalPipe::onSignal(int number) {
    const int error = errno;
    const char byte = static_cast<char>(number);
    msNbUnanswered = msNbUnanswered + 1;
    if (msNbUnanswered >= cPatience || ::write(msCurrent->mEnds[1], &byte, 1) != 1) {
        tcsetattr(STDIN_FILENO, TCSANOW, &msCurrent->mSettings);
        std::signal(number, SIG_DFL);
        std::raise(number);
    }
    errno = error;
}

/// Holds back what is printed while a line is being edited, so that it can be written around the line.
char gHeldOutput[1 << 16];

void holdOutput(bool holds) {
    std::fflush(stdout);
    std::setvbuf(stdout, gHeldOutput, holds ? _IOFBF : _IOLBF, sizeof(gHeldOutput));
}

/// The line that is edited goes to the terminal past what is held back.
FILE* openEditorStream() {
    FILE* const stream = ::fdopen(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0), "w");
    return stream ? stream : stdout;
}

} // namespace

struct KyLineInput::Native {
    explicit Native(Handlers inputHandlers);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    void showPrompt();
    void hidePrompt();
    void onReadable();
    void onSignal();
    void interrupt();
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
    /// Terminals only.
    std::unique_ptr<SignalPipe> signalPipe;
    std::unique_ptr<QSocketNotifier> signalNotifier;
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
    rl_catch_signals = 0;
    rl_outstream = openEditorStream();
    using_history();
    signalPipe = std::make_unique<SignalPipe>();
    signalNotifier = std::make_unique<QSocketNotifier>(signalPipe->getDescriptor(), QSocketNotifier::Read);
    QObject::connect(signalNotifier.get(), &QSocketNotifier::activated, [this] { onSignal(); });
}

KyLineInput::Native::~Native() {
    constexpr int cNbKeptLines = 1000;
    notifier.setEnabled(false);
    if (isPromptShown)
        std::fputc('\n', rl_outstream);
    hidePrompt();
    if (!historyPath.empty())
        history_truncate_file(historyPath.c_str(), cNbKeptLines);
    if (isTerminal && rl_outstream != stdout)
        std::fclose(std::exchange(rl_outstream, stdout));
    msCurrent = nullptr;
}

void KyLineInput::Native::showPrompt() {
    if (!isTerminal || isPromptShown || hasEnded)
        return;
    holdOutput(true);
    signalPipe->catchSignals();
    rl_callback_handler_install(prompt.c_str(), &onEditedLine);
    isPromptShown = true;
}

void KyLineInput::Native::hidePrompt() {
    if (!std::exchange(isPromptShown, false))
        return;
    rl_callback_handler_remove();
    signalPipe->releaseSignals();
    std::fflush(rl_outstream);
    holdOutput(false);
}

void KyLineInput::Native::onReadable() {
    if (isTerminal)
        rl_callback_read_char();
    else
        readBytes();
}

void KyLineInput::Native::onSignal() {
    const int number = signalPipe->take();
    if (number == 0 || hasEnded || (number == SIGINT && !isPromptShown))
        return;
    interrupt();
    if (number == SIGINT)
        showPrompt();
    else
        end();
}

/// What was typed is given up; the cursor goes to a line of its own.
void KyLineInput::Native::interrupt() {
    rl_callback_sigcleanup();
    std::fputc('\n', rl_outstream);
    hidePrompt();
    handlers.interrupt();
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
    // A line may process events; those that follow wait for it.
    notifier.setEnabled(false);
    hasEnded = !handlers.line(line) || hasEnded;
    notifier.setEnabled(!hasEnded);
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
    // Appending makes no file.
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0)
        ::close(file);
}

void KyLineInput::addHistory(const std::string& line) {
    const HIST_ENTRY* const last = history_length > 0 ? history_get(history_base + history_length - 1) : nullptr;
    if (!mNative->isTerminal || (last && line == last->line))
        return;
    add_history(line.c_str());
    if (!mNative->historyPath.empty())
        append_history(1, mNative->historyPath.c_str());
}

void KyLineInput::writeAround(const std::function<void()>& write) {
    if (!mNative->isPromptShown) {
        write();
        return;
    }
    rl_clear_visible_line();
    std::fflush(rl_outstream);
    if (const std::size_t held = __fpending(stdout); held > 0 && gHeldOutput[held - 1] != '\n')
        std::fputc('\n', stdout);
    write();
    std::fflush(stdout);
    rl_forced_update_display();
}

void KyLineInput::flushOutput() {
    if (!mNative->isPromptShown)
        std::fflush(stdout);
    else if (__fpending(stdout) > 0)
        writeAround([] { std::fflush(stdout); });
}
