// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySdlSession_p.h"

namespace {

constexpr Uint32 cSubsystems = SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER;

void setHints() {
    SDL_SetHintWithPriority(SDL_HINT_NO_SIGNAL_HANDLERS, "1", SDL_HINT_OVERRIDE);
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    // Buttons go by their place, so that one mapping fits the pads of all makers.
    SDL_SetHint(SDL_HINT_GAMECONTROLLER_USE_BUTTON_LABELS, "0");
    // Windows tells of plugs in messages; without a window of SDL's own a thread has to wait for them.
    SDL_SetHint(SDL_HINT_JOYSTICK_THREAD, "1");
}

/// The state is asked for, and events that nobody fetches would pile up.
void silenceEvents() {
    for (Uint32 type = SDL_JOYAXISMOTION; type < SDL_FINGERDOWN; ++type)
        SDL_EventState(type, SDL_IGNORE);
}

} // namespace

KySdlSession::KySdlSession() {
    const bool isFirstUser = !SDL_WasInit(SDL_INIT_JOYSTICK);
    SDL_SetMainReady();
    setHints();
    if (SDL_InitSubSystem(cSubsystems) != 0)
        mError = std::string("SDL: ") + SDL_GetError();
    else if (isFirstUser)
        silenceEvents();
}

KySdlSession::~KySdlSession() {
    if (isOpened())
        SDL_QuitSubSystem(cSubsystems);
}
