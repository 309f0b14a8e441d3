// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEncryption.h"

#include <gtest/gtest.h>

#include <string>

TEST(KyEncryptionTest, WhatIsEncryptedComesBackFromTextThatNeedsNoQuotes) {
    const std::string texts[] = {
        "", "secret", "p@ss:w\"ord<>&'", std::string("a\0b", 3), "\xC3\xA9\xE2\x82\xAC", std::string(100'000, 'x')};
    for (const auto& text : texts)
        for (const std::string& key : {KyEncryption::cKey, std::string(), std::string(500, 'k')}) {
            const std::string stored = KyEncryption::encryptString(text, key);
            EXPECT_EQ(KyEncryption::decryptString(stored, key), text);
            EXPECT_EQ(stored.find_first_of("<>&'\"\n "), std::string::npos);
            EXPECT_NE(KyEncryption::encryptString(text, key), stored) << "every encryption gives another result";
        }
}

TEST(KyEncryptionTest, AnyChangedCharacterAnotherKeyAndTextsOfOthersGiveNothing) {
    const std::string stored = KyEncryption::encryptString("secret", "key");
    EXPECT_EQ(KyEncryption::decryptString(stored, "Key"), "");
    for (std::size_t i = 0; i < stored.size(); ++i) {
        std::string changed = stored;
        changed[i] = changed[i] == 'A' ? 'B' : 'A';
        EXPECT_EQ(KyEncryption::decryptString(changed, "key"), "") << i;
        EXPECT_EQ(KyEncryption::decryptString(stored.substr(0, i), "key"), "") << i;
    }
    for (const std::string text : {"", "plain password", "AAAA", "====", "\xFF\xFE", "<&>"})
        EXPECT_EQ(KyEncryption::decryptString(text, KyEncryption::cKey), "") << text;
    EXPECT_EQ(KyEncryption::decryptString(std::string(100'000, 'A'), KyEncryption::cKey), "");
}
