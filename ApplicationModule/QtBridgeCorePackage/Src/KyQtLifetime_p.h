// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

/// Who may still use a Qt object, and whose it is: scripts delete objects also from inside the signals of these, and
/// reach what belongs to the toolkit alone.
namespace KyQtLifetime {

enum Origin {
    /// By a script, or from a form.
    eMade,
    /// By the host, which gave it to scripts.
    eHanded
};

/// Scripts may end and move the object. The first origin stays.
void add(QObject& object, Origin origin);

/// Whether the object is an inner part of a widget, or of the application, which follows it without a look. What the
/// host has put into a plain container is none.
bool isPart(const QObject& object);
/// Whether it is a part that nobody but the toolkit can have put there.
bool isInner(const QObject& object);

/// Whether scripts are to take the object, or one above it, as deleted already.
bool isEnding(const QObject& object);
/// Whether scripts handle a signal: what the toolkit does after it may use any object.
bool isSending();

/// Deletes the object for a script, which sees it gone at once. While scripts handle a signal, widgets themselves end
/// later, in the event loop, and so do its sender and what is above it; so does an object of another thread.
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
};

/// Those that scripts may have.
QObjectList getLiving(const QObjectList& objects);

} // namespace KyQtLifetime
