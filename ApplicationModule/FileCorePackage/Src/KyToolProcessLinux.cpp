// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyToolProcess_p.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

void KyToolProcess::killAll() {
    ::kill(-static_cast<pid_t>(processId()), SIGKILL);
}

// Runs between fork and exec: only calls that are safe there.
void KyToolProcess::setupChildProcess() {
    // Passwords are asked for on the terminal, whatever the standard input is. It also makes a group to be killed.
    ::setsid();
    // Away from the terminal it would outlive an interrupted caller.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
}
