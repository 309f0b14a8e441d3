// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaBinder.h"
#include "KyQtLuaBinding.h"
#include "KyScriptEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// An engine with the Qt classes for every case, the output caught, in a directory of its own.
class KyQtTestFixture : public ::testing::Test {
protected:
    void SetUp() override {
        mOldDirectory = QDir::currentPath();
        QDir::setCurrent(mDirectory.path());
        KyScriptEngine::initializeClass();
        KyLuaBinder::initializeClass();
        KyQtLuaBinding::initializeClass();
        msOutput.clear();
        KyScriptEngine::setPrintCallback([](const std::string& message) { msOutput += message; });
    }

    void TearDown() override {
        KyScriptEngine::setPrintCallback(nullptr);
        KyQtLuaBinding::finalizeClass();
        KyScriptEngine::finalizeClass();
        KyLuaBinder::finalizeClass();
        QDir::setCurrent(mOldDirectory);
    }

    /// Empty on success, else what was put out.
    static std::string run(const std::string& chunk) {
        msOutput.clear();
        KyScriptEngine::get().executeChunk(chunk);
        return msOutput;
    }
    static void expectRuns(const std::string& chunk) { EXPECT_EQ(run(chunk), "") << chunk; }

    /// The texts of the values of expressions, comma separated, or "error: " and the error.
    static std::string eval(const std::string& expressions) {
        msOutput.clear();
        std::vector<KyField> results;
        const std::string chunk = "local texts = {} local function add(...) for i = 1, select('#', ...) do "
                                  "texts[i] = tostring((select(i, ...))) end end add(" +
                                  expressions + ") return table.concat(texts, ', ')";
        if (!KyScriptEngine::get().executeChunktWithReturnValues(chunk, results))
            return "error: " + msOutput;
        return results.front().toString();
    }

    struct Row {
        std::string script;
        std::string text;
    };
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

    /// The object as a global of the scripts.
    static void publish(const char* name, QObject* object) {
        lua_State* state = KyScriptEngine::get().editLuaState();
        KyLuaBinder binder(state);
        KyQtLuaBinding::cpp_to_lua(binder, object);
        lua_setglobal(state, name);
    }

    static void finishDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    QTemporaryDir mDirectory;
    QString mOldDirectory;
    static inline std::string msOutput;
};
