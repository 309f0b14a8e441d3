// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include <lua.hpp>

/// Matches the patterns of Lua 5.1 and counts what it does, so that a sandbox can end it: patterns that go back over
/// and over may take for ever. Raises Lua errors for patterns that are none, that nest too deeply or take too long, and
/// therefore owns nothing.
///
/// ```
/// KyLuaPattern pattern(state, subject, "(%a+)=(%d+)");
/// if (const char* end = pattern.match(subject.data()))
///     return pattern.pushCaptures(subject.data(), end);
/// ```
class KyLuaPattern {
public:
    /// A pattern ends at its first zero byte.
    KyLuaPattern(lua_State* state, std::string_view subject, std::string_view pattern);

    /// The end of the match that begins at `start`, null when there is none.
    const char* match(const char* start);
    /// The captures of the last match, or all of it when there are none. Gives their number.
    int pushCaptures(const char* begin, const char* end);
    /// The captures alone.
    int pushOnlyCaptures();
    /// One capture, counted from 0; capture 0 of a pattern without captures is the whole match.
    void pushCapture(int index, const char* begin, const char* end);

private:
    enum class Kind { eOpen, eText, ePosition };

    struct Capture {
        const char* begin;
        std::size_t size;
        Kind kind;
    };

    const char* matchHere(const char* text, const char* item);
    const char* matchItems(const char* text, const char* item);
    const char* matchSpecial(const char*& text, const char*& item, bool& isDone);
    const char* matchMost(const char* text, const char* item, const char* itemEnd, std::size_t least);
    const char* matchLeast(const char* text, const char* item, const char* itemEnd);
    const char* openCapture(const char* text, const char* item, Kind kind);
    const char* closeCapture(const char* text, const char* item);
    const char* matchCapture(const char* text, int digit);
    const char* matchBalance(const char* text, const char* item);
    bool isFrontier(const char* text, const char* set, const char* setEnd) const;
    bool matchesOne(const char* text, const char* item, const char* itemEnd);
    static bool isInSet(unsigned char letter, const char* set, const char* setEnd);
    static bool isInClass(unsigned char letter, char name);
    const char* findItemEnd(const char* item) const;
    int checkCapture(int digit) const;
    void count(std::size_t nbSteps = 1);
    void countItem(const char* item, const char* itemEnd);

    static constexpr int cMaxCaptures = LUA_MAXCAPTURES;

    lua_State* mState;
    std::string_view mSubject;
    const char* mPattern;
    const char* mPatternEnd;
    int mDepth = 0;
    std::size_t mNbSteps = 0;
    int mNbCaptures = 0;
    std::array<Capture, static_cast<std::size_t>(cMaxCaptures)> mCaptures;
};
