// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

/// Lives while Qt may be in the middle of an event of a pass: it goes on with what it asked after that was handled, so
/// that must not be taken apart meanwhile. They nest, by event loops of what handles an event. GUI thread.
///
/// ```
/// const KyPassDelivery delivery;
/// QCoreApplication::sendEvent(receiver, &event);
/// ```
class KyPassDelivery {
public:
    KyPassDelivery();
    /// The outermost one does what waits.
    ~KyPassDelivery();
    KyPassDelivery(const KyPassDelivery&) = delete;
    KyPassDelivery& operator=(const KyPassDelivery&) = delete;

    /// At once when there is none, else after the outermost.
    static void runAfter(std::function<void()> action);
};
