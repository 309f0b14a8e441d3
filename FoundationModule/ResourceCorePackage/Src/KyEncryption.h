// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <string>

/// Encryption of short texts for settings, such as a proxy password. The result is base64 text,
/// safe as an XML attribute; every encryption of a text gives another result, and a text that was
/// changed by a single bit is refused.
///
/// `cKey` stands in every copy of the program: what is encrypted with it is hidden from a glance
/// at the file and from nobody who tries. Secrets need a key that is kept elsewhere.
///
///     const std::string stored = KyEncryption::encryptString(password, KyEncryption::cKey);
class KYFOUNDATION_EXPORT KyEncryption {
public:
    /// The program's built-in key.
    static const std::string cKey;

    KyEncryption() = delete;

    /// Any bytes and any key, empty ones too; empty when no random numbers can be had.
    static std::string encryptString(const std::string& text, const std::string& key);
    /// Empty when the text is none of ours, was changed, or belongs to another key.
    static std::string decryptString(const std::string& text, const std::string& key);
};
