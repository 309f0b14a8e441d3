// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySystemProxy.h"

#include <algorithm>
#include <limits>

namespace {

std::optional<unsigned short> parsePort(const std::u16string& text) {
    constexpr unsigned int cMax = std::numeric_limits<unsigned short>::max();
    const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
    if (text.empty() || !std::ranges::all_of(text, isDigit))
        return std::nullopt;
    unsigned int port = 0;
    for (const char16_t unit : text)
        port = std::min(port * 10 + (unit - u'0'), cMax + 1);
    return port > cMax ? std::nullopt : std::optional(static_cast<unsigned short>(port));
}

} // namespace

std::optional<KySystemProxy::Address> KySystemProxy::parse(const std::u16string& proxy) {
    const std::size_t last = proxy.rfind(u':');
    if (last == std::u16string::npos)
        return std::nullopt;
    const std::u16string host = proxy.substr(0, proxy.find(u':'));
    const auto port = parsePort(proxy.substr(last + 1));
    if (host.empty() || !port)
        return std::nullopt;
    return Address{host, *port};
}
