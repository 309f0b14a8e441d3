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

    /// The text of an expression's value, or "error: " and the error.
    static std::string eval(const std::string& expression) {
        msOutput.clear();
        std::vector<KyField> results;
        if (!engine().executeChunktWithReturnValues("return tostring(" + expression + ")", results))
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
    /// Every expression has the text beside it.
    static void expectTexts(const std::vector<Row>& rows) {
        for (const auto& [expression, text] : rows)
            EXPECT_EQ(eval(expression), text) << expression;
    }
    /// Every chunk fails, and the text beside it occurs in the message.
    static void expectErrors(const std::vector<Row>& rows) {
        for (const auto& [chunk, text] : rows) {
            EXPECT_NE(run(chunk), "") << chunk;
            EXPECT_NE(msOutput.find(text), std::string::npos) << chunk << " gives: " << msOutput;
        }
    }

    static void collect() { run("collectgarbage() collectgarbage()"); }

    static inline std::string msOutput;
};
