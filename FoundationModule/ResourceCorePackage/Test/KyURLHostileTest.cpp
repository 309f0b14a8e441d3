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
    expectSound(KyURL("../y").getAbsoluteURL(url), text);
    expectSound(url.getRelativeURL(base), text);
    expectSound(url.getDirectoryURL(), text);
    url.setCanonicalPath();
    expectSound(url, text);

    KyURL parts("http://h/p");
    parts.setScheme(text);
    parts.setHost(text);
    parts.setUser(text);
    parts.setPath(text);
    parts.appendPath(text);
    parts.setQuery(text);
    parts.setFragment(text);
    expectSound(parts, text);
    parts.setScheme("");
    parts.setHost("");
    parts.setUser("");
    expectSound(parts, text);
    parts.setFileName(text);
    parts.setExtension(text);
    expectSound(parts, text);
    parts.setLocalPath(text);
    expectSound(parts, text);
}

const std::vector<std::string>& getHostileTexts() {
    static const std::vector<std::string> texts = {
        "",
        " ",
        ":",
        "::",
        "//",
        "///",
        "////",
        "/////x",
        "?",
        "#",
        "?#",
        "##",
        "%",
        "%%",
        "%4",
        "%zz",
        "%00",
        "%2",
        "%25",
        "%2525",
        "http:",
        "http:/",
        "http://",
        "http:///",
        "http://:",
        "http://:80",
        "http://@",
        "http://@:",
        "http://@@@h",
        "http://:@h",
        "http://u@",
        "http://u:p@:1",
        "http://h:",
        "http://h:99999",
        "http://h:-1",
        "http://h:8 0",
        "http://h:80:80",
        "http://h:99999999999999999999",
        "http://[",
        "http://]",
        "http://[]",
        "http://[::1",
        "http://[::1]x",
        "http://[::1]:",
        "http://[::g]",
        "http://[v1.x:y]",
        "http://[fe80::1%25eth0]/",
        "http://[[::1]]",
        "http://[::1]:65536",
        "http://256.256.256.256/",
        "http://1.2.3/",
        "http://h\\@evil/",
        "http://h#@evil/",
        "http://h?@evil/",
        "http://\xC3\xA9.org/\xFF\xFE",
        "http://h/\x01\x7F",
        "http://h/a b\tc\nd",
        "javascript:alert(1)",
        "data:text/html,<b>",
        "mailto:a@b",
        "a:b",
        "a:/b",
        "1:2",
        "1a:b",
        "c:d:e",
        "C:",
        "C:\\..\\..",
        "C:x",
        "\\\\",
        "\\\\?\\C:\\x",
        "file:",
        "file://",
        "file:///",
        "file:////",
        "file:C:",
        "file://C:",
        "file:///C:",
        "file://C:/../..",
        "file://C:\\x",
        "file:a:b",
        "file:..",
        "file:///..",
        "file:///a%2F..%2F..%2Fetc",
        "file:///%2e%2e/%2E./x",
        "./a:b",
        "a/b:c",
        ":a",
        "a%3Ab:c",
        "..",
        "../..",
        "/..",
        "//..",
        "//../..",
        "//a/..//b",
        "a/..//b",
        "/a/..//b",
        "x:/..//y",
        "xx:/..//y",
        "xx:a/..//y",
        "xx://..",
        "xx:..",
        "http://h//",
        "http://h//..//",
        "http://h/./..",
        "http://h/;",
        "|\"<>^`{}",
        "[a]",
        "a[b]:c",
        std::string("\0", 1),
        std::string("http://h\0evil/\0", 15),
        std::string(3000, '/'),
        std::string(3000, ':'),
        std::string(3000, '%'),
        std::string(3000, '.'),
        std::string(3000, '@'),
        "http://" + std::string(3000, 'h'),
        "http://" + std::string(3000, '@'),
        "http://[" + std::string(3000, ':') + "]",
        "//" + std::string(3000, '['),
    };
    return texts;
}
} // namespace

TEST(KyURLHostileTest, WhateverIsReadIsAsciiAndReadsTheSameAgain) {
    for (const auto& text : getHostileTexts())
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

TEST(KyURLHostileTest, RelativeReferencesAlwaysLeadBack) {
    constexpr std::string_view cAlphabet = "aab:///..";
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> letter(0, cAlphabet.size() - 1);
    std::uniform_int_distribution<std::size_t> length(1, 12);
    const auto makeURL = [&] {
        std::string text(length(random), ' ');
        std::ranges::generate(text, [&] { return cAlphabet[letter(random)]; });
        KyURL url("http://h/" + text);
        url.setCanonicalPath();
        return url;
    };
    for (int round = 0; round < 10'000 && !::testing::Test::HasFailure(); ++round) {
        const KyURL target = makeURL();
        const KyURL base = makeURL();
        const KyURL relative = target.getRelativeURL(base);
        EXPECT_TRUE(relative.isRelative());
        EXPECT_EQ(relative.getAbsoluteURL(base).toString(), target.toString())
            << relative.toString() << " on " << base.toString();
    }
}

TEST(KyURLHostileTest, TextsThatAreNoURLAreRefused) {
    for (const char* text :
         {"http://h:99999", "http://h:-1", "http://h:8x", "http://[::1", "http://[::g]", "http://[::1]x"}) {
        KyURL url("http://before/");
        EXPECT_FALSE(url.fromString(text)) << text;
        EXPECT_TRUE(url.isEmpty()) << text;
    }
}

TEST(KyURLHostileTest, AMegabyteIsTheLimit) {
    KyURL url;
    EXPECT_TRUE(url.fromString("http://h/" + std::string(1'000'000, 'a')));
    EXPECT_FALSE(url.fromString(std::string(1'048'577, 'a')));
    EXPECT_FALSE(url.fromLocalPath(std::string(1'048'577, 'a')));
    EXPECT_TRUE(url.isEmpty());
}
