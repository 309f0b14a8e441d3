// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaPattern_p.h"
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <limits>
#include <string_view>

namespace {

/// Bytes that are copied in the time of one instruction.
constexpr std::size_t cBytesPerUnit = 16;

std::string_view checkText(lua_State* state, int index) {
    std::size_t size = 0;
    const char* const text = luaL_checklstring(state, index, &size);
    return {text, size};
}

void charge(lua_State* state, std::size_t bytes) {
    KyScriptSandbox::Private::charge(state, bytes / cBytesPerUnit);
}

/// A text that grows, in a userdata that stands at a fixed index of the stack: the limit of the state holds for it, and
/// errors leave nothing behind.
class Buffer {
public:
    Buffer(lua_State* state, std::size_t capacity)
        : mState(state)
        , mBytes(static_cast<char*>(lua_newuserdata(state, capacity)))
        , mCapacity(capacity)
        , mIndex(lua_gettop(state)) {}

    void add(std::string_view text) {
        if (text.empty())
            return;
        if (text.size() > mCapacity - mSize)
            grow(text.size());
        std::memcpy(mBytes + mSize, text.data(), text.size());
        mSize += text.size();
    }
    void add(char letter) { add(std::string_view(&letter, 1)); }
    void push() const { lua_pushlstring(mState, mBytes, mSize); }

private:
    void grow(std::size_t least) {
        if (least > std::numeric_limits<std::size_t>::max() / 4 - mCapacity)
            luaL_error(mState, "resulting string too large");
        const std::size_t capacity = std::max(mCapacity * 2, mSize + least);
        charge(mState, capacity);
        auto* const bytes = static_cast<char*>(lua_newuserdata(mState, capacity));
        std::memcpy(bytes, mBytes, mSize);
        lua_replace(mState, mIndex);
        mBytes = bytes;
        mCapacity = capacity;
    }

    lua_State* mState;
    char* mBytes;
    std::size_t mCapacity;
    std::size_t mSize = 0;
    int mIndex;
};

int repeat(lua_State* state) {
    const std::string_view text = checkText(state, 1);
    const double number = luaL_checknumber(state, 2);
    if (text.empty() || !(number >= 1)) {
        lua_pushliteral(state, "");
        return 1;
    }
    constexpr double cMaxSize = std::numeric_limits<std::int32_t>::max();
    if (number > cMaxSize / static_cast<double>(text.size()))
        return luaL_error(state, "resulting string too large");
    const std::size_t size = text.size() * static_cast<std::size_t>(number);
    charge(state, size);
    auto* const bytes = static_cast<char*>(lua_newuserdata(state, size));
    std::memcpy(bytes, text.data(), text.size());
    for (std::size_t done = text.size(); done < size; done += std::min(done, size - done))
        std::memcpy(bytes + done, bytes, std::min(done, size - done));
    lua_pushlstring(state, bytes, size);
    return 1;
}

/// Where the text stands in the subject at or behind `start`; null when it does not.
const char* findPlain(lua_State* state, std::string_view subject, std::string_view text, std::size_t start) {
    if (text.size() > subject.size() - start)
        return nullptr;
    const char* const last = subject.data() + subject.size() - text.size();
    for (const char* place = subject.data() + start;; ++place) {
        const auto rest = static_cast<std::size_t>(last - place) + 1;
        const char* const found = text.empty() ? place : static_cast<const char*>(std::memchr(place, text[0], rest));
        charge(state, found ? static_cast<std::size_t>(found - place) + text.size() : rest);
        if (!found || std::memcmp(found, text.data(), text.size()) == 0)
            return found;
        place = found;
        if (place == last)
            return nullptr;
    }
}

/// The place in the text that argument 3 means, from 0; beyond the end it is the end.
std::size_t readStart(lua_State* state, std::size_t size) {
    const double wanted = luaL_optnumber(state, 3, 1);
    const auto length = static_cast<double>(size);
    const double start = wanted < 0 ? length + wanted : wanted - 1;
    if (start >= length)
        return size;
    // NaN is the beginning.
    return start > 0 ? static_cast<std::size_t>(start) : 0;
}

int pushRange(lua_State* state, std::string_view subject, const char* begin, const char* end) {
    lua_pushinteger(state, begin - subject.data() + 1);
    lua_pushinteger(state, end - subject.data());
    return 2;
}

bool isPlain(lua_State* state, std::string_view pattern) {
    return lua_toboolean(state, 4) != 0 || pattern.find_first_of("^$*+?.([%-") == std::string_view::npos;
}

template <bool IsFinding>
int search(lua_State* state) {
    const std::string_view subject = checkText(state, 1);
    std::string_view pattern = checkText(state, 2);
    const std::size_t start = readStart(state, subject.size());
    if (IsFinding && isPlain(state, pattern)) {
        if (const char* const found = findPlain(state, subject, pattern, start))
            return pushRange(state, subject, found, found + pattern.size());
        lua_pushnil(state);
        return 1;
    }
    const bool isAnchored = pattern.starts_with('^');
    if (isAnchored)
        pattern.remove_prefix(1);
    KyLuaPattern matcher(state, subject, pattern);
    const char* const subjectEnd = subject.data() + subject.size();
    for (const char* place = subject.data() + start; place <= subjectEnd; ++place) {
        const char* const end = matcher.match(place);
        if (end && IsFinding)
            return pushRange(state, subject, place, end) + matcher.pushOnlyCaptures();
        if (end)
            return matcher.pushCaptures(place, end);
        if (isAnchored)
            break;
    }
    lua_pushnil(state);
    return 1;
}

/// Upvalues: the text, the pattern, where to go on.
int iterateMatches(lua_State* state) {
    const std::string_view subject = checkText(state, lua_upvalueindex(1));
    KyLuaPattern matcher(state, subject, checkText(state, lua_upvalueindex(2)));
    const char* const subjectEnd = subject.data() + subject.size();
    const char* place = subject.data() + static_cast<std::size_t>(lua_tonumber(state, lua_upvalueindex(3)));
    for (; place <= subjectEnd; ++place) {
        const char* const end = matcher.match(place);
        if (!end)
            continue;
        lua_pushnumber(state, static_cast<lua_Number>(end - subject.data() + (end == place ? 1 : 0)));
        lua_replace(state, lua_upvalueindex(3));
        return matcher.pushCaptures(place, end);
    }
    return 0;
}

int beginMatches(lua_State* state) {
    checkText(state, 1);
    checkText(state, 2);
    lua_settop(state, 2);
    lua_pushnumber(state, 0);
    lua_pushcclosure(state, &iterateMatches, 3);
    return 1;
}

/// Pushes a capture as text and adds it.
void addCapture(lua_State* state, Buffer& buffer, KyLuaPattern& matcher, int index, const char* begin,
                const char* end) {
    matcher.pushCapture(index, begin, end);
    buffer.add(checkText(state, -1));
    lua_pop(state, 1);
}

void addTemplate(lua_State* state, Buffer& buffer, KyLuaPattern& matcher, const char* begin, const char* end) {
    const std::string_view text = checkText(state, 3);
    charge(state, text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            buffer.add(text[i]);
            continue;
        }
        const char next = ++i < text.size() ? text[i] : '\0';
        if (std::isdigit(static_cast<unsigned char>(next)) == 0)
            buffer.add(next);
        else if (next == '0')
            buffer.add({begin, static_cast<std::size_t>(end - begin)});
        else
            addCapture(state, buffer, matcher, next - '1', begin, end);
    }
}

/// Adds what a table or a function gives for the match; false and nil leave it as it is.
void addValue(lua_State* state, Buffer& buffer, KyLuaPattern& matcher, const char* begin, const char* end) {
    if (lua_type(state, 3) == LUA_TTABLE) {
        matcher.pushCapture(0, begin, end);
        lua_gettable(state, 3);
    } else {
        lua_pushvalue(state, 3);
        lua_call(state, matcher.pushCaptures(begin, end), 1);
    }
    if (lua_toboolean(state, -1) == 0)
        buffer.add({begin, static_cast<std::size_t>(end - begin)});
    else if (lua_isstring(state, -1) != 0)
        buffer.add(checkText(state, -1));
    else
        luaL_error(state, "invalid replacement value (a %s)", luaL_typename(state, -1));
    lua_pop(state, 1);
}

int replaceMatches(lua_State* state) {
    const std::string_view subject = checkText(state, 1);
    std::string_view pattern = checkText(state, 2);
    const int kind = lua_type(state, 3);
    const bool isTemplate = kind == LUA_TSTRING || kind == LUA_TNUMBER;
    luaL_argcheck(state, isTemplate || kind == LUA_TTABLE || kind == LUA_TFUNCTION, 3,
                  "string/function/table expected");
    const double most = luaL_optnumber(state, 4, static_cast<lua_Number>(subject.size()) + 1);
    const bool isAnchored = pattern.starts_with('^');
    if (isAnchored)
        pattern.remove_prefix(1);
    lua_settop(state, 4);
    Buffer buffer(state, subject.size() + 1);
    KyLuaPattern matcher(state, subject, pattern);
    const char* const subjectEnd = subject.data() + subject.size();
    const char* place = subject.data();
    int nbMatches = 0;
    while (nbMatches < most) {
        const char* const end = matcher.match(place);
        if (end) {
            ++nbMatches;
            isTemplate ? addTemplate(state, buffer, matcher, place, end) : addValue(state, buffer, matcher, place, end);
        }
        if (end && end > place)
            place = end;
        else if (place < subjectEnd)
            buffer.add(*place++);
        else
            break;
        if (isAnchored)
            break;
    }
    buffer.add({place, static_cast<std::size_t>(subjectEnd - place)});
    buffer.push();
    lua_pushinteger(state, nbMatches);
    return 2;
}

constexpr luaL_Reg cFunctions[] = {
    {"find", &search<true>},   {"gfind", &beginMatches},  {"gmatch", &beginMatches},
    {"match", &search<false>}, {"gsub", &replaceMatches}, {"rep", &repeat},
};

constexpr const char* cMetered[] = {"byte", "char", "format", "lower", "reverse", "sub", "upper"};

} // namespace

void kyBoundLuaStrings(lua_State* state) {
    lua_getglobal(state, LUA_STRLIBNAME);
    if (!lua_istable(state, -1))
        return lua_pop(state, 1);
    const int table = lua_gettop(state);
    for (const luaL_Reg& function : cFunctions)
        kySetLuaFunction(state, table, function.name, function.func);
    for (const char* const name : cMetered)
        kyMeterLuaFunction(state, table, name);
    kySetLuaFunction(state, table, "dump", nullptr);
    lua_pop(state, 1);
}
