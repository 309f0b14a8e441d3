// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostOptions.h"

#include "KyHostKeys.h"

#include "KyLanguage.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace {

/// One option: `argument` is null for switches, `expected` says what the argument must be; a switch with it may have
/// one after "=".
struct Option {
    std::string_view name;
    std::string_view alias;
    const char* argument;
    const char* expected;
    const char* help;
    bool (*handle)(KyHostOptions& options, std::string_view value);
};

bool readInteger(std::string_view text, int lowest, int highest, int& value) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number < lowest || number > highest)
        return false;
    value = number;
    return true;
}

bool readFrames(KyHostOptions& options, std::string_view value) {
    int frames = 0;
    if (!readInteger(value, 1, std::numeric_limits<int>::max(), frames))
        return false;
    options.nbFrames = frames;
    return true;
}

bool readSize(KyHostOptions& options, std::string_view value) {
    const std::size_t cross = value.find('x');
    if (cross == std::string_view::npos)
        return false;
    return readInteger(value.substr(0, cross), 1, KyHostOptions::cMaxSize, options.width) &&
           readInteger(value.substr(cross + 1), 1, KyHostOptions::cMaxSize, options.height);
}

bool readScreenshot(KyHostOptions& options, std::string_view value) {
    options.screenshot = value;
    return !value.empty();
}

bool addChunk(KyHostOptions& options, std::string_view value) {
    options.items.push_back({KyHostOptions::Item::eChunk, std::string(value)});
    return true;
}

bool readInspected(KyHostOptions& options, std::string_view value) {
    options.inspected = value;
    return !value.empty();
}

bool readLanguage(KyHostOptions& options, std::string_view value) {
    const QString name = QString::fromUtf8(value.data(), static_cast<int>(value.size()));
    options.language = KyLanguage::find(name).toStdString();
    return !options.language.empty();
}

/// Installed drivers would make it differ from machine to machine. What looks like an option is a forgotten name.
template <std::string KyHostOptions::*cMember>
bool readDescription(KyHostOptions& options, std::string_view value) {
    options.request = KyHostOptions::eDescribeScripts;
    options.view = KyHostOptions::eNoView;
    options.loadsInstalledDrivers = false;
    options.*cMember = value;
    return !value.empty() && !value.starts_with("--");
}

bool addBreakpoint(KyHostOptions& options, std::string_view value) {
    const std::size_t colon = value.rfind(':');
    int line = 0;
    if (colon == std::string_view::npos || colon == 0 ||
        !readInteger(value.substr(colon + 1), 1, std::numeric_limits<int>::max(), line))
        return false;
    options.breakpoints.push_back({std::string(value.substr(0, colon)), line});
    return true;
}

bool readPort(KyHostOptions& options, std::string_view value) {
    int port = 0;
    if (!readInteger(value, 0, KyHostOptions::cMaxPort, port))
        return false;
    options.debugPort = port;
    return true;
}

/// Without an argument the value has no data.
bool readSandbox(KyHostOptions& options, std::string_view value) {
    options.isSandboxed = true;
    options.isSandboxStrict = value == "strict";
    return options.isSandboxStrict || !value.data();
}

bool addDriver(KyHostOptions& options, std::string_view value) {
    options.drivers.emplace_back(value);
    return !value.empty();
}

template <auto Member, auto Value = true>
bool set(KyHostOptions& options, std::string_view) {
    options.*Member = Value;
    return true;
}

constexpr Option cOptions[] = {
    {"-e", "", "CHUNK", "a chunk", "run a chunk of Lua, in order with the files; repeatable", &addChunk},
    {"-i", "", nullptr, nullptr, "read lines from a prompt and print their results",
     &set<&KyHostOptions::isInteractive>},
    {"--watch", "", nullptr, nullptr, "run everything again when a file changes", &set<&KyHostOptions::isWatching>},
    {"--sandbox", "", nullptr, "'strict'", "remove the unsafe functions from scripts; strict also bounds them",
     &readSandbox},
    {"--no-window", "", nullptr, nullptr, "run without display and GL until no coroutine waits",
     &set<&KyHostOptions::view, KyHostOptions::eNoView>},
    {"--offscreen", "", nullptr, nullptr, "draw without a display, 120 frames unless told",
     &set<&KyHostOptions::view, KyHostOptions::eOffscreen>},
    {"--frames", "", "N", "a whole number from 1", "end after N frames", &readFrames},
    {"--screenshot", "", "FILE.png", "a file name", "write the last frame to a PNG file", &readScreenshot},
    {"--size", "", "WxH", "a size from 1x1 to 16384x16384", "size of the view in pixels, 1280x720 unless given",
     &readSize},
    {"--statistics", "", nullptr, nullptr, "show over the view how fast frames come and what is in them",
     &set<&KyHostOptions::showsStatistics>},
    {"--devices", "", nullptr, nullptr, "list input devices with their channels and exit",
     &set<&KyHostOptions::request, KyHostOptions::eListDevices>},
    {"--driver", "", "FILE", "a file name", "load one more driver of input devices; repeatable", &addDriver},
    {"--no-drivers", "", nullptr, nullptr, "leave the installed drivers of input devices out",
     &set<&KyHostOptions::loadsInstalledDrivers, false>},
    {"--inspect", "", "NAME", "the name of a published object",
     "show and edit the attributes of the published object of that name", &readInspected},
    {"--language", "", "CODE", "a language that is there, such as 'de'",
     "language of windows and dialogs, such as de, en or fr", &readLanguage},
    {"--debugger", "", nullptr, nullptr, "open the debugger and stop at the first line that runs",
     &set<&KyHostOptions::hasDebugger>},
    {"--break", "", "FILE:LINE", "a script and a line, such as 'door.lua:12'",
     "open the debugger and stop at that line; repeatable", &addBreakpoint},
    {"--debug-port", "", "N", "a port from 0 to 65535",
     "let an editor debug the scripts (DAP) over 127.0.0.1:N; 0 takes a free port", &readPort},
    {"--debug-wait", "", nullptr, nullptr, "wait for that editor and stop at the first line that runs",
     &set<&KyHostOptions::waitsForClient>},
    {"--print-results", "", nullptr, nullptr, "print what scripts and chunks return",
     &set<&KyHostOptions::printsResults>},
    {"--traceback", "", nullptr, nullptr, "print where in the script an error came from",
     &set<&KyHostOptions::printsTracebacks>},
    {"--write-stubs", "", "DIR", "the name of a folder",
     "write what scripts see as annotations for Lua editors and exit", &readDescription<&KyHostOptions::stubs>},
    {"--write-reference", "", "FILE", "a file name", "write what scripts see as a document and exit",
     &readDescription<&KyHostOptions::reference>},
    {"--version", "", nullptr, nullptr, "print the versions and exit",
     &set<&KyHostOptions::request, KyHostOptions::eShowVersion>},
    {"--help", "-h", nullptr, nullptr, "print this text and exit",
     &set<&KyHostOptions::request, KyHostOptions::eShowHelp>},
};

const Option* findOption(std::string_view name) {
    const auto* const found = std::find_if(std::begin(cOptions), std::end(cOptions), [name](const Option& option) {
        return option.name == name || (!option.alias.empty() && option.alias == name);
    });
    return found == std::end(cOptions) ? nullptr : found;
}

std::string quote(std::string_view text) {
    return "'" + std::string(text) + "'";
}

/// A long option's argument may follow "=".
std::size_t findInlineValue(std::string_view argument) {
    return argument.starts_with("--") ? argument.find('=') : std::string_view::npos;
}

/// Handles the option at `position` and moves it to the option's last word.
bool readOption(const std::vector<std::string>& arguments, std::size_t& position, KyHostOptions& options,
                std::string& error) {
    const std::string_view word = arguments[position];
    const std::size_t equals = findInlineValue(word);
    const bool hasInlineValue = equals != std::string_view::npos;
    const std::string_view name = word.substr(0, equals);
    const Option* const option = findOption(name);
    if (!option) {
        error = "unknown option " + quote(name);
        return false;
    }
    if (!option->argument && !option->expected && hasInlineValue) {
        error = "option " + quote(name) + " takes no argument";
        return false;
    }
    if (option->argument && !hasInlineValue && ++position == arguments.size()) {
        error = "option " + quote(name) + " needs " + option->expected;
        return false;
    }
    std::string_view value;
    if (hasInlineValue)
        value = word.substr(equals + 1);
    else if (option->argument)
        value = arguments[position];
    if (option->handle(options, value))
        return true;
    error = "option " + quote(name) + " needs " + option->expected + ", not " + quote(value);
    return false;
}

bool isOption(std::string_view argument) {
    return argument.size() > 1 && argument.front() == '-';
}

/// What an option cannot do without.
struct Need {
    bool isMissing;
    std::string_view name;
    const char* text;
};

bool checkTogether(const KyHostOptions& options, std::string& error) {
    constexpr const char* cNeedsView = " needs a view, which '--no-window' takes away";
    constexpr const char* cNeedsWindow = " needs a window to open; '--debug-port' does without";
    constexpr const char* cRunsNothing = " runs nothing: leave files and '-e' out";
    const bool hasNoView = options.view == KyHostOptions::eNoView;
    const bool hasNoWindow = options.view != KyHostOptions::eWindow;
    const Need needs[] = {
        {hasNoView && !options.screenshot.empty(), "--screenshot", cNeedsView},
        {hasNoView && !options.inspected.empty(), "--inspect", cNeedsView},
        {hasNoView && options.showsStatistics, "--statistics", cNeedsView},
        {hasNoWindow && options.hasDebugger, "--debugger", cNeedsWindow},
        {hasNoWindow && !options.breakpoints.empty(), "--break", cNeedsWindow},
        {options.waitsForClient && !options.debugPort, "--debug-wait", " needs '--debug-port'"},
        {!options.stubs.empty() && !options.items.empty(), "--write-stubs", cRunsNothing},
        {!options.reference.empty() && !options.items.empty(), "--write-reference", cRunsNothing},
    };
    const Need* const missing = std::ranges::find_if(needs, &Need::isMissing);
    if (missing == std::end(needs))
        return true;
    error = "option " + quote(missing->name) + missing->text;
    return false;
}

std::string_view unquote(std::string_view text) {
    return text.substr(1, text.size() - 2);
}

std::string getUsage(const Option& option) {
    std::string usage(option.name);
    if (!option.alias.empty())
        usage.insert(0, std::string(option.alias) + ", ");
    if (option.argument)
        usage += std::string(" ") + option.argument;
    else if (option.expected)
        usage += "[=" + std::string(unquote(option.expected)) + "]";
    return usage;
}

} // namespace

bool KyHostOptions::parse(const std::vector<std::string>& arguments, KyHostOptions& options, std::string& error) {
    options = KyHostOptions();
    bool areOptionsOver = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!areOptionsOver && argument == "--")
            areOptionsOver = true;
        else if (areOptionsOver || !isOption(argument))
            options.items.push_back({Item::eFile, argument});
        else if (!readOption(arguments, i, options, error))
            return false;
        if (options.request == eShowHelp || options.request == eShowVersion)
            return true;
    }
    return checkTogether(options, error);
}

std::string KyHostOptions::getHelp() {
    constexpr std::size_t cColumn = 24;
    std::string help = "usage: kyhost [options] [SCRIPT.lua | MODEL | DRAWING.svg]...\n\n"
                       "Shows a 3D scene that Lua scripts make and move. Scripts find it in the globals\n"
                       "scene, camera, view, trackball, shaper, devices, network, progress and host. A drawing\n"
                       "is shown as 2D nodes in a window of its own, which scripts after it find in drawing and\n"
                       "drawingView.\n\n";
    for (const Option& option : cOptions) {
        const std::string usage = getUsage(option);
        help += "  " + usage + std::string(cColumn - std::min(cColumn - 1, usage.size()), ' ') + option.help + "\n";
    }
    return help +
           "  --                      what follows are files, whatever their names\n\n"
           "In the window:\n" +
           KyHostKeys::getText() +
           "In the window of a drawing wheel and drag zoom and pan, F shows all, a click picks;\n"
           "F1, F9, F12, P and Escape do the same.\n\n"
           "After an error in a changed script --watch keeps the old picture, which stands still\n"
           "until the next change: the coroutines that moved it are gone.\n\n"
           "Exits with 0; with 1 when a script failed or a file given here could not be read; with 2\n"
           "for a wrong command line or a missing file.\n";
}
