// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string>

/// What the debug hook keeps of a run, cheap to note down: the line, the source of the function entered last, and the
/// last calls.
class KyScriptTrace {
public:
    /// The next call begins a new list.
    void beginRun() { mBeginsList = true; }
    void noteLine(int line) {
        mLine = line;
        mIsNew = true;
    }
    /// A call of a function of Lua. The kind is one of Lua's words, which live for ever; the name may be null.
    void noteCall(const char* kind, const char* source, const char* name) {
        mIsNative = false;
        mSource = source;
        note(kind, name);
    }
    /// A call of a C function.
    void noteNativeCall(const char* name) {
        mIsNative = true;
        note("C", name);
    }
    void setSource(const char* source) {
        mIsNative = false;
        mSource = source;
    }

    /// Something was noted since this was asked last.
    bool takeNews() {
        const bool isNew = mIsNew;
        mIsNew = false;
        return isNew;
    }
    bool hasNews() const { return mIsNew; }
    /// 0 before the first.
    int getLine() const { return mLine; }
    std::string getSource() const { return mIsNative ? "=[C]" : mSource; }
    /// One line a call, oldest first: "[Lua]open".
    std::string makeCallstack() const;

private:
    struct Call {
        const char* kind = "";
        std::string name;
    };

    void note(const char* kind, const char* name);

    static constexpr std::size_t cMaxCalls = 500;

    bool mIsNew = false;
    bool mBeginsList = true;
    int mLine = 0;
    bool mIsNative = false;
    std::string mSource;
    std::array<Call, cMaxCalls> mCalls;
    /// Where the next call goes; the list has come round when it is full.
    std::size_t mNext = 0;
    bool mIsFull = false;
};
