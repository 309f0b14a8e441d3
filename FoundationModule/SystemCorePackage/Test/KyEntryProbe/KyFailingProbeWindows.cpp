// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <stdexcept>

// A library that cannot come to life.
namespace {
int fail() {
    throw std::runtime_error("no life");
}
const int gValue = fail();
} // namespace

extern "C" __declspec(dllexport) int getFailingValue() {
    return gValue;
}
