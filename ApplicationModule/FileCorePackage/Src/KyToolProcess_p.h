// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// A program that works on its own: nothing to read, no terminal to ask on, its output dropped except for errors.
class KyToolProcess : public QProcess {
public:
    KyToolProcess();

    /// Ends the running program at once, on Linux with all the programs it started.
    void killAll();

protected:
    void setupChildProcess() override;
};
