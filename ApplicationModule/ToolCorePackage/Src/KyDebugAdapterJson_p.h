// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <span>

struct KyScriptScope;
struct KyScriptStop;
struct KyScriptThread;
struct KyScriptVariable;

// The shapes of the Debug Adapter Protocol.

/// An argument of a request, or a member of one.
struct KyDebugArgument {
    enum class Kind { eInteger, eText, eBoolean, eObject, eArray, eNbKinds };

    const char* name = nullptr;
    Kind kind = Kind::eInteger;
    bool isRequired = false;
};

/// What is wrong with the arguments, empty when nothing is. Null stands for an argument that is not there.
QString kyCheckDebugArguments(const QJsonObject& arguments, std::span<const KyDebugArgument> expected);

/// With the header in front.
QByteArray kyFrameDebugMessage(const QJsonObject& message);
QJsonObject kyDebugEvent(const QString& name, const QJsonObject& body = {});
/// An output event of a category such as "stdout".
QJsonObject kyDebugOutput(const QString& category, const QString& text);
/// The response to a request; with an error it is a failure.
QJsonObject kyDebugResponse(const QJsonObject& request, const QJsonObject& body, const QString& error);

/// The first stop of a program that was to stop at once is an entry.
QJsonObject kyDebugStopped(const KyScriptStop& stop, bool isEntry);
QJsonObject kyDebugThread(const KyScriptThread& thread);
QJsonObject kyDebugScope(const KyScriptScope& scope);
/// The value is in the member named `valueName`: "value", or "result" of an evaluation.
QJsonObject kyDebugVariable(const KyScriptVariable& variable, const QString& valueName);
QJsonObject kyDebugCapabilities();
