// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

/// The proxy that people set for all programs of the system, where the system keeps it in a place of its own: on
/// Windows the Internet options with their configuration script. Texts are UTF-16. Nothing here reports: what cannot be
/// had is no proxy. A configuration script may be fetched from the network meanwhile.
namespace KySystemProxy {

/// What the system says of its proxy.
struct Configuration {
    /// "host:port", or a list in the system's own form; empty for none.
    std::u16string proxy;
    /// What goes past it, separated by semicolons.
    std::u16string bypass;
};

/// Host and port of a proxy.
struct Address {
    /// As the system writes it.
    std::u16string host;
    /// 1 to 65535, or 0 as the system wrote it.
    unsigned short port = 0;
};

/// What holds for requests to that address; none where the system keeps no such thing.
std::optional<Configuration> read(const std::u16string& testUrl);

/// The host before the first ":" and the number after the last; lists are not taken apart. None without a host, and
/// without a number from 0 to 65535.
std::optional<Address> parse(const std::u16string& proxy);

} // namespace KySystemProxy
