// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Whether there is a display to open windows on, asked of Qt without ending the program when there is none.
struct KyHostDisplay {
    KyHostDisplay() = delete;

    /// Before the application object: lets Qt fall back where it would give up otherwise.
    static void prepare();
    /// Before the application object: makes do without a display.
    static void prepareWithout();
    /// After the application object. True also when the user has chosen a platform himself.
    static bool exists();
};
