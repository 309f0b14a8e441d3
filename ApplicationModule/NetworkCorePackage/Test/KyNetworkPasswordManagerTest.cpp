// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkPasswordManager.h"

#include "KyType.h"
#include "KyURL.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

class KyNetworkPasswordManagerTest : public testing::Test {
protected:
    KyNetworkPasswordManagerTest() { KyNetworkPasswordManager::initializeClass(); }
    ~KyNetworkPasswordManagerTest() override { KyNetworkPasswordManager::finalizeClass(); }

    static KyNetworkPasswordManager& get() { return KyNetworkPasswordManager::get(); }
    /// "user password", "none" when there are none; "-" is what was there before.
    static std::string find(const std::string& url) {
        std::string user = "-";
        std::string password = "-";
        const bool isFound = get().getUserPassword(KyURL(url), user, password);
        return isFound ? user + ' ' + password : user + password == "--" ? "none" : "touched";
    }
    static std::string findRegistered(const std::string& url) {
        std::string* credentials = nullptr;
        return get().isPasswordProtected(KyURL(url), credentials) ? *credentials : "none";
    }
};

TEST_F(KyNetworkPasswordManagerTest, CredentialsHoldForWhatBeginsWithTheirDirectoryOrTheOneAbove) {
    const struct {
        std::vector<const char*> registered;
        const char* wanted;
        const char* found;
    } cRows[] = {
        {{"http://h/a/b/"}, "http://h/a/b/c.html", "0"},
        {{"http://h/a/b/"}, "http://h/a/bc/d.html", "0"},
        {{"http://h/a/b/"}, "http://h/a/d.html", "0"},
        {{"http://h/a/b/"}, "http://h/a/e/d.html", "0"},
        {{"http://h/a/b/"}, "http://h/", "none"},
        {{"http://h/a/b/"}, "http://h/b/", "none"},
        {{"http://h/a/b/"}, "http://other/a/b/", "none"},
        {{"http://h/a/b/"}, "HTTPS://H:8080/a/b/?q#f", "0"},
        {{"http://h/a/"}, "http://h/z/y", "0"},
        {{"http://h"}, "http://h", "0"},
        {{"http://h/a/b/", "http://h/a/b/file"}, "http://h/a/b/", "1"},
        {{"http://h/a/bc/", "http://h/a/b/"}, "http://h/a/bcd/", "1"},
        {{"http://h/a/b/", "http://h/a/z/"}, "http://h/a/z/", "1"},
        {{"http://h/b/c/d/", "http://h/b/a/"}, "http://h/b/c/", "1"},
    };
    for (const auto& [registered, wanted, found] : cRows) {
        for (std::size_t i = 0; i < registered.size(); ++i)
            get().addProtectedUrl(KyURL(registered[i]), std::to_string(i));
        EXPECT_EQ(found, findRegistered(wanted)) << registered.back() << " " << wanted;
        KyNetworkPasswordManager::finalizeClass();
        KyNetworkPasswordManager::initializeClass();
    }
}

TEST_F(KyNetworkPasswordManagerTest, UserInformationOfTheUrlComesFirst) {
    get().addProtectedUrl(KyURL("http://h/a/"), "ann:se:cret");
    get().addProtectedUrl(KyURL("http://g/a/"), "bob");
    get().addProtectedUrl(KyURL("http://empty/"), "");
    const struct {
        const char* url;
        const char* found;
    } cRows[] = {
        {"http://h/a/", "ann se:cret"},     {"http://g/a/", "bob -"},         {"http://eve@h/a/", "eve -"},
        {"http://eve:a:b@h/a/", "eve a:b"}, {"http://eve:@nowhere/", "eve "}, {"http://e%40ve:%3a@h/a/", "e%40ve %3a"},
        {"http://@h/a/", "ann se:cret"},    {"http://nowhere/", "none"},      {"http://empty/", "none"},
    };
    for (const auto& [url, found] : cRows)
        EXPECT_EQ(found, find(url)) << url;
}

TEST_F(KyNetworkPasswordManagerTest, TheSignalIsFoundAndItsListenersAnswer) {
    KyObject& object = get();
    const unsigned index = object.getNbSignals(true) - 1;
    EXPECT_EQ(1u, object.getNbSignals(false));
    EXPECT_EQ("authenticationSignal", object.getSignalName(index));
    EXPECT_EQ(2, object.getSignalAccess(index));
    EXPECT_EQ(object.editSignal(index), object.editSignal("authenticationSignal"));
    EXPECT_FALSE(object.editSignal(index + 1) || object.editSignal("authentication"));

    std::string asked;
    get().editAuthenticationSignal().connect([&](const KyURL& url, bool& flag) {
        // Nothing is locked here.
        get().addProtectedUrl(url, "ann:x");
        asked += url.getHost();
        flag = !flag;
    });
    bool flag = false;
    EXPECT_FALSE(get().answer("ann", "x")) << "nobody asks";
    get().emitAuthenticationSignal(KyURL("http://one/"), flag);
    EXPECT_TRUE(flag);
    const KyNetworkPasswordManager& constant = get();
    constant.authenticationSignal(KyURL("http://two/"), flag);
    EXPECT_FALSE(flag);
    EXPECT_EQ("onetwo", asked);
    EXPECT_EQ("ann x", find("http://two/any"));
}

TEST_F(KyNetworkPasswordManagerTest, TheOneInstanceLivesFromInitializationToFinalization) {
    KyNetworkPasswordManager* const first = &get();
    get().addProtectedUrl(KyURL("http://h/"), "ann");
    KyNetworkPasswordManager::initializeClass();
    first->destroy();
    EXPECT_EQ("ann -", find("http://h/"));
    EXPECT_TRUE(first == &get() && first == KyNetworkPasswordManager::cast(first));
    for (int i = 0; i < 2; ++i)
        KyNetworkPasswordManager::finalizeClass();
    EXPECT_FALSE(KyNetworkPasswordManager::find() || KyType::getType("KyNetworkPasswordManager"));
    KyNetworkPasswordManager::initializeClass();
    EXPECT_EQ("none", find("http://h/"));
}

TEST_F(KyNetworkPasswordManagerTest, EightThreadsRegisterAndLookUp) {
    constexpr int cNbRounds = 400;
    std::atomic<int> nbWrong = 0;
    const auto work = [&nbWrong](int number) {
        const std::string own = "http://own" + std::to_string(number) + "/d/";
        for (int i = 0; i < cNbRounds; ++i) {
            const std::string text = std::to_string(i);
            get().addProtectedUrl(KyURL("http://shared/" + std::to_string(i % 7) + "/x/"), text + ':' + text);
            get().addProtectedUrl(KyURL(own), text);
            std::string user;
            std::string password;
            const bool isFound = get().getUserPassword(KyURL("http://shared/0/x/"), user, password);
            nbWrong += isFound && user == password ? 0 : 1;
            nbWrong += findRegistered(own) == text ? 0 : 1;
        }
    };
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(work, i);
    threads.clear();
    EXPECT_EQ(0, nbWrong);
}

} // namespace
