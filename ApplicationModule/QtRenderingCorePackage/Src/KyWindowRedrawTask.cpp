// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindowRedrawTask_p.h"

#include "KyWindow.h"

bool KyWindowRedrawTask::execute() {
    bool hasAsked = false;
    for (unsigned i = 0; i < KyWindow::getNbWindows(); ++i) {
        KyWindow& window = *KyWindow::getWindow(i);
        if (!window.getAutoRedraw() || !window.isShown() || !window.needsRedraw())
            continue;
        window.requestRedraw();
        hasAsked = true;
    }
    return hasAsked;
}
