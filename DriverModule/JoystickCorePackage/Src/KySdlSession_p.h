// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <string>

/// The joystick part of SDL, and nothing else of it, while the session lives: no window, no signal handlers, no events
/// in SDL's queue, and readings also while another window is the active one. Others in the process may use SDL, too.
class KySdlSession {
public:
    KySdlSession();
    KySdlSession(const KySdlSession&) = delete;
    KySdlSession& operator=(const KySdlSession&) = delete;
    ~KySdlSession();

    /// False when SDL refused; getError() then tells why.
    bool isOpened() const { return mError.empty(); }
    const std::string& getError() const { return mError; }

private:
    std::string mError;
};
