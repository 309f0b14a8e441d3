// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// What both sides of the script rows read, write and call.
struct KyBenchValues {
    double speed = 1;
    double size = 2;
    double angle = 3;
    double mix(double a, double b) const { return speed * a + b; }
};
