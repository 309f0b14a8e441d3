// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlRenderControl.h"

void KyQmlRenderControl::setRenderWindow(QWindow* window, const QPoint& offset) {
    mRenderWindow = window;
    mOffset = offset;
}

QWindow* KyQmlRenderControl::renderWindow(QPoint* offset) {
    if (offset)
        *offset = mOffset;
    return mRenderWindow;
}
