// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDebugAdapter.h"
#include "KyDebugClient.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

/// An engine with an adapter that listens, and clients in threads of their own.
class KyDebugAdapterFixture : public testing::Test {
protected:
    void SetUp() override {
        KyScriptEngine::initializeClass();
        KyScriptEngine::setPrintCallback([](const std::string&) {});
        mAdapter = std::make_unique<KyDebugAdapter>(KyScriptEngine::get());
        ASSERT_TRUE(mAdapter->listen());
    }
    void TearDown() override {
        mAdapter.reset();
        KyScriptEngine::setPrintCallback(nullptr);
        KyScriptEngine::finalizeClass();
    }

    static KyScriptDebugger& debugger() { return KyScriptEngine::get().editDebugger(); }

    QString addFile(const QString& name, const char* text) {
        const QString path = QDir(mFolder.path()).filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) >= 0);
        return path;
    }

    /// Processes events, as a host does, while the client talks.
    void talk(const std::function<void(KyDebugClient&)>& client) {
        std::atomic<bool> isOver = false;
        std::thread thread([&, port = mAdapter->getPort()] {
            KyDebugClient connection(port);
            client(connection);
            connection.drop();
            isOver = true;
        });
        while (!isOver)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        thread.join();
        EXPECT_TRUE(waitFor([this] { return !mAdapter->hasClient(); }));
    }
    static bool waitFor(const std::function<bool()>& condition) {
        QElapsedTimer timer;
        for (timer.start(); !condition() && timer.elapsed() < 10000;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    }
    static std::string evaluate(const std::string& expression) {
        KyScriptVariable result;
        debugger().evaluate(0, 0, expression, result);
        return result.value;
    }

    QTemporaryDir mFolder;
    std::unique_ptr<KyDebugAdapter> mAdapter;
};
