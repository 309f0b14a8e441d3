// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>

/// Owns what the system calls an open file or directory.
class KyFileHandle {
public:
    KyFileHandle() = default;
    explicit KyFileHandle(std::intptr_t value)
        : mValue(value) {}
    KyFileHandle(KyFileHandle&& other) noexcept
        : mValue(std::exchange(other.mValue, cNone)) {}
    KyFileHandle& operator=(KyFileHandle&& other) noexcept {
        std::swap(mValue, other.mValue);
        return *this;
    }
    ~KyFileHandle() { close(); }

    bool isOpened() const { return mValue != cNone; }
    std::intptr_t get() const { return mValue; }
    /// False when the system only now tells that something written has been lost, or when nothing is open.
    bool close();

private:
    static constexpr std::intptr_t cNone = -1;

    std::intptr_t mValue = cNone;
};
