// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptEngineFixture.h"

#include "KyLuaDebugger.h"
#include "KyScriptDebugger.h"

#include <functional>

/// The host's part: notes each stop and answers it with the next action of a list, "r"esume, "i"nto, "o"ver, o"u"t.
class KyScriptDebuggerFixture : public KyScriptEngineFixture, public KyLuaDebugger, public KyHasSlots {
protected:
    void SetUp() override {
        KyScriptEngineFixture::SetUp();
        engine().setLuaDebugger(this);
        engine().setHook();
    }

    static KyScriptDebugger& debugger() { return engine().editDebugger(); }

    void wait() override {
        static constexpr const char* cReasons[] = {"breakpoint", "step", "pause", "error"};
        const KyScriptStop stop = debugger().getStop();
        mStops += std::string(mStops.empty() ? "" : " ") + cReasons[int(stop.reason)] + std::to_string(stop.line);
        mStopped = stop;
        if (mLook)
            mLook();
        if (!KyScriptEngine::find())
            return;
        const char action = mActions.empty() ? 'r' : mActions.front();
        mActions.erase(0, 1);
        switch (action) {
        case 'i':
            return engine().step();
        case 'o':
            return debugger().stepOver();
        case 'u':
            return debugger().stepOut();
        default:
            return engine().resume();
        }
    }

    /// The stops of a chunk with a breakpoint in a line.
    std::string run(const std::string& chunk, int line, const std::string& actions = {}) {
        mStops.clear();
        mActions = actions;
        debugger().setBreakpoints("=test", {{line, {}}});
        engine().executeChunk(chunk, "=test", {});
        return mStops;
    }

    /// "name=value" of each, by scope or reference.
    static std::string list(int reference, int first = 0, int count = 0) {
        std::string text;
        for (const KyScriptVariable& variable : debugger().getVariables(reference, first, count))
            text += variable.name + '=' + variable.value + ' ';
        return text;
    }
    static std::string locals(int thread, int level = 0, std::size_t scope = 0) {
        const auto scopes = debugger().getScopes(thread, level);
        return scopes.empty() ? "none" : list(scopes[scope].reference);
    }
    static int findReference(int reference, const std::string& name) {
        for (const KyScriptVariable& variable : debugger().getVariables(reference))
            if (variable.name == name)
                return variable.reference;
        return 0;
    }
    static std::string evaluate(const std::string& expression, int thread = 1, int level = 0) {
        KyScriptVariable result;
        const bool isGood = debugger().evaluate(thread, level, expression, result);
        return (isGood ? "" : "failed: ") + result.value;
    }
    static std::string set(int reference, const std::string& name, const std::string& expression) {
        KyScriptVariable result;
        const bool isGood = debugger().setVariable(reference, name, expression, result);
        return (isGood ? "" : "failed: ") + result.value;
    }

    std::string mStops;
    std::string mActions;
    std::function<void()> mLook;
    KyScriptStop mStopped;
};
