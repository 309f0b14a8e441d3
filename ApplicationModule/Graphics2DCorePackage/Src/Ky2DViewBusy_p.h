// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DView.h"

#include <QPointer>

/// While one lives on the stack destroy() waits.
class Ky2DView::Busy {
public:
    explicit Busy(Ky2DView& view)
        : mView(&view) {
        ++view.mNbBusy;
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy() {
        if (mView)
            --mView->mNbBusy;
    }

    /// False once somebody deleted the view all the same.
    bool isAlive() const { return mView != nullptr; }

private:
    /// Qt's parents end views as they like.
    QPointer<Ky2DView> mView;
};
