// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>

#include <exception>
#include <string>
#include <string_view>
#include <utility>

class QObject;

/// Raises the text as an error in the JavaScript that is using the Qt object now; reports it through KyException when
/// no script is running or the object (null) is gone.
void kyQmlFail(const QObject* used, const std::string& text);

/// Calls what may throw on behalf of Qt, which must not see exceptions: they fail as kyQmlFail does, with the text
/// "class.member: what it threw". The Qt object may end meanwhile, both names must not.
template <class Callable>
void kyQmlGuard(const QObject& used, std::string_view className, std::string_view member, Callable&& callable) {
    const QPointer<const QObject> guarded(&used);
    const auto fail = [&](std::string_view text) {
        kyQmlFail(guarded.data(), std::string(className) + "." + std::string(member) + ": " + std::string(text));
    };
    try {
        std::forward<Callable>(callable)();
    } catch (const std::exception& exception) {
        fail(exception.what());
    } catch (...) {
        fail("unknown C++ exception");
    }
}
