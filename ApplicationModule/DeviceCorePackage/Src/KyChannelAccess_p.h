// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>
#include <utility>

/// Accessors of attributes over member functions of a channel: a channel that is gone reads as the default value and
/// takes no writes. `Object::Channel` is the kind of channel, `Object::editOwn` finds it.
namespace KyChannelAccess {

template <class Object, auto Getter>
auto get(Object& object) {
    using Value = std::remove_cvref_t<decltype((std::declval<typename Object::Channel&>().*Getter)())>;
    const auto* channel = object.editOwn();
    return channel ? Value((channel->*Getter)()) : Value();
}

template <class Object, class Value, auto Setter>
void set(Object& object, const Value& value) {
    if (auto* channel = object.editOwn())
        (channel->*Setter)(value);
}

} // namespace KyChannelAccess
