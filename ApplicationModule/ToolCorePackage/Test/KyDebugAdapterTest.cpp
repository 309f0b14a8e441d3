// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterFixture.h"

#include "KyLuaDebugger.h"

#include <lua.hpp>

#include <tuple>

namespace {

class KyDebugAdapterTest : public KyDebugAdapterFixture {};

constexpr char cScript[] = "local function add(a, b)\n"
                           "    local sum = a + b\n"
                           "    return sum\n"
                           "end\n"
                           "local worker = coroutine.create(function(from)\n"
                           "    for i = from, 4 do\n"
                           "        total = add(total or 0, i)\n"
                           "        coroutine.yield(total)\n"
                           "    end\n"
                           "end)\n"
                           "list = {10, 20, name = 'it', inner = {deep = true}}\n"
                           "\n"
                           "-- Three times.\n"
                           "for _ = 1, 3 do\n"
                           "    coroutine.resume(worker, 1)\n"
                           "end\n"
                           "print('total', total, list.name)\n";

TEST_F(KyDebugAdapterTest, ASessionStopsStepsLooksAndWritesInACoroutine) {
    const QString path = addFile("session.lua", cScript);
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 7, "i == 2")});
        EXPECT_EQ(client.stop(), "breakpoint 7");
        EXPECT_EQ(client.path(), path);
        EXPECT_EQ(client.thread, 2);
        const QJsonArray threads = client.body("threads")["threads"].toArray();
        ASSERT_EQ(threads.size(), 2);
        EXPECT_EQ(threads[0].toObject()["name"], "main");
        EXPECT_EQ(threads[1].toObject()["name"], "coroutine session.lua:5");
        EXPECT_EQ(client.list(client.scope(0)), "from=1 i=2 ");

        EXPECT_EQ(client.goOn("stepIn"), "step 2");
        EXPECT_EQ(client.frame0["name"], "add");
        EXPECT_EQ(client.frames().size(), 2);
        EXPECT_EQ(client.list(client.scope(0)), "a=1 b=2 ");
        EXPECT_EQ(client.body("setVariable",
                              {{"variablesReference", client.scope(0)}, {"name", "b"}, {"value", "b * 50"}})["value"],
                  "100");
        EXPECT_EQ(client.evaluate("a + b"), "101");
        EXPECT_EQ(client.goOn("next"), "step 3");
        EXPECT_EQ(client.evaluate("sum", "hover"), "101");
        EXPECT_EQ(client.goOn("stepOut"), "step 8");
        EXPECT_EQ(client.evaluate("total"), "101");
        EXPECT_EQ(client.evaluate("list.name = 'changed'"), "nil");
        EXPECT_EQ(client.evaluate("list.name = 'no'", "watch").substr(0, 7), "failed:");

        EXPECT_EQ(
            client.error("setVariable", {{"variablesReference", client.scope(0)}, {"name", "missing"}, {"value", "1"}}),
            "no such variable");

        client.ask("setBreakpoints", {{"source", QJsonObject{{"path", path}}}});
        client.ask("continue", {{"threadId", client.thread}});
        EXPECT_EQ(client.output(), "total\t104\tchanged\n");
    });
}

TEST_F(KyDebugAdapterTest, EvaluationsThatNeverEndAreGivenUp) {
    const QString path = addFile("stand.lua", "local a = 1\nhas_run = true\nreturn a\n");
    const QString endless = "(function() while true do end end)()";
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 2)});
        EXPECT_EQ(client.stop(), "breakpoint 2");
        EXPECT_NE(client.evaluate(endless, "watch").find("interrupted"), std::string::npos);
        for (const QJsonValue frame : QJsonArray{client.frame0["id"], QJsonValue()}) {
            const auto [evaluated, paused] =
                client.askBoth("evaluate", {{"expression", endless}, {"frameId", frame}}, "pause");
            EXPECT_TRUE(!evaluated["success"].toBool() && paused["success"].toBool());
        }
        const QJsonObject assignment{{"variablesReference", client.scope(0)}, {"name", "a"}, {"value", endless}};
        EXPECT_FALSE(client.askBoth("setVariable", assignment, "pause").first["success"].toBool());
        EXPECT_EQ(client.list(client.scope(0)), "a=1 ");
        client.send("evaluate", {{"expression", endless}});
    });
    EXPECT_EQ(evaluate("has_run"), "true");
    talk([&](KyDebugClient& client) {
        client.begin();
        EXPECT_TRUE(client.askBoth("evaluate", {{"expression", endless}}, "disconnect").second["success"].toBool());
    });
}

TEST_F(KyDebugAdapterTest, BreakpointsGoToTheNextCodeAndTellWhatIsWrong) {
    const QString path = addFile("lines.lua", cScript);
    talk([&](KyDebugClient& client) {
        client.begin();
        const QJsonArray wanted{QJsonObject{{"line", 12}},
                                QJsonObject{{"line", 99}},
                                QJsonObject{{"line", 2}, {"condition", "a =="}},
                                QJsonObject{{"line", 3}, {"hitCondition", "5"}},
                                QJsonObject{{"line", "x"}},
                                7};
        const QJsonArray told = client
                                    .body("setBreakpoints", {{"source", QJsonObject{{"path", path}}},
                                                             {"breakpoints", wanted}})["breakpoints"]
                                    .toArray();
        std::string lines;
        for (const QJsonValue breakpoint : told)
            lines += breakpoint["verified"].toBool() ? std::to_string(breakpoint["line"].toInt()) + ' ' : "- ";
        EXPECT_EQ(lines, "14 - - - - - ");
        EXPECT_EQ(told[3].toObject()["message"], "'hitCondition' is not supported");
        const QJsonArray missing =
            client.body("setBreakpoints", client.breakpoint("/none", 1))["breakpoints"].toArray();
        EXPECT_EQ(missing[0].toObject()["verified"], false);
    });
}

TEST_F(KyDebugAdapterTest, TablesAreListedPageByPageAndOnDemand) {
    const QString path = addFile("tables.lua", "local list = {}\n"
                                               "for i = 1, 500 do list[i] = i end\n"
                                               "local outer = {inner = {deep = true}}\n"
                                               "local long = {}\n"
                                               "for i = 1, 2000 do long[i] = ('\"'):rep(5000) end\n"
                                               "return outer\n");
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 6)});
        EXPECT_EQ(client.stop(), "breakpoint 6");
        const QJsonArray locals = client.variables(client.scope(0));
        ASSERT_EQ(locals.size(), 3);
        EXPECT_EQ(locals[0].toObject()["indexedVariables"], 500);
        const int list = locals[0].toObject()["variablesReference"].toInt();
        EXPECT_EQ(client.list(list, 100, 2), "[101]=101 [102]=102 ");
        EXPECT_EQ(client.variables(list).size(), 500);
        const QJsonArray outer = client.variables(locals[1].toObject()["variablesReference"].toInt());
        ASSERT_EQ(outer.size(), 1);
        EXPECT_EQ(client.list(outer[0].toObject()["variablesReference"].toInt()), "deep=true ");
        const QJsonArray longs = client.variables(locals[2].toObject()["variablesReference"].toInt());
        EXPECT_TRUE(longs.size() > 100 && longs.size() < 1500) << longs.size();
        EXPECT_EQ(longs.last().toObject()["value"], "(the rest is left out)");
    });
}

TEST_F(KyDebugAdapterTest, AScriptThatKeepsTheHostBusyIsPaused) {
    const QString path = addFile("busy.lua", "while not done do\n"
                                             "    count = (count or 0) + 1\n"
                                             "end\n"
                                             "print('done')\n");
    talk([&](KyDebugClient& client) {
        client.begin(path);
        EXPECT_TRUE(client.ask("pause", {{"threadId", 1}})["success"].toBool());
        EXPECT_FALSE(client.holds("stopped")) << "the response comes first";
        EXPECT_EQ(client.stop().substr(0, 6), "pause ");
        EXPECT_TRUE(client.askBoth("continue", {{"threadId", 1}}, "pause").second["success"].toBool());
        EXPECT_EQ(client.stop().substr(0, 6), "pause ") << "a pause that comes before the script goes on";
        client.askBoth("evaluate", {{"expression", "(function() while true do end end)()"}}, "pause");
        EXPECT_EQ(client.evaluate("done = true"), "nil");
        client.ask("continue", {{"threadId", 1}});
        EXPECT_EQ(client.output(), "done\n");
        EXPECT_FALSE(client.holds("stopped")) << "the pause came while it stood";
    });
}

TEST_F(KyDebugAdapterTest, ErrorsStopWhereTheyHappenAndAreToldAsOutput) {
    const QString path = addFile("error.lua", "local kind = 'nil'\n"
                                              "pcall(error, 'caught')\n"
                                              "local nothing = missing.field\n");
    talk([&](KyDebugClient& client) {
        client.ask("initialize");
        client.ask("setExceptionBreakpoints", {{"filters", QJsonArray{"error"}}});
        EXPECT_FALSE(debugger().isBreakingOnErrors()) << "nobody could let it go on";
        client.ask("launch", {{"program", path}});
        client.ask("configurationDone");
        EXPECT_EQ(client.stop(), "exception 3");
        EXPECT_EQ(client.list(client.scope(0)), "kind=\"nil\" ");
        client.ask("continue", {{"threadId", 1}});
        EXPECT_NE(client.output().find("attempt to index global 'missing'"), std::string::npos);
        EXPECT_EQ(client.error("disconnect"), "");
    });
    EXPECT_FALSE(debugger().isBreakingOnErrors());
}

TEST_F(KyDebugAdapterTest, FilesAreFoundByEveryPath) {
    const QString real = addFile("real/main.lua", "require 'part'\nlocal done = true\nreturn done\n");
    const QString part = addFile("real/part.lua", "part = 1\n");
    const QString other = addFile("other/main.lua", "local x = 1\nlocal y = 2\nreturn x + y\n");
    ASSERT_TRUE(QFile::link(QDir(mFolder.path()).filePath("real"), QDir(mFolder.path()).filePath("link")));
    const QString linked = QDir(mFolder.path()).filePath("link/main.lua");
    const QString relative = QDir::current().relativeFilePath(other);
    talk([&](KyDebugClient& client) {
        client.begin(real, {client.breakpoint(linked, 2), client.breakpoint(part, 1), client.breakpoint(relative, 3)});
        EXPECT_EQ(client.stop(), "breakpoint 1");
        EXPECT_EQ(client.path(), part);
        EXPECT_EQ(client.goOn("continue"), "breakpoint 2");
        EXPECT_EQ(client.path(), linked) << "as the client writes it";
        EXPECT_EQ(client.body("loadedSources")["sources"].toArray().size(), 2);
        std::string told;
        for (int i = 0; i < 2; ++i)
            told += client.event("loadedSource")["source"].toObject()["name"].toString().toStdString() + ' ';
        EXPECT_EQ(told, "main.lua part.lua ");
    });
    talk([&](KyDebugClient& client) {
        client.begin(other, {client.breakpoint(linked, 2), client.breakpoint(relative, 3)});
        EXPECT_EQ(client.stop(), "breakpoint 3") << "line 2 is of another file of that name";
    });
}

TEST_F(KyDebugAdapterTest, AChunkWithoutAFileShowsItsText) {
    const QString path = addFile("load.lua", "local chunk = loadstring('local a = 1\\nreturn a')\nchunk()\n");
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 2)});
        EXPECT_EQ(client.stop(), "breakpoint 2");
        EXPECT_EQ(client.goOn("stepIn"), "step 1");
        const QJsonObject source = client.frame0["source"].toObject();
        EXPECT_FALSE(source.contains("path"));
        const QJsonObject reference{{"sourceReference", source["sourceReference"]}};
        EXPECT_EQ(client.body("source", reference)["content"], "local a = 1\nreturn a");
        client.ask("setBreakpoints", {{"source", reference}, {"breakpoints", QJsonArray{QJsonObject{{"line", 2}}}}});
        EXPECT_EQ(client.goOn("continue"), "breakpoint 2");
        EXPECT_EQ(client.error("source", {{"sourceReference", 99}}), "there is no such source");
    });
}

TEST_F(KyDebugAdapterTest, ADropWhileStoppedLetsTheScriptRunOn) {
    const QString path = addFile("drop.lua", "local a = 1\nhas_run = true\nreturn a\n");
    const quint16 port = mAdapter->getPort();
    debugger().setFileBreakpoints(path.toStdString(), {{7, "of another"}});
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 2)});
        EXPECT_EQ(client.stop(), "breakpoint 2");
        EXPECT_EQ(client.evaluate("has_run"), "nil");
        client.drop();
    });
    EXPECT_EQ(evaluate("has_run"), "true");
    EXPECT_FALSE(KyScriptEngine::get().getLuaDebugger());
    const auto left = debugger().getFileBreakpoints(path.toStdString());
    EXPECT_TRUE(left.size() == 1 && left.front().line == 7);
    EXPECT_TRUE(KyScriptEngine::get().executeScript(path.toStdString())) << "nothing stops any more";
    KyScriptEngine::get().setHook();
    std::atomic<bool> hasStopped = false;
    debugger().stoppedSignal.connect([&] { hasStopped = true; });
    talk([&](KyDebugClient& client) {
        EXPECT_EQ(client.error("initialize"), "");
        client.ask("setBreakpoints", client.breakpoint(path, 1));
        const auto run = [&] { KyScriptEngine::get().executeScript(path.toStdString()); };
        QMetaObject::invokeMethod(mAdapter.get(), run, Qt::QueuedConnection);
        for (int i = 0; i < 1000 && !hasStopped; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    });
    EXPECT_TRUE(hasStopped) << "by a client that was not attached yet";
    mAdapter->close();
    EXPECT_EQ(mAdapter->getPort(), 0);
    EXPECT_TRUE(mAdapter->listen(port)) << mAdapter->getErrorText().toStdString();
}

/// A loop that asks whether it is over, and tells whether the adapter has a client meanwhile.
struct Loop {
    std::atomic<bool> isOver = false;
    std::atomic<bool> isRunning = false;
    std::atomic<bool> hasClient = false;
    const KyDebugAdapter* adapter = nullptr;
};
Loop gLoop;

int isLoopOver(lua_State* state) {
    gLoop.isRunning = true;
    gLoop.hasClient = gLoop.adapter->hasClient();
    lua_pushboolean(state, gLoop.isOver);
    return 1;
}

TEST_F(KyDebugAdapterTest, AClientLeavesScriptsThatGoOnForEver) {
    const QString path = addFile("forever.lua", "while not is_over() do end ends = (ends or 0) + 1\n");
    const struct {
        bool isDebugging;
        bool saysGoodbye;
    } cRows[] = {{true, true}, {true, false}, {false, true}};
    lua_register(KyScriptEngine::get().editLuaState(), "is_over", &isLoopOver);
    gLoop.adapter = mAdapter.get();
    for (const auto& [isDebugging, saysGoodbye] : cRows) {
        gLoop.isOver = gLoop.isRunning = false;
        talk([&, isDebugging = isDebugging, saysGoodbye = saysGoodbye](KyDebugClient& client) {
            client.ask("initialize");
            client.ask("launch", {{"program", path}, {"noDebug", !isDebugging}});
            client.ask("configurationDone");
            const auto waitFor = [](const std::atomic<bool>& flag, bool value) {
                for (int i = 0; i < 500 && flag != value; ++i)
                    std::this_thread::sleep_for(std::chrono::milliseconds(10));
                EXPECT_EQ(flag, value);
            };
            waitFor(gLoop.isRunning, true);
            if (saysGoodbye) {
                EXPECT_EQ(client.error("disconnect"), "");
                EXPECT_TRUE(client.waitForEnd());
                EXPECT_FALSE(client.holds("stopped")) << "only for the request to be taken";
            }
            client.drop();
            // One that has no hook cannot be stopped.
            if (isDebugging)
                waitFor(gLoop.hasClient, false);
            gLoop.isOver = true;
        });
    }
    EXPECT_EQ(evaluate("ends"), "3");
}

/// A host of its own, which lets scripts go on when no client does.
class Host : public KyLuaDebugger {
public:
    explicit Host(const KyDebugAdapter& adapter)
        : mAdapter(adapter) {}
    void wait() override {
        if (mAdapter.hasClient())
            return QCoreApplication::processEvents();
        ++nbLeft;
        KyScriptEngine::get().resume();
    }

    int nbLeft = 0;

private:
    const KyDebugAdapter& mAdapter;
};

TEST_F(KyDebugAdapterTest, AStopThatTheHostWantedOutlivesTheClient) {
    const QString path = addFile("both.lua", "local a = 1\na = 2\na = 3\nreturn a\n");
    Host host(*mAdapter);
    KyScriptEngine::get().setLuaDebugger(&host);
    KyScriptEngine::get().setHook();
    const std::tuple<const char*, const char*, int> cRows[] = {
        {"", "breakpoint 2", 1}, {"continue", "breakpoint 3", 0}, {"next", "step 3", 0}};
    for (const auto& [command, stop, nbLeft] : cRows) {
        host.nbLeft = 0;
        debugger().setFileBreakpoints(path.toStdString(), {{2, ""}});
        talk([&, command = command, stop = stop](KyDebugClient& client) {
            client.begin(path, {client.breakpoint(path, command == std::string("continue") ? 3 : 99)});
            EXPECT_EQ(client.stop(), "breakpoint 2");
            EXPECT_TRUE(*command == 0 || client.goOn(command) == stop) << stop;
        });
        EXPECT_TRUE(waitFor([this] { return !debugger().isStopped(); }));
        EXPECT_EQ(host.nbLeft, nbLeft) << stop;
    }
    KyScriptEngine::get().setLuaDebugger(nullptr);
}

TEST_F(KyDebugAdapterTest, ASecondClientIsToldSoAndTheFirstIsUnharmed) {
    talk([&](KyDebugClient& client) {
        client.begin();
        KyDebugClient second(mAdapter->getPort());
        EXPECT_EQ(second.output(), "another client is connected, the debugger serves one at a time\n");
        EXPECT_TRUE(second.waitForEnd());
        EXPECT_EQ(client.evaluate("1 + 1"), "2");
    });
}

TEST_F(KyDebugAdapterTest, ListeningTellsWhyItCannot) {
    KyDebugAdapter other(KyScriptEngine::get());
    EXPECT_FALSE(other.listen(mAdapter->getPort()));
    EXPECT_FALSE(other.getErrorText().isEmpty());
    EXPECT_EQ(other.getPort(), 0);
    EXPECT_FALSE(mAdapter->listen());
    EXPECT_NE(mAdapter->getPort(), 0);
}

TEST_F(KyDebugAdapterTest, TheEndOfTheAdapterOrTheEngineLetsAScriptRunOn) {
    const QString path = addFile("end.lua", "local a = 1\nruns = (runs or 0) + 1\nreturn a\n");
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 2)});
        EXPECT_EQ(client.stop(), "breakpoint 2");
        QMetaObject::invokeMethod(mAdapter.get(), &KyDebugAdapter::close, Qt::QueuedConnection);
        EXPECT_TRUE(client.hears("terminated"));
        EXPECT_TRUE(client.waitForEnd());
    });
    EXPECT_EQ(evaluate("runs"), "1");
    ASSERT_TRUE(mAdapter->listen());
    talk([&](KyDebugClient& client) {
        client.begin();
        QMetaObject::invokeMethod(mAdapter.get(), &KyScriptEngine::finalizeClass, Qt::QueuedConnection);
        EXPECT_TRUE(client.hears("terminated"));
        EXPECT_TRUE(client.waitForEnd());
    });
    EXPECT_EQ(mAdapter->getPort(), 0);
    EXPECT_FALSE(mAdapter->listen());
}

} // namespace
