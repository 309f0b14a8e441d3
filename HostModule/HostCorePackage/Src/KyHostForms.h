// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

class KyCanvas;

/// The keyboard's way into the forms, the QML and the widgets on nodes that a canvas shows, and out again.
class KyHostForms {
public:
    /// Gives keys to the next one that has something for them, after that which has them now: views from the first to
    /// the last, then round; with a step of -1 to the one before. False when there is none.
    static bool enter(const KyCanvas& canvas, int step);
    /// False when keys were the program's already.
    static bool leave();
};
