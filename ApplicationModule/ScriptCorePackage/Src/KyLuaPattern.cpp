// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaPattern_p.h"

#include "KyScriptSandbox_p.h"

#include <cctype>
#include <cstring>
#include <utility>

namespace {

constexpr int cMaxDepth = 200;
constexpr std::size_t cStepsPerCharge = 1024;

unsigned char at(const char* place) {
    return static_cast<unsigned char>(*place);
}

} // namespace

KyLuaPattern::KyLuaPattern(lua_State* state, std::string_view subject, std::string_view pattern)
    : mState(state)
    , mSubject(subject)
    , mPattern(pattern.data())
    , mPatternEnd(pattern.data() + pattern.substr(0, pattern.find('\0')).size()) {}

void KyLuaPattern::count(std::size_t nbSteps) {
    mNbSteps += nbSteps;
    if (mNbSteps >= cStepsPerCharge)
        KyScriptSandbox::Private::charge(mState, std::exchange(mNbSteps, 0U));
}

/// A set may be as long as the pattern, and is read from one end to the other.
void KyLuaPattern::countItem(const char* item, const char* itemEnd) {
    constexpr std::ptrdiff_t cBytesPerStep = 8;
    count(static_cast<std::size_t>((itemEnd - item) / cBytesPerStep));
}

const char* KyLuaPattern::match(const char* start) {
    mNbCaptures = 0;
    mDepth = 0;
    count();
    return matchHere(start, mPattern);
}

const char* KyLuaPattern::matchHere(const char* text, const char* item) {
    if (++mDepth > cMaxDepth)
        luaL_error(mState, "pattern too complex");
    const char* const end = matchItems(text, item);
    --mDepth;
    return end;
}

/// Goes on from item to item as long as there is one way only.
const char* KyLuaPattern::matchItems(const char* text, const char* item) {
    const char* const subjectEnd = mSubject.data() + mSubject.size();
    while (item < mPatternEnd) {
        bool isDone = true;
        if (const char* const end = matchSpecial(text, item, isDone); isDone)
            return end;
        else if (end)
            continue;
        const char* const itemEnd = findItemEnd(item);
        countItem(item, itemEnd);
        const char suffix = itemEnd < mPatternEnd ? *itemEnd : '\0';
        if (suffix == '*' || suffix == '+')
            return matchMost(text, item, itemEnd, suffix == '+' ? 1 : 0);
        if (suffix == '-')
            return matchLeast(text, item, itemEnd);
        const bool isOne = text < subjectEnd && matchesOne(text, item, itemEnd);
        if (suffix == '?') {
            if (const char* const end = isOne ? matchHere(text + 1, itemEnd + 1) : nullptr)
                return end;
            item = itemEnd + 1;
            continue;
        }
        if (!isOne)
            return nullptr;
        ++text;
        item = itemEnd;
    }
    return text;
}

/// Items that are no single letters. Done with the result, or not done: with a result they are passed, without one the
/// item is a single letter.
const char* KyLuaPattern::matchSpecial(const char*& text, const char*& item, bool& isDone) {
    const char* const next = item + 1;
    switch (*item) {
    case '(':
        return next < mPatternEnd && *next == ')' ? openCapture(text, next + 1, Kind::ePosition)
                                                  : openCapture(text, next, Kind::eOpen);
    case ')':
        return closeCapture(text, next);
    case '$':
        if (next == mPatternEnd)
            return text == mSubject.data() + mSubject.size() ? text : nullptr;
        break;
    case '%': {
        const char kind = next < mPatternEnd ? *next : '\0';
        if (kind == 'b') {
            text = matchBalance(text, next + 1);
            item = next + 3;
        } else if (kind == 'f') {
            const char* const set = next + 1;
            if (set >= mPatternEnd || *set != '[')
                luaL_error(mState, "missing '[' after '%%f' in pattern");
            item = findItemEnd(set);
            countItem(set, item);
            if (!isFrontier(text, set, item))
                return nullptr;
        } else if (std::isdigit(static_cast<unsigned char>(kind)) != 0) {
            text = matchCapture(text, kind);
            item = next + 1;
        } else {
            break;
        }
        isDone = text == nullptr;
        return text;
    }
    default:
        break;
    }
    isDone = false;
    return nullptr;
}

const char* KyLuaPattern::matchMost(const char* text, const char* item, const char* itemEnd, std::size_t least) {
    const char* const subjectEnd = mSubject.data() + mSubject.size();
    const char* last = text;
    while (last < subjectEnd && matchesOne(last, item, itemEnd))
        ++last;
    for (; last >= text + least; --last) {
        count();
        if (const char* const end = matchHere(last, itemEnd + 1))
            return end;
    }
    return nullptr;
}

const char* KyLuaPattern::matchLeast(const char* text, const char* item, const char* itemEnd) {
    const char* const subjectEnd = mSubject.data() + mSubject.size();
    for (;; ++text) {
        if (const char* const end = matchHere(text, itemEnd + 1))
            return end;
        if (text == subjectEnd || !matchesOne(text, item, itemEnd))
            return nullptr;
    }
}

const char* KyLuaPattern::openCapture(const char* text, const char* item, Kind kind) {
    if (mNbCaptures >= cMaxCaptures)
        luaL_error(mState, "too many captures");
    mCaptures[static_cast<std::size_t>(mNbCaptures++)] = {text, 0, kind};
    const char* const end = matchHere(text, item);
    if (!end)
        --mNbCaptures;
    return end;
}

const char* KyLuaPattern::closeCapture(const char* text, const char* item) {
    int index = mNbCaptures - 1;
    while (index >= 0 && mCaptures[static_cast<std::size_t>(index)].kind != Kind::eOpen)
        --index;
    if (index < 0)
        luaL_error(mState, "invalid pattern capture");
    Capture& capture = mCaptures[static_cast<std::size_t>(index)];
    capture.size = static_cast<std::size_t>(text - capture.begin);
    capture.kind = Kind::eText;
    const char* const end = matchHere(text, item);
    if (!end)
        capture.kind = Kind::eOpen;
    return end;
}

int KyLuaPattern::checkCapture(int digit) const {
    const int index = digit - '1';
    if (index < 0 || index >= mNbCaptures || mCaptures[static_cast<std::size_t>(index)].kind == Kind::eOpen)
        luaL_error(mState, "invalid capture index");
    return index;
}

const char* KyLuaPattern::matchCapture(const char* text, int digit) {
    const Capture& capture = mCaptures[static_cast<std::size_t>(checkCapture(digit))];
    const auto rest = static_cast<std::size_t>(mSubject.data() + mSubject.size() - text);
    KyScriptSandbox::Private::charge(mState, capture.size / 8);
    if (capture.kind == Kind::ePosition || capture.size > rest || std::memcmp(capture.begin, text, capture.size) != 0)
        return nullptr;
    return text + capture.size;
}

const char* KyLuaPattern::matchBalance(const char* text, const char* item) {
    if (mPatternEnd - item < 2)
        luaL_error(mState, "unbalanced pattern");
    const char* const subjectEnd = mSubject.data() + mSubject.size();
    if (text == subjectEnd || *text != item[0])
        return nullptr;
    for (std::size_t depth = 1; ++text < subjectEnd;) {
        count();
        if (*text == item[1]) {
            if (--depth == 0)
                return text + 1;
        } else if (*text == item[0]) {
            ++depth;
        }
    }
    return nullptr;
}

/// Beyond both ends of the subject there is a zero.
bool KyLuaPattern::isFrontier(const char* text, const char* set, const char* setEnd) const {
    const unsigned char before = text == mSubject.data() ? 0 : at(text - 1);
    const unsigned char after = text == mSubject.data() + mSubject.size() ? 0 : at(text);
    return !isInSet(before, set, setEnd) && isInSet(after, set, setEnd);
}

bool KyLuaPattern::matchesOne(const char* text, const char* item, const char* itemEnd) {
    count();
    switch (*item) {
    case '.':
        return true;
    case '%':
        return isInClass(at(text), item[1]);
    case '[':
        countItem(item, itemEnd);
        return isInSet(at(text), item, itemEnd);
    default:
        return *item == *text;
    }
}

/// From the opening bracket to behind the closing one.
bool KyLuaPattern::isInSet(unsigned char letter, const char* set, const char* setEnd) {
    const char* const last = setEnd - 1;
    const bool isInverted = set[1] == '^';
    for (const char* place = set + (isInverted ? 2 : 1); place < last; ++place) {
        if (*place == '%') {
            if (isInClass(letter, *++place))
                return !isInverted;
        } else if (place + 2 < last && place[1] == '-') {
            if (at(place) <= letter && letter <= at(place + 2))
                return !isInverted;
            place += 2;
        } else if (at(place) == letter) {
            return !isInverted;
        }
    }
    return isInverted;
}

bool KyLuaPattern::isInClass(unsigned char letter, char name) {
    struct Class {
        char name;
        int (*contains)(int letter);
    };
    static constexpr Class cClasses[] = {
        {'a', &std::isalpha},  {'c', &std::iscntrl},
        {'d', &std::isdigit},  {'l', &std::islower},
        {'p', &std::ispunct},  {'s', &std::isspace},
        {'u', &std::isupper},  {'w', &std::isalnum},
        {'x', &std::isxdigit}, {'z', [](int code) { return code == 0 ? 1 : 0; }},
    };
    const auto code = static_cast<unsigned char>(name);
    for (const Class& known : cClasses)
        if (known.name == std::tolower(code))
            return (known.contains(letter) != 0) == (std::islower(code) != 0);
    return letter == code;
}

const char* KyLuaPattern::findItemEnd(const char* item) const {
    const char first = *item++;
    if (first == '%') {
        if (item == mPatternEnd)
            luaL_error(mState, "malformed pattern (ends with " LUA_QL("%%") ")");
        return item + 1;
    }
    if (first != '[')
        return item;
    if (item < mPatternEnd && *item == '^')
        ++item;
    // A bracket in the first place stands for itself.
    for (bool isFirst = true; item < mPatternEnd; isFirst = false) {
        if (*item == ']' && !isFirst)
            return item + 1;
        item += *item == '%' ? 2 : 1;
    }
    luaL_error(mState, "malformed pattern (missing " LUA_QL("]") ")");
    return nullptr;
}

void KyLuaPattern::pushCapture(int index, const char* begin, const char* end) {
    if (index >= mNbCaptures) {
        if (index > 0)
            luaL_error(mState, "invalid capture index");
        lua_pushlstring(mState, begin, static_cast<std::size_t>(end - begin));
        return;
    }
    const Capture& capture = mCaptures[static_cast<std::size_t>(index)];
    if (capture.kind == Kind::eOpen)
        luaL_error(mState, "unfinished capture");
    if (capture.kind == Kind::ePosition)
        lua_pushinteger(mState, capture.begin - mSubject.data() + 1);
    else
        lua_pushlstring(mState, capture.begin, capture.size);
}

int KyLuaPattern::pushCaptures(const char* begin, const char* end) {
    if (mNbCaptures > 0)
        return pushOnlyCaptures();
    pushCapture(0, begin, end);
    return 1;
}

int KyLuaPattern::pushOnlyCaptures() {
    luaL_checkstack(mState, mNbCaptures, "too many captures");
    for (int i = 0; i < mNbCaptures; ++i)
        pushCapture(i, nullptr, nullptr);
    return mNbCaptures;
}
