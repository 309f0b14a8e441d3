// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterJson_p.h"

#include "KyScriptInspection.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <cmath>
#include <limits>

namespace {

using Kind = KyDebugArgument::Kind;

/// Longer values are cut: they are there to be looked at.
constexpr int cMaxValueSize = 100000;
/// Above it an editor asks for the variables page by page.
constexpr int cPageSize = 100;

bool isInteger(const QJsonValue& value) {
    const double number = value.toDouble();
    return value.isDouble() && std::trunc(number) == number && std::abs(number) <= std::numeric_limits<int>::max();
}

struct KindRow {
    const char* name;
    bool (*accepts)(const QJsonValue& value);
};

/// By Kind.
constexpr std::array<KindRow, static_cast<std::size_t>(Kind::eNbKinds)> cKinds{{
    {"an integer", &isInteger},
    {"a string", [](const QJsonValue& value) { return value.isString(); }},
    {"a boolean", [](const QJsonValue& value) { return value.isBool(); }},
    {"an object", [](const QJsonValue& value) { return value.isObject(); }},
    {"an array", [](const QJsonValue& value) { return value.isArray(); }},
}};

/// By KyScriptStopReason.
constexpr std::array<const char*, static_cast<std::size_t>(KyScriptStopReason::eNbReasons)> cReasons{
    "breakpoint", "step", "pause", "exception"};

QString toText(const std::string& text) {
    return QString::fromStdString(text);
}

QString cut(const std::string& text) {
    const QString whole = toText(text);
    return whole.size() <= cMaxValueSize ? whole : whole.left(cMaxValueSize) + QStringLiteral("...");
}

} // namespace

QString kyCheckDebugArguments(const QJsonObject& arguments, std::span<const KyDebugArgument> expected) {
    for (const auto& [name, kind, isRequired] : expected) {
        const QJsonValue value = arguments.value(QLatin1String(name));
        const bool isAbsent = value.isUndefined() || value.isNull();
        if (isAbsent && isRequired)
            return QStringLiteral("the argument '%1' is missing").arg(QLatin1String(name));
        const KindRow& row = cKinds[static_cast<std::size_t>(kind)];
        if (!isAbsent && !row.accepts(value))
            return QStringLiteral("the argument '%1' is not %2").arg(QLatin1String(name), QLatin1String(row.name));
    }
    return {};
}

QByteArray kyFrameDebugMessage(const QJsonObject& message) {
    const QByteArray body = QJsonDocument(message).toJson(QJsonDocument::Compact);
    return "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QJsonObject kyDebugEvent(const QString& name, const QJsonObject& body) {
    return {{"seq", 1}, {"type", "event"}, {"event", name}, {"body", body}};
}

QJsonObject kyDebugOutput(const QString& category, const QString& text) {
    return kyDebugEvent(QStringLiteral("output"), {{"category", category}, {"output", text}});
}

QJsonObject kyDebugResponse(const QJsonObject& request, const QJsonObject& body, const QString& error) {
    QJsonObject response{{"seq", 1},
                         {"type", "response"},
                         {"request_seq", request.value("seq").toInt()},
                         {"command", request.value("command").toString()},
                         {"success", error.isEmpty()}};
    if (error.isEmpty()) {
        response["body"] = body;
        return response;
    }
    // Braces in a format stand for variables.
    response["message"] = error;
    response["body"] = QJsonObject{{"error", QJsonObject{{"id", 1},
                                                         {"format", "{text}"},
                                                         {"variables", QJsonObject{{"text", error}}},
                                                         {"showUser", false}}}};
    return response;
}

QJsonObject kyDebugStopped(const KyScriptStop& stop, bool isEntry) {
    const bool isAtEntry = isEntry && stop.reason == KyScriptStopReason::ePause;
    QJsonObject body{{"reason", isAtEntry ? "entry" : cReasons[static_cast<std::size_t>(stop.reason)]},
                     {"threadId", stop.thread},
                     {"allThreadsStopped", true}};
    if (!stop.text.empty()) {
        body["text"] = cut(stop.text);
        body["description"] = stop.reason == KyScriptStopReason::eError ? QStringLiteral("Stopped on an error")
                                                                        : QStringLiteral("The condition failed");
    }
    return kyDebugEvent(QStringLiteral("stopped"), body);
}

QJsonObject kyDebugThread(const KyScriptThread& thread) {
    return {{"id", thread.id}, {"name", toText(thread.name)}};
}

QJsonObject kyDebugScope(const KyScriptScope& scope) {
    QJsonObject object{{"name", toText(scope.name)},
                       {"variablesReference", scope.reference},
                       {"namedVariables", scope.nbVariables},
                       {"expensive", scope.name == "Globals"}};
    if (scope.name == "Locals")
        object["presentationHint"] = QStringLiteral("locals");
    return object;
}

QJsonObject kyDebugVariable(const KyScriptVariable& variable, const QString& valueName) {
    QJsonObject object{{"name", toText(variable.name)},
                       {valueName, cut(variable.value)},
                       {"type", toText(variable.type)},
                       {"variablesReference", variable.reference}};
    if (variable.reference != 0)
        object[variable.nbVariables > cPageSize ? "indexedVariables" : "namedVariables"] = variable.nbVariables;
    if (!variable.isWritable)
        object["presentationHint"] = QJsonObject{{"attributes", QJsonArray{"readOnly"}}};
    return object;
}

QJsonObject kyDebugCapabilities() {
    const QJsonObject errors{{"filter", "error"}, {"label", "Errors that no script catches"}, {"default", false}};
    return {{"supportsConfigurationDoneRequest", true},
            {"supportsConditionalBreakpoints", true},
            {"supportsEvaluateForHovers", true},
            {"supportsSetVariable", true},
            {"supportsDelayedStackTraceLoading", true},
            {"supportsLoadedSourcesRequest", true},
            {"exceptionBreakpointFilters", QJsonArray{errors}}};
}
