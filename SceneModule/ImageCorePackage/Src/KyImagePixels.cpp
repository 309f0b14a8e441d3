// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyImagePixels_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

unsigned quantize(float value, float scale) {
    // Written so that NaN becomes 0.
    const float limited = value > 0.0f ? std::min(value, 1.0f) : 0.0f;
    return static_cast<unsigned>(std::lround(limited * scale));
}

unsigned char toByte(float value) {
    return static_cast<unsigned char>(quantize(value, 255.0f));
}

float fromByte(unsigned char value) {
    return static_cast<float>(value) / 255.0f;
}

float getLuminance(const KyColor& color) {
    return 0.2126f * color.red + 0.7152f * color.green + 0.0722f * color.blue;
}

KyColor readMono(const unsigned char* row, std::size_t x) {
    const float value = (row[x / 8] >> (7 - x % 8)) & 1 ? 1.0f : 0.0f;
    return KyColor(value, value, value);
}

void writeMono(unsigned char* row, std::size_t x, const KyColor& color) {
    const auto mask = static_cast<unsigned char>(0x80u >> (x % 8));
    const bool isWhite = getLuminance(color) >= 0.5f;
    row[x / 8] = static_cast<unsigned char>(isWhite ? row[x / 8] | mask : row[x / 8] & ~mask);
}

KyColor readGrey(const unsigned char* row, std::size_t x) {
    const float value = fromByte(row[x]);
    return KyColor(value, value, value);
}

void writeGrey(unsigned char* row, std::size_t x, const KyColor& color) {
    row[x] = toByte(getLuminance(color));
}

KyColor read565(const unsigned char* row, std::size_t x) {
    std::uint16_t word = 0;
    std::memcpy(&word, row + 2 * x, sizeof(word));
    return KyColor(static_cast<float>(word >> 11) / 31.0f, static_cast<float>((word >> 5) & 63) / 63.0f,
                   static_cast<float>(word & 31) / 31.0f);
}

void write565(unsigned char* row, std::size_t x, const KyColor& color) {
    const auto word = static_cast<std::uint16_t>(quantize(color.red, 31.0f) << 11 | quantize(color.green, 63.0f) << 5 |
                                                 quantize(color.blue, 31.0f));
    std::memcpy(row + 2 * x, &word, sizeof(word));
}

KyColor readRgb(const unsigned char* row, std::size_t x) {
    const unsigned char* pixel = row + 3 * x;
    return KyColor(fromByte(pixel[0]), fromByte(pixel[1]), fromByte(pixel[2]));
}

void writeRgb(unsigned char* row, std::size_t x, const KyColor& color) {
    unsigned char* pixel = row + 3 * x;
    for (int i = 0; i < 3; ++i)
        pixel[i] = toByte(color[i]);
}

KyColor readRgba(const unsigned char* row, std::size_t x) {
    const unsigned char* pixel = row + 4 * x;
    return KyColor(fromByte(pixel[0]), fromByte(pixel[1]), fromByte(pixel[2]), fromByte(pixel[3]));
}

void writeRgba(unsigned char* row, std::size_t x, const KyColor& color) {
    unsigned char* pixel = row + 4 * x;
    for (int i = 0; i < 4; ++i)
        pixel[i] = toByte(color[i]);
}

constexpr std::array<KyImageLayout, 5> cLayouts{{{1, "Mono", readMono, writeMono},
                                                 {8, "L8", readGrey, writeGrey},
                                                 {16, "R5G6B5", read565, write565},
                                                 {24, "R8G8B8", readRgb, writeRgb},
                                                 {32, "R8G8B8A8", readRgba, writeRgba}}};

} // namespace

const KyImageLayout* kyFindImageLayout(int bitsPerPixel, std::string_view name) {
    const auto found = std::ranges::find_if(cLayouts, [bitsPerPixel, name](const KyImageLayout& layout) {
        return layout.bitsPerPixel == bitsPerPixel && (name.empty() || layout.name == name);
    });
    return found == cLayouts.end() ? nullptr : &*found;
}
