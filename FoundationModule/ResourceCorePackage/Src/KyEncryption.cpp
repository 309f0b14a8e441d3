// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEncryption.h"

#include <sodium.h>

#include <array>
#include <vector>

const std::string KyEncryption::cKey = "9f6c1e57-KyFoundation-b02d-settings-71a84e3c";

namespace {
using Bytes = std::vector<unsigned char>;

constexpr std::size_t cNonceSize = crypto_secretbox_NONCEBYTES;
constexpr std::size_t cOverhead = cNonceSize + crypto_secretbox_MACBYTES;
constexpr int cBase64 = sodium_base64_VARIANT_ORIGINAL;

const unsigned char* asBytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// A key of any length brought to the length that the cipher needs, and wiped after use.
class CipherKey {
public:
    explicit CipherKey(const std::string& key) {
        crypto_generichash(mBytes.data(), mBytes.size(), asBytes(key), key.size(), nullptr, 0);
    }
    CipherKey(const CipherKey&) = delete;
    CipherKey& operator=(const CipherKey&) = delete;
    ~CipherKey() { sodium_memzero(mBytes.data(), mBytes.size()); }

    [[nodiscard]] const unsigned char* data() const { return mBytes.data(); }

private:
    std::array<unsigned char, crypto_secretbox_KEYBYTES> mBytes{};
};

std::string toBase64(const Bytes& bytes) {
    // The length counts a zero byte at the end.
    std::string text(sodium_base64_encoded_len(bytes.size(), cBase64), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), cBase64);
    text.pop_back();
    return text;
}

Bytes fromBase64(const std::string& text) {
    // Never empty, so that the data pointer is not null.
    Bytes bytes(text.size() + 1);
    std::size_t size = 0;
    if (sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &size, nullptr, cBase64) != 0)
        return {};
    bytes.resize(size);
    return bytes;
}
} // namespace

std::string KyEncryption::encryptString(const std::string& text, const std::string& key) {
    if (sodium_init() < 0)
        return {};
    Bytes bytes(cOverhead + text.size());
    randombytes_buf(bytes.data(), cNonceSize);
    const CipherKey cipherKey(key);
    crypto_secretbox_easy(bytes.data() + cNonceSize, asBytes(text), text.size(), bytes.data(), cipherKey.data());
    return toBase64(bytes);
}

std::string KyEncryption::decryptString(const std::string& text, const std::string& key) {
    if (sodium_init() < 0)
        return {};
    const Bytes bytes = fromBase64(text);
    if (bytes.size() < cOverhead)
        return {};

    std::string plain(bytes.size() - cOverhead, '\0');
    const CipherKey cipherKey(key);
    if (crypto_secretbox_open_easy(reinterpret_cast<unsigned char*>(plain.data()), bytes.data() + cNonceSize,
                                   bytes.size() - cNonceSize, bytes.data(), cipherKey.data()) != 0)
        return {};
    return plain;
}
