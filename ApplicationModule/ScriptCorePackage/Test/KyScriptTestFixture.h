// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// An engine of its own for every case, the output caught. Tests of other packages derive from it as well.
class KyScriptTestFixture : public ::testing::Test {
protected:
    void SetUp() override {
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

    /// Empty on success, else what was put out.
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

    struct Row {
        std::string script;
        std::string text;
    };
    /// All expressions have the texts beside them.
    static void expectTexts(const std::vector<Row>& rows) {
        for (const auto& [expressions, texts] : rows)
            EXPECT_EQ(eval(expressions), texts) << expressions;
    }
    /// Every chunk puts out a message in which the text occurs.
    static void expectOutput(const std::vector<Row>& rows) {
        for (const auto& [chunk, text] : rows) {
            EXPECT_NE(run(chunk), "") << chunk;
            EXPECT_NE(msOutput.find(text), std::string::npos) << chunk << " gives: " << msOutput;
        }
    }

    static inline std::string msOutput;
};
