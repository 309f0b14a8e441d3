// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURL.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {
void expectSound(const KyURL& url, const std::string& whole) {
    const std::string origin = whole.substr(0, 100);
    const std::string text = url.toString();
    EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F'; })) << origin;
    const KyURL again(text);
    EXPECT_EQ(again.toString(), text) << origin;
    EXPECT_TRUE(again == url) << origin << " gave " << text;
}

void expectAllSound(const std::string& text, int scheme) {
    KyURL url;
    const bool isRead = url.fromString(text, scheme);
    EXPECT_TRUE(isRead || url.isEmpty()) << text;
    expectSound(url, text);

    const KyURL base("file:///C:/dir/sub/x?q");
    expectSound(url.getAbsoluteURL(base), text);
    expectSound(base.getAbsoluteURL(url), text);
    expectSound(url.getRelativeURL(base), text);
    url.setCanonicalPath();
    expectSound(url, text);

    KyURL parts("http://h/p");
    parts.setScheme(text);
    parts.setHost(text);
    parts.setUser(text);
    parts.setPath(text);
    parts.setQuery(text);
    parts.setFragment(text);
    expectSound(parts, text);
    parts.setFileName(text);
    parts.setExtension(text);
    expectSound(parts, text);
}
} // namespace

TEST(KyURLHostileTest, WhateverIsReadIsAsciiAndReadsTheSameAgain) {
    std::vector<std::string> texts;
    for (const char* text : {"%00", "http:/", "http://:80", "http://u:p@:1", "http://h:8 0", "http://[[::1]]",
                             "http://h:99999999999999999999", "http://[fe80::1%25eth0]/", "http://h\\@evil/",
                             "http://\xC3\xA9.org/\xFF\xFE", "http://h/a b\tc\nd", "\\\\?\\C:\\x", "file://C:/../..",
                             "file:a:b", "file:///a%2F..%2F..%2Fetc", "a%3Ab:c"})
        texts.emplace_back(text);
    texts.emplace_back("http://h\0evil/\0", 15);
    texts.emplace_back(3000, '/');
    texts.push_back("http://" + std::string(3000, '@'));
    texts.push_back("http://[" + std::string(3000, ':') + "]");
    for (const auto& text : texts)
        for (int scheme = -1; scheme <= KyURL::eNbSchemeTypes; ++scheme)
            expectAllSound(text, scheme);
}

TEST(KyURLHostileTest, TextsMadeOfDelimitersAreSound) {
    constexpr std::string_view cAlphabet = "aC:/\\?#[]@%.2F ;\xC3";
    std::mt19937 random(20260101);
    std::uniform_int_distribution<std::size_t> letter(0, cAlphabet.size() - 1);
    std::uniform_int_distribution<int> scheme(0, KyURL::eNbSchemeTypes - 1);
    std::uniform_int_distribution<std::size_t> length(0, 14);
    for (int round = 0; round < 10'000 && !::testing::Test::HasFailure(); ++round) {
        std::string text(length(random), ' ');
        std::ranges::generate(text, [&] { return cAlphabet[letter(random)]; });
        expectAllSound(text, scheme(random));
    }
}

TEST(KyURLHostileTest, TextsThatAreNoURLOrLongerThanAMegabyteAreRefused) {
    KyURL url;
    EXPECT_TRUE(url.fromString("http://h/" + std::string(1'000'000, 'a')));
    EXPECT_FALSE(url.fromLocalPath(std::string(1'048'577, 'a')));
    for (const std::string& text :
         {std::string("http://h:99999"), std::string("http://h:-1"), std::string("http://h:8x"),
          std::string("http://[::1"), std::string("http://[::g]"), std::string(1'048'577, 'a')}) {
        url = KyURL("http://before/");
        EXPECT_FALSE(url.fromString(text)) << text.substr(0, 20);
        EXPECT_TRUE(url.isEmpty());
    }
}
