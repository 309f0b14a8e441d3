// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaBinder.h"
#include "KyLuaTestObjects.h"
#include "KyScriptEngine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// An engine of its own for every case, with the test classes registered and the output caught.
class KyLuaTestFixture : public ::testing::Test {
protected:
    void SetUp() override {
        LuaTestLamp::getType();
        LuaTestSpot::getType();
        LuaTestCounted::getType();
        LuaTestTexture::getType();
        LuaTestFailing::getType();
        KyScriptEngine::initializeClass();
        KyLuaBinder::initializeClass();
        msOutput.clear();
        KyScriptEngine::setPrintCallback([](const std::string& message) { msOutput += message; });
    }

    void TearDown() override {
        KyScriptEngine::setPrintCallback(nullptr);
        KyScriptEngine::finalizeClass();
        KyLuaBinder::finalizeClass();
    }

    static KyScriptEngine& engine() { return KyScriptEngine::get(); }

    /// Empty on success, else the error.
    static std::string run(const std::string& chunk) {
        msOutput.clear();
        engine().executeChunk(chunk);
        return msOutput;
    }

    static void expectRuns(const std::string& chunk) { EXPECT_EQ(run(chunk), "") << chunk; }

    /// The texts of the values of expressions, comma separated, or "error: " and the error.
    static std::string eval(const std::string& expressions) {
        msOutput.clear();
        std::vector<KyField> results;
        if (!engine().executeChunktWithReturnValues(
                "return (function(...) local texts = '' for i = 1, select('#', ...) do texts = texts .. "
                "(i > 1 and ', ' or '') .. tostring((select(i, ...))) end return texts end)(" +
                    expressions + ")",
                results))
            return "error: " + msOutput;
        return results.empty() ? "nothing" : results.front().toString();
    }

    static KyField evalField(const std::string& expression) {
        std::vector<KyField> results;
        engine().executeChunktWithReturnValues("return " + expression, results);
        return results.empty() ? KyField() : results.front();
    }

    struct Row {
        std::string script;
        std::string text;
    };
    /// All expressions have the texts beside them.
    static void expectTexts(const std::vector<Row>& rows) {
        for (const auto& [expressions, texts] : rows)
            EXPECT_EQ(eval(expressions), texts) << expressions;
    }
    static void expectTrue(const std::vector<std::string>& conditions) {
        for (const std::string& condition : conditions)
            EXPECT_EQ(eval(condition), "true") << condition;
    }
    static void expectFalse(const std::vector<std::string>& conditions) {
        for (const std::string& condition : conditions)
            EXPECT_EQ(eval(condition), "false") << condition;
    }
    /// Every chunk fails, and the text occurs in the message.
    static void expectErrors(const std::string& text, const std::vector<std::string>& chunks) {
        for (const std::string& chunk : chunks) {
            EXPECT_NE(run(chunk), "") << chunk;
            EXPECT_NE(msOutput.find(text), std::string::npos) << chunk << " gives: " << msOutput;
        }
    }
    static void expectErrors(const std::vector<Row>& rows) {
        for (const auto& [chunk, text] : rows)
            expectErrors(text, {chunk});
    }

    static void collect() { run("collectgarbage() collectgarbage()"); }

    static inline std::string msOutput;
};
