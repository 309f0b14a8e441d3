// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>

#include <array>
#include <cstddef>
#include <utility>

/// Handlers by the number of Qt's event type, made of rows when it is compiled: one look into an array for all events
/// that go by. Types above QEvent::TouchCancel have no handler.
template <class Handler>
class KyQtEventTable {
public:
    template <std::size_t Count>
    constexpr explicit KyQtEventTable(const std::pair<QEvent::Type, Handler> (&rows)[Count]) {
        for (const auto& [type, handler] : rows)
            mHandlers[type] = handler;
    }

    /// Null for a type without handler.
    constexpr Handler find(QEvent::Type type) const {
        const auto index = static_cast<std::size_t>(type);
        return index < mHandlers.size() ? mHandlers[index] : nullptr;
    }

private:
    std::array<Handler, QEvent::TouchCancel + 1> mHandlers{};
};
