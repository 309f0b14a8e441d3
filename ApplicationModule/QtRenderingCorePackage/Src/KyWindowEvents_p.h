// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQEventCanvasProvider.h"

#include "KyObjectReference.h"

class KyWindow;

/// A window's own provider: it sees to it that the canvas has the window's size and the events the window's pixel
/// ratio, and notes which events were used. Owned by the window.
class KyWindowEvents : public KyQEventCanvasProvider {
public:
    explicit KyWindowEvents(KyWindow& window)
        : mWindow(window) {}

    bool eventFilter(QObject* watched, QEvent* event) override;
    void setInputEvent(KyInputEvent& event) override;

private:
    KyWindow& mWindow;
};
