// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>

#include <algorithm>
#include <deque>
#include <string>
#include <utility>
#include <vector>

/// A client of the debug adapter that waits for what it asked for. For a thread of its own.
class KyDebugClient {
public:
    explicit KyDebugClient(quint16 port) {
        mSocket.connectToHost("127.0.0.1", port);
        mSocket.waitForConnected(cPatience);
    }

    bool isConnected() const { return mSocket.state() == QAbstractSocket::ConnectedState; }
    bool waitForEnd() { return !isConnected() || mSocket.waitForDisconnected(cPatience); }
    void drop() { mSocket.abort(); }

    void write(const QByteArray& bytes) {
        mSocket.write(bytes);
        mSocket.flush();
    }
    static QByteArray frame(const QByteArray& body) {
        return "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    }
    QByteArray make(const QString& command, const QJsonObject& arguments = {}) {
        return frame(
            QJsonDocument(
                QJsonObject{{"seq", ++mSequence}, {"type", "request"}, {"command", command}, {"arguments", arguments}})
                .toJson());
    }
    int send(const QString& command, const QJsonObject& arguments = {}) {
        write(make(command, arguments));
        return mSequence;
    }
    /// Both in one packet; gives the responses.
    std::pair<QJsonObject, QJsonObject> askBoth(const QString& first, const QJsonObject& arguments,
                                                const QString& second) {
        QByteArray packet = make(first, arguments);
        packet += make(second);
        write(packet);
        const int last = mSequence;
        const QJsonObject response = answer(last - 1);
        return {response, answer(last)};
    }

    /// The response to a request.
    QJsonObject ask(const QString& command, const QJsonObject& arguments = {}) {
        return answer(send(command, arguments));
    }
    QJsonObject answer(int sequence) {
        return find([=](const QJsonObject& message) {
            return message["type"] == "response" && message["request_seq"] == sequence;
        });
    }
    QJsonObject body(const QString& command, const QJsonObject& arguments = {}) {
        return ask(command, arguments)["body"].toObject();
    }
    /// The message of a failure, empty for success.
    std::string error(const QString& command, const QJsonObject& arguments = {}) {
        const QJsonObject response = ask(command, arguments);
        return response["success"].toBool() ? "" : response["message"].toString("no answer").toStdString();
    }
    /// The body of the next event of a name.
    QJsonObject event(const QString& name) {
        return find([&](const QJsonObject& message) { return message["event"] == name; })["body"].toObject();
    }
    /// Whether the event came with what was asked for so far.
    bool holds(const QString& name) const {
        return std::any_of(mMessages.begin(), mMessages.end(),
                           [&](const QJsonObject& message) { return message["event"] == name; });
    }
    bool hears(const QString& name) {
        return !find([&](const QJsonObject& message) { return message["event"] == name; }).isEmpty();
    }
    std::string output() { return event("output")["output"].toString().toStdString(); }

    /// Up to running scripts, with a file to run or without one.
    void begin(const QString& program = {}, const std::vector<QJsonObject>& breakpoints = {}) {
        ask("initialize");
        event("initialized");
        for (const QJsonObject& arguments : breakpoints)
            ask("setBreakpoints", arguments);
        ask("launch", program.isEmpty() ? QJsonObject() : QJsonObject{{"program", program}});
        ask("configurationDone");
    }
    static QJsonObject breakpoint(const QString& path, int line, const QString& condition = {}) {
        return {{"source", QJsonObject{{"path", path}}},
                {"breakpoints", QJsonArray{QJsonObject{{"line", line}, {"condition", condition}}}}};
    }

    /// "reason line" of the next stop, and its thread and innermost frame.
    std::string stop() {
        const QJsonObject stopped = event("stopped");
        thread = stopped["threadId"].toInt();
        frame0 = frames().first().toObject();
        return stopped["reason"].toString().toStdString() + ' ' + std::to_string(frame0["line"].toInt());
    }
    QJsonArray frames() { return body("stackTrace", {{"threadId", thread}})["stackFrames"].toArray(); }
    QString path() const { return frame0["source"].toObject()["path"].toString(); }
    std::string goOn(const QString& command) {
        const std::string failure = error(command, {{"threadId", thread}});
        return failure.empty() ? stop() : failure;
    }
    std::string evaluate(const QString& expression, const QString& context = "repl") {
        const QJsonObject response =
            ask("evaluate", {{"expression", expression}, {"context", context}, {"frameId", frame0["id"]}});
        const QString result = response["body"].toObject()["result"].toString();
        return (response["success"].toBool() ? result : "failed: " + response["message"].toString()).toStdString();
    }
    int scope(int index) {
        const QJsonArray scopes = body("scopes", {{"frameId", frame0["id"]}})["scopes"].toArray();
        return scopes.at(index).toObject()["variablesReference"].toInt();
    }
    QJsonArray variables(int reference, int start = 0, int count = 0) {
        return body("variables", {{"variablesReference", reference}, {"start", start}, {"count", count}})["variables"]
            .toArray();
    }
    /// "name=value" of each.
    std::string list(int reference, int start = 0, int count = 0) {
        std::string text;
        for (const QJsonValue variable : variables(reference, start, count))
            text += variable["name"].toString().toStdString() + '=' + variable["value"].toString().toStdString() + ' ';
        return text;
    }

    int thread = 0;
    QJsonObject frame0;

private:
    static constexpr int cPatience = 10000;

    /// Takes the first message that fits, and leaves the others for later.
    template <class Fits>
    QJsonObject find(Fits fits) {
        for (std::size_t i = 0;; ++i) {
            while (i == mMessages.size())
                if (!receive())
                    return {};
            if (!fits(mMessages[i]))
                continue;
            const QJsonObject message = mMessages[i];
            mMessages.erase(mMessages.begin() + static_cast<std::ptrdiff_t>(i));
            return message;
        }
    }
    bool receive() {
        int end = -1;
        while ((end = mBytes.indexOf("\r\n\r\n")) < 0 || mBytes.size() < end + 4 + getLength()) {
            if (mSocket.bytesAvailable() == 0 && !mSocket.waitForReadyRead(cPatience))
                return false;
            mBytes += mSocket.readAll();
        }
        mMessages.push_back(QJsonDocument::fromJson(mBytes.mid(end + 4, getLength())).object());
        mBytes.remove(0, end + 4 + getLength());
        return true;
    }
    int getLength() const {
        const int begin = static_cast<int>(qstrlen("Content-Length: "));
        return mBytes.mid(begin, mBytes.indexOf('\r') - begin).toInt();
    }

    QTcpSocket mSocket;
    QByteArray mBytes;
    std::deque<QJsonObject> mMessages;
    int mSequence = 0;
};
