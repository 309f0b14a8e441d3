// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterFixture.h"

namespace {

class KyDebugAdapterBadClientTest : public KyDebugAdapterFixture {};

TEST_F(KyDebugAdapterBadClientTest, WrongRequestsAreAnsweredWithFailures) {
    const struct {
        const char* command;
        const char* arguments;
        const char* error;
    } cRows[] = {
        {"dance", "{}", "the request 'dance' is not supported"},
        {"terminate", "{}", "the request 'terminate' is not supported"},
        {"initialize", "{}", "the session is initialized already"},
        {"attach", "{}", "the session is attached already"},
        {"launch", "{\"program\": 7}", "the argument 'program' is not a string"},
        {"continue", "{\"threadId\": 1}", "no script stands still"},
        {"stackTrace", "{\"threadId\": 1}", "no script stands still"},
        {"setBreakpoints", "{}", "the argument 'source' is missing"},
        {"setBreakpoints", "{\"source\": []}", "the argument 'source' is not an object"},
        {"setBreakpoints", "{\"source\": {\"path\": 1}}", "the argument 'path' is not a string"},
        {"setBreakpoints", "{\"source\": {\"path\": \"a\\u0000\"}}", "the path of the source is none"},
        {"setBreakpoints", "{\"source\": {}}", "the source has neither a path nor a reference"},
        {"setBreakpoints", "{\"source\": {\"path\": \"a\"}, \"breakpoints\": {}}",
         "the argument 'breakpoints' is not an array"},
        {"setExceptionBreakpoints", "{\"filters\": [null]}", "a filter is not a string"},
        {"evaluate", "{\"expression\": null}", "the argument 'expression' is missing"},
        {"evaluate", "{\"expression\": \"1\", \"frameId\": 5}", "there is no such frame"},
        {"evaluate", "{\"expression\": \"1\", \"frameId\": 1e300}", "the argument 'frameId' is not an integer"},
        {"source", "{\"sourceReference\": 0.5}", "the argument 'sourceReference' is not an integer"},
        {"source", "{}", "there is no such source"},
    };
    talk([&](KyDebugClient& client) {
        EXPECT_EQ(client.error("threads"), "the first request must be 'initialize'");
        EXPECT_EQ(client.error("launch", {{"program", "no file"}}), "the first request must be 'initialize'");
        client.ask("initialize");
        EXPECT_EQ(client.error("launch", {{"program", "no file"}}), "there is no file 'no file'");
        EXPECT_EQ(client.error("pause"), "the session is not attached");
        EXPECT_EQ(client.error("attach"), "");
        for (const auto& row : cRows)
            EXPECT_EQ(client.error(row.command, QJsonDocument::fromJson(row.arguments).object()), row.error)
                << row.command << ' ' << row.arguments;
        EXPECT_EQ(client.error("setBreakpoints", client.breakpoint("/dev/zero", 1)), "");
        EXPECT_EQ(client.error("threads"), "");
    });
}

TEST_F(KyDebugAdapterBadClientTest, NumbersOutOfRangeReadAsEmptyWhereAScriptStands) {
    const QString path = addFile("stands.lua", "local a = 1\nreturn a\n");
    const QJsonArray numbers{-2147483647, -1, 0, 12345, 2147483647};
    talk([&](KyDebugClient& client) {
        client.begin(path, {client.breakpoint(path, 2)});
        EXPECT_EQ(client.stop(), "breakpoint 2");
        for (const QJsonValue number : numbers) {
            EXPECT_TRUE(client.variables(number.toInt()).isEmpty());
            EXPECT_NE(client.error("scopes", {{"frameId", number}}), "");
            for (const char* command : {"stackTrace", "continue", "next"})
                EXPECT_EQ(client.error(command, {{"threadId", number}}), "there is no such thread");
            EXPECT_NE(client.error("setVariable", {{"variablesReference", number}, {"name", "a"}, {"value", "1"}}), "");
            const QJsonObject page{{"threadId", 1}, {"startFrame", number}, {"levels", number}};
            EXPECT_EQ(client.error("stackTrace", page), "");
        }
        EXPECT_EQ(client.list(client.scope(0)), "a=1 ");
    });
}

TEST_F(KyDebugAdapterBadClientTest, MessagesThatCannotBeReadAreAnswered) {
    const QByteArray deep = QByteArray(100000, '[') + QByteArray(100000, ']');
    talk([&](KyDebugClient& client) {
        for (const QByteArray& body : {QByteArray("{half"), QByteArray("[]"), QByteArray("7"), QByteArray(), deep,
                                       QByteArray("\xff\xfe"), QByteArray("{\"type\": \"event\"}"),
                                       QByteArray("{\"seq\": \"x\", \"type\": \"request\", \"command\": []}")}) {
            client.write(client.frame(body));
            EXPECT_EQ(client.answer(0)["success"], false) << body.left(100).toStdString();
        }
        client.begin();
        EXPECT_EQ(client.evaluate("2 * 3"), "6");
    });
}

TEST_F(KyDebugAdapterBadClientTest, AClientThatDoesNotSpeakTheProtocolIsToldAndLetGo) {
    const std::pair<QByteArray, const char*> cRows[] = {
        {"GET / HTTP/1.1\r\nHost: x\r\n\r\n", "the header of a message has a line without a name\n"},
        {"Content-Length: 99999999999\r\n\r\n{}", "a message is longer than 4194304 bytes\n"},
        {QByteArray(5000, '\0'), "the header of a message holds what no header may hold\n"},
    };
    for (const auto& [bytes, lastWord] : cRows)
        talk([&, &bytes = bytes, &lastWord = lastWord](KyDebugClient& client) {
            client.write(bytes);
            EXPECT_EQ(client.output(), lastWord);
            EXPECT_TRUE(client.waitForEnd());
        });
    talk([&](KyDebugClient& client) {
        client.write("Content-Length: 100\r\n\r\n{\"seq\": 1");
        client.drop();
    });
    talk([&](KyDebugClient& client) { EXPECT_EQ(client.error("initialize"), ""); });
}

TEST_F(KyDebugAdapterBadClientTest, RequestsSentAtOnceAreAllAnswered) {
    talk([](KyDebugClient& client) {
        client.begin();
        int last = 0;
        for (int i = 0; i < 2000; ++i)
            last = client.send("threads");
        EXPECT_EQ(client.answer(last)["success"], true);
    });
}

TEST_F(KyDebugAdapterBadClientTest, OutputThatIsNotTakenIsLeftOut) {
    constexpr int cNbLines = 600;
    const QString path = addFile("print.lua", "for i = 1, 600 do print(string.rep('x', 100000)) end\n");
    std::atomic<int> nbLines = 0;
    debugger().printedSignal.connect([&](const std::string&) { ++nbLines; });
    talk([&](KyDebugClient& client) {
        client.begin(path);
        for (int i = 0; i < 1000 && nbLines < cNbLines; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        int nbTold = 0;
        while (nbTold < cNbLines && client.output().starts_with("xxx"))
            ++nbTold;
        EXPECT_LT(nbTold, cNbLines);
        EXPECT_EQ(client.evaluate("1"), "1");
    });
}

} // namespace
