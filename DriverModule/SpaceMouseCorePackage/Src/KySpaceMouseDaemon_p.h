// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySpaceMouseSource_p.h"

/// The 3D mouse of the system's spacenav daemon, which serves all programs at once and knows models that have no HID
/// reports. Finds nothing where the daemon does not run or has no unit, and on systems without one. A daemon of the
/// first protocol, or one that is silent, does not tell what it has: that is a guess.
///
/// A silent daemon holds up who connects to it, so a thread does that, and find() takes what it brought.
class KySpaceMouseDaemon : public KySpaceMouseFinder {
public:
    KySpaceMouseDaemon();
    ~KySpaceMouseDaemon() override;

    void start() override;
    std::vector<KySpaceMouseUnit> find() override;
    std::optional<KySpaceMouseUnit> guess() override;
    std::unique_ptr<KySpaceMouseSource> open(const KySpaceMouseUnit& unit) override;
    void forget() override;

private:
    /// A connection and what is at its end; empty where there is nothing.
    struct Answer {
        std::unique_ptr<KySpaceMouseSource> source;
        KySpaceMouseUnit unit;
    };

    class Connector;

    std::unique_ptr<Connector> mConnector;
    /// Until it is opened. A program has one connection.
    Answer mFound;
};
