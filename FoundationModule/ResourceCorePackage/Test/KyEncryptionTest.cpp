// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEncryption.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

TEST(KyEncryptionTest, WhatIsEncryptedComesBack) {
    const std::string texts[] = {
        "", "secret", "p@ss:w\"ord<>&'", std::string("a\0b", 3), "\xC3\xA9\xE2\x82\xAC", std::string(100'000, 'x')};
    for (const auto& text : texts)
        for (const std::string& key : {KyEncryption::cKey, std::string(), std::string(500, 'k')})
            EXPECT_EQ(KyEncryption::decryptString(KyEncryption::encryptString(text, key), key), text);
}

TEST(KyEncryptionTest, TheResultStandsUnquotedInAnXmlAttribute) {
    const std::string stored = KyEncryption::encryptString("<&\"'>\n", KyEncryption::cKey);
    EXPECT_EQ(stored.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/="),
              std::string::npos);
    EXPECT_FALSE(stored.empty());
}

TEST(KyEncryptionTest, EveryEncryptionGivesAnotherResult) {
    std::set<std::string> results;
    for (int i = 0; i < 20; ++i)
        results.insert(KyEncryption::encryptString("same", "key"));
    EXPECT_EQ(results.size(), 20U);
}

TEST(KyEncryptionTest, AnotherKeyGivesNothing) {
    const std::string stored = KyEncryption::encryptString("secret", "key");
    EXPECT_EQ(KyEncryption::decryptString(stored, "Key"), "");
    EXPECT_EQ(KyEncryption::decryptString(stored, ""), "");
}

TEST(KyEncryptionTest, AnyChangedCharacterGivesNothing) {
    const std::string stored = KyEncryption::encryptString("secret", "key");
    for (std::size_t i = 0; i < stored.size(); ++i) {
        std::string changed = stored;
        changed[i] = changed[i] == 'A' ? 'B' : 'A';
        EXPECT_EQ(KyEncryption::decryptString(changed, "key"), "") << i;
        EXPECT_EQ(KyEncryption::decryptString(stored.substr(0, i), "key"), "") << i;
    }
}

TEST(KyEncryptionTest, TextsOfOthersGiveNothing) {
    for (const std::string text : {"", "plain password", "AAAA", "====", "\xFF\xFE", "<&>"})
        EXPECT_EQ(KyEncryption::decryptString(text, KyEncryption::cKey), "") << text;
    EXPECT_EQ(KyEncryption::decryptString(std::string(10, '\0'), KyEncryption::cKey), "");
    EXPECT_EQ(KyEncryption::decryptString(std::string(100'000, 'A'), KyEncryption::cKey), "");
}
