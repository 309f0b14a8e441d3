// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <map>
#include <string>

/// A program that a test starts, and what it said on both of its streams.
///
///     const KyChildProgram child("\"C:\\program.exe\" argument");
///     EXPECT_EQ(child.getText(), "hello");
class KyChildProgram {
public:
    using Environment = std::map<std::string, std::string>;

    /// Waits for its end, a minute at most.
    explicit KyChildProgram(std::string command, const Environment& environment = {},
                            const std::string& directory = ".") {
        for (const auto& [name, value] : environment)
            ::SetEnvironmentVariableA(name.c_str(), value.c_str());
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        HANDLE reading = nullptr;
        HANDLE writing = nullptr;
        ::CreatePipe(&reading, &writing, &inherited, 0);
        ::SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOA startup{};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = startup.hStdError = writing;
        PROCESS_INFORMATION process{};
        mIsStarted = ::CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, directory.c_str(),
                                      &startup, &process) != FALSE;
        ::CloseHandle(writing);
        read(reading);
        ::CloseHandle(reading);
        if (mIsStarted)
            finish(process);
        for (const auto& [name, value] : environment)
            ::SetEnvironmentVariableA(name.c_str(), nullptr);
    }

    [[nodiscard]] const std::string& getText() const { return mText; }
    /// False when it did not start, too.
    [[nodiscard]] bool hasSucceeded() const { return mIsStarted && mExitCode == 0; }

private:
    void read(HANDLE pipe) {
        std::array<char, 4096> buffer{};
        for (DWORD size = 0; ::ReadFile(pipe, buffer.data(), buffer.size(), &size, nullptr) && size > 0;)
            mText.append(buffer.data(), size);
    }

    void finish(const PROCESS_INFORMATION& process) {
        if (::WaitForSingleObject(process.hProcess, 60'000) != WAIT_OBJECT_0)
            ::TerminateProcess(process.hProcess, 1);
        ::GetExitCodeProcess(process.hProcess, &mExitCode);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }

    std::string mText;
    DWORD mExitCode = 1;
    bool mIsStarted = false;
};
