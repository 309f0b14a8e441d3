// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include "KyBoundFunction.h"
#include "KyDynamicObject.h"
#include "KyException.h"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <string>
#include <utility>
#include <vector>

/// A fresh engine for every case, what it says kept apart by the way it took: the print callback or the error report.
class KyScriptEngineFixture : public ::testing::Test {
protected:
    void SetUp() override {
        KyDynamicObject::initializeType();
        KyScriptEngine::initializeClass();
        KyLuaBinder::initializeClass();
        msOutput.clear();
        msReports.clear();
        KyScriptEngine::setPrintCallback([](const std::string& message) { msOutput.push_back(message); });
        mHandler = KyException::setReportHandler([](const std::string& text) { msReports.push_back(text); });
    }

    void TearDown() override {
        KyScriptEngine::setPrintCallback(nullptr);
        KyException::setReportHandler(mHandler);
        KyScriptEngine::finalizeClass();
        KyLuaBinder::finalizeClass();
    }

    static KyScriptEngine& engine() { return KyScriptEngine::get(); }
    static lua_State* state() { return engine().editLuaState(); }
    static int top() { return lua_gettop(state()); }

    template <class Callable>
    static void bind(const std::string& name, Callable callable) {
        ASSERT_EQ(engine().bindFunction(name, kyMakeFunction(name, std::move(callable)).release()), 1);
    }

    /// The values of a list of expressions.
    static std::vector<KyField> evaluate(const std::string& expressions) {
        std::vector<KyField> results;
        EXPECT_TRUE(engine().executeChunktWithReturnValues("return " + expressions, results)) << expressions;
        return results;
    }
    static std::string text(const std::string& expression) {
        const auto results = evaluate("tostring(" + expression + ")");
        return results.empty() ? "nothing" : results.front().toString();
    }
    static std::string lastOutput() { return msOutput.empty() ? "nothing" : msOutput.back(); }

    static inline std::vector<std::string> msOutput;
    static inline std::vector<std::string> msReports;

private:
    KyException::ReportHandler mHandler = nullptr;
};
