// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>

/// Bytes of stack for code that calls itself as often as a file says. Only what is used takes memory.
inline constexpr std::size_t cDeepStackSize = std::size_t{sizeof(void*) > 4 ? 1024u : 256u} << 20;

/// Runs the function on a thread with such a stack and waits for its end; an exception arrives here. Throws
/// std::runtime_error when there is no room for the stack.
void kyRunOnDeepStack(const std::function<void()>& function);
