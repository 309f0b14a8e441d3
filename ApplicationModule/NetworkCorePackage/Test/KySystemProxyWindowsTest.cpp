// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySystemProxy.h"

#include <gtest/gtest.h>

#include <winsock2.h>

#include <windows.h>

#include <array>
#include <atomic>
#include <string>
#include <thread>

namespace {

enum Flag : unsigned { eDirect = 1, eProxy = 2, eScript = 4 };

/// What the Internet options' dialogue keeps of a user.
void setInternetOptions(unsigned flags, const std::string& proxy, const std::string& bypass,
                        const std::string& script) {
    std::string value;
    const auto append = [&](std::size_t number) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            value += static_cast<char>(number >> shift & 0xFF);
    };
    append(0x46);
    append(1);
    append(flags);
    for (const std::string& text : {proxy, bypass, script}) {
        append(text.size());
        value += text;
    }
    value.append(32, '\0');
    ASSERT_EQ(::RegSetKeyValueA(
                  HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Connections",
                  "DefaultConnectionSettings", REG_BINARY, value.data(), static_cast<DWORD>(value.size())),
              ERROR_SUCCESS);
}

/// Serves one answer on a loopback port, to whoever asks, until it goes.
class Server {
public:
    explicit Server(std::string answer)
        : mAnswer(std::move(answer)) {
        WSADATA data;
        ::WSAStartup(MAKEWORD(2, 2), &data);
        mSocket = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
        int size = sizeof(address);
        ::bind(mSocket, reinterpret_cast<sockaddr*>(&address), size);
        ::listen(mSocket, 8);
        ::getsockname(mSocket, reinterpret_cast<sockaddr*>(&address), &size);
        mPort = ::ntohs(address.sin_port);
        mThread = std::thread([this] { serve(); });
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() {
        ::closesocket(mSocket);
        mThread.join();
        ::WSACleanup();
    }

    [[nodiscard]] std::string getUrl() const { return "http://127.0.0.1:" + std::to_string(mPort) + "/proxy.pac"; }
    [[nodiscard]] int getNbRequests() const { return mNbRequests; }

private:
    void serve() {
        for (;;) {
            const SOCKET client = ::accept(mSocket, nullptr, nullptr);
            if (client == INVALID_SOCKET)
                return;
            std::string request;
            std::array<char, 1024> buffer{};
            while (request.find("\r\n\r\n") == std::string::npos) {
                const int size = ::recv(client, buffer.data(), buffer.size(), 0);
                if (size <= 0)
                    break;
                request.append(buffer.data(), static_cast<std::size_t>(size));
            }
            mNbRequests += request.starts_with("GET /proxy.pac ") ? 1 : 0;
            ::send(client, mAnswer.data(), static_cast<int>(mAnswer.size()), 0);
            ::shutdown(client, SD_BOTH);
            ::closesocket(client);
        }
    }

    std::string mAnswer;
    std::atomic<int> mNbRequests = 0;
    std::thread mThread;
    SOCKET mSocket = INVALID_SOCKET;
    unsigned short mPort = 0;
};

std::string toScript(const std::string& result) {
    const std::string body = "function FindProxyForURL(url, host) { return " + result + "; }\n";
    return "HTTP/1.1 200 OK\r\nContent-Type: application/x-ns-proxy-autoconfig\r\nConnection: "
           "close\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

class KySystemProxyWindowsTest : public testing::Test {
protected:
    void TearDown() override { setInternetOptions(eDirect, "", "", ""); }

    static std::u16string readProxy(const std::u16string& url = u"http://a.test/") {
        const auto configuration = KySystemProxy::read(url);
        return configuration ? configuration->proxy : u"no answer";
    }
};

} // namespace

TEST_F(KySystemProxyWindowsTest, TheInternetOptionsSayWhatHolds) {
    const struct {
        unsigned flags;
        const char* proxy;
        const char* bypass;
        const char16_t* expectedProxy;
        const char16_t* expectedBypass;
    } cases[] = {
        {eDirect, "", "", u"", u""},
        {eDirect, "proxy.test:3128", "", u"", u""},
        {eDirect | eProxy, "proxy.test:3128", "<local>;*.test", u"proxy.test:3128", u"<local>;*.test"},
        {eProxy, "http=a:1;https=b:2", "", u"http=a:1;https=b:2", u""},
    };
    for (const auto& test : cases) {
        setInternetOptions(test.flags, test.proxy, test.bypass, "");
        const auto configuration = KySystemProxy::read(u"http://a.test/");
        ASSERT_TRUE(configuration) << test.proxy;
        EXPECT_EQ(configuration->proxy, test.expectedProxy) << test.flags << test.proxy;
        EXPECT_EQ(configuration->bypass, test.expectedBypass) << test.flags << test.proxy;
    }
}

TEST_F(KySystemProxyWindowsTest, AScriptSaysMoreThanTheOptionsUnlessItSaysNothing) {
    const std::pair<std::string, std::u16string> cases[] = {
        {toScript("'PROXY h:8080'"), u"h:8080"},
        {toScript("'PROXY a:1; PROXY b:2'"), u"a:1"},
        {toScript("'DIRECT'"), u"options.test:80"},
        {toScript("host == 'a.test' && url == 'http://a.test/' ? 'PROXY yes:1' : 'PROXY no:1'"), u"yes:1"},
        {toScript("isPlainHostName(host) ? 'DIRECT' : 'PROXY plain:1'"), u"plain:1"},
        {toScript("no such thing"), u"options.test:80"},
        {"HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n", u"options.test:80"},
    };
    for (const auto& [answer, proxy] : cases) {
        const Server server(answer);
        setInternetOptions(eDirect | eProxy | eScript, "options.test:80", "", server.getUrl());
        EXPECT_EQ(readProxy(), proxy) << answer;
        EXPECT_GT(server.getNbRequests(), 0) << answer;
    }
}

TEST_F(KySystemProxyWindowsTest, AScriptIsNotAskedWhenItIsOffOrTheAddressIsTooLong) {
    const Server server(toScript("'PROXY h:8080'"));
    setInternetOptions(eDirect, "", "", server.getUrl());
    EXPECT_EQ(readProxy(), u"");
    setInternetOptions(eDirect | eScript, "", "", server.getUrl());
    EXPECT_EQ(readProxy(u"http://a.test/" + std::u16string(510 - 14, u'a')), u"");
    EXPECT_EQ(server.getNbRequests(), 0);
    EXPECT_EQ(readProxy(u"http://a.test/" + std::u16string(509 - 14, u'a')), u"h:8080");
    EXPECT_EQ(server.getNbRequests(), 1);
}
