// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalSocket>

#include <cstdint>
#include <string>

class KyRealDisplay;

/// Fingers on the touch screen of a KyRealDisplay. They reach a program as those of a hand do: through the server.
///
/// ```
/// KyRealTouch touch(display);
/// touch.send(KyRealTouch::eBegin, 0, 100, 100);
/// touch.send(KyRealTouch::eEnd, 0, 120, 100);
/// ```
class KyRealTouch {
public:
    /// The numbers of the touch events of the X Input extension.
    enum Kind : std::uint32_t { eBegin = 18, eUpdate = 19, eEnd = 20 };

    explicit KyRealTouch(const KyRealDisplay& display);

    /// Empty when the touch screen answers, else why it does not.
    const std::string& getError() const { return mError; }

    /// Pixels of the screen; false when the server no longer answers. What was sent before has then been processed.
    bool send(Kind kind, std::uint32_t finger, double x, double y);

private:
    template <class T>
    bool write(const T& message);
    bool waitFor(std::uint32_t answer);

    QLocalSocket mSocket;
    std::string mError;
};
