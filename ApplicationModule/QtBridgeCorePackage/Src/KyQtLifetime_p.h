// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

/// Who may still use a Qt object: scripts delete objects also from inside the signals of these.
namespace KyQtLifetime {

/// Whether scripts are to take the object, or one above it, as deleted already.
bool isEnding(const QObject& object);

/// Deletes the object for a script, which sees it gone at once. While a script handles a signal of the object, or of
/// one below it, the object itself ends later, in the event loop; so does one of another thread.
void destroy(QObject& object);

/// Stands on the C++ stack while scripts handle a signal of the object.
class SenderScope {
public:
    explicit SenderScope(QObject& sender);
    ~SenderScope();
    SenderScope(const SenderScope&) = delete;
    SenderScope& operator=(const SenderScope&) = delete;
};

/// Stands on the C++ stack while the object's destructor runs: scripts take it as deleted.
class EndingScope {
public:
    explicit EndingScope(const QObject& object);
    ~EndingScope();
    EndingScope(const EndingScope&) = delete;
    EndingScope& operator=(const EndingScope&) = delete;

private:
    const QObject* mObject;
};

/// Whether the object is an inner part of a widget, which follows it without a look.
bool isPart(const QObject& object);

/// Those that scripts may have.
QObjectList getLiving(const QObjectList& objects);

} // namespace KyQtLifetime
