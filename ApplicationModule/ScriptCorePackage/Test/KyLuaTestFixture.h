// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaTestObjects.h"
#include "KyScriptTestFixture.h"

/// An engine that knows the test classes.
class KyLuaTestFixture : public KyScriptTestFixture {
protected:
    void SetUp() override {
        LuaTestLamp::getType();
        LuaTestSpot::getType();
        LuaTestCounted::getType();
        LuaTestTexture::getType();
        LuaTestFailing::getType();
        KyScriptTestFixture::SetUp();
    }

    static KyField evalField(const std::string& expression) {
        std::vector<KyField> results;
        engine().executeChunktWithReturnValues("return " + expression, results);
        return results.empty() ? KyField() : results.front();
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
        for (const std::string& chunk : chunks)
            expectOutput({{chunk, text}});
    }
    static void expectErrors(const std::vector<Row>& rows) { expectOutput(rows); }

    static void collect() { run("collectgarbage() collectgarbage()"); }
};
