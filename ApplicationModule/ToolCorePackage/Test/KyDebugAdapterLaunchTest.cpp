// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterFixture.h"

#include <QTimer>

namespace {

class KyDebugAdapterLaunchTest : public KyDebugAdapterFixture {};

TEST_F(KyDebugAdapterLaunchTest, AProgramStopsAtItsEntryOrNeverAsItsLaunchWants) {
    const QString path = addFile("launch.lua", "local a = 1\nprint(a)\n");
    const auto launch = [&](KyDebugClient& client, const char* option) {
        client.ask("initialize");
        client.ask("setBreakpoints", client.breakpoint(path, 2));
        EXPECT_EQ(client.error("launch", {{"program", path}, {option, true}}), "");
        client.ask("configurationDone");
    };
    talk([&](KyDebugClient& client) {
        launch(client, "stopOnEntry");
        EXPECT_EQ(client.stop(), "entry 1");
        EXPECT_EQ(client.goOn("continue"), "breakpoint 2");
    });
    KyScriptEngine::get().setHook();
    talk([&](KyDebugClient& client) {
        launch(client, "noDebug");
        client.ask("setBreakpoints", client.breakpoint(path, 1));
        EXPECT_EQ(client.output(), "1\n");
        EXPECT_FALSE(client.holds("stopped"));
        EXPECT_NE(client.error("pause"), "");
    });
}

TEST_F(KyDebugAdapterLaunchTest, AnEntryIsThatOfTheProgramWhateverRunsBefore) {
    const QString path = addFile("entry.lua", "local a = 1\nreturn a\n");
    const QString other = addFile("other.lua", "local b = 1\nreturn b\n");
    const auto execute = [other] { KyScriptEngine::get().executeScript(other.toStdString()); };
    std::atomic<bool> hasStopped = false;
    debugger().stoppedSignal.connect([&hasStopped] { hasStopped = true; });
    // From a timer, as hosts do.
    const auto run = [this, execute] {
        QMetaObject::invokeMethod(
            mAdapter.get(), [execute] { QTimer::singleShot(0, execute); }, Qt::QueuedConnection);
    };
    const auto launch = [&](KyDebugClient& client, bool stopsBefore) {
        client.ask("initialize");
        client.ask("setBreakpoints", client.breakpoint(other, stopsBefore ? 2 : 99));
        client.ask("launch", {{"program", path}, {"stopOnEntry", true}});
        if (stopsBefore)
            run();
        for (int i = 0; i < 1000 && stopsBefore && !hasStopped; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        client.ask("configurationDone");
        if (stopsBefore) {
            EXPECT_EQ(client.stop(), "breakpoint 2");
            client.ask("continue", {{"threadId", 1}});
        }
        EXPECT_EQ(client.stop(), "entry 1");
        EXPECT_TRUE(client.path() == path);
    };
    const auto ready = QObject::connect(mAdapter.get(), &KyDebugAdapter::clientReady, execute);
    talk([&](KyDebugClient& client) { launch(client, false); });
    QObject::disconnect(ready);
    hasStopped = false;
    talk([&](KyDebugClient& client) { launch(client, true); });
    QObject::connect(mAdapter.get(), &KyDebugAdapter::clientReady, mAdapter.get(), &KyDebugAdapter::stopAtEntry);
    talk([&](KyDebugClient& client) {
        client.begin();
        run();
        EXPECT_EQ(client.stop(), "entry 1");
        EXPECT_TRUE(client.path() == other);
    });
}

} // namespace
