// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySystemProxy.h"

// Before the header that needs its types.
#include <windows.h>

#include <winhttp.h>

#include <algorithm>
#include <array>
#include <memory>

namespace {

constexpr std::size_t cMaxUrlLength = 510;

struct GlobalMemory {
    void operator()(wchar_t* text) const { GlobalFree(text); }
};
/// A text that WinHTTP gave away.
using GlobalText = std::unique_ptr<wchar_t, GlobalMemory>;

struct InternetHandle {
    using pointer = HINTERNET;
    void operator()(HINTERNET handle) const { WinHttpCloseHandle(handle); }
};
using Session = std::unique_ptr<HINTERNET, InternetHandle>;

std::u16string toText(const GlobalText& text) {
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    std::u16string result;
    for (const wchar_t* unit = text.get(); unit && *unit != 0; ++unit)
        result += static_cast<char16_t>(*unit);
    return result;
}

/// What the configuration script says to the address; empty when it cannot be had or says to go direct.
std::u16string evaluateScript(const GlobalText& script, const std::u16string& testUrl) {
    const Session session(WinHttpOpen(L"WinHTTP AutoProxy/1.0", WINHTTP_ACCESS_TYPE_NO_PROXY, WINHTTP_NO_PROXY_NAME,
                                      WINHTTP_NO_PROXY_BYPASS, 0));
    if (!session || testUrl.size() >= cMaxUrlLength)
        return {};
    std::array<wchar_t, cMaxUrlLength + 1> url = {};
    std::ranges::transform(testUrl, url.begin(), [](char16_t unit) { return static_cast<wchar_t>(unit); });

    WINHTTP_AUTOPROXY_OPTIONS options = {};
    options.dwFlags = WINHTTP_AUTOPROXY_CONFIG_URL;
    options.lpszAutoConfigUrl = script.get();
    options.fAutoLogonIfChallenged = TRUE;
    WINHTTP_PROXY_INFO info = {};
    if (!WinHttpGetProxyForUrl(session.get(), url.data(), &options, &info))
        return {};
    const GlobalText bypass(info.lpszProxyBypass);
    return toText(GlobalText(info.lpszProxy));
}

} // namespace

std::optional<KySystemProxy::Configuration> KySystemProxy::read(const std::u16string& testUrl) {
    WINHTTP_CURRENT_USER_IE_PROXY_CONFIG config = {};
    if (!WinHttpGetIEProxyConfigForCurrentUser(&config))
        return std::nullopt;
    const GlobalText script(config.lpszAutoConfigUrl);
    const GlobalText proxy(config.lpszProxy);
    const GlobalText bypass(config.lpszProxyBypass);

    Configuration result = {toText(proxy), toText(bypass)};
    if (script && *script != 0) {
        if (const std::u16string scripted = evaluateScript(script, testUrl); !scripted.empty())
            result.proxy = scripted;
    }
    return result;
}
