// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyColor.h"

#include <cstddef>
#include <string_view>

/// One pixel layout: how its pixels are read and written in a row.
struct KyImageLayout {
    int bitsPerPixel;
    std::string_view name;
    KyColor (*read)(const unsigned char* row, std::size_t x);
    void (*write)(unsigned char* row, std::size_t x, const KyColor& color);
};

/// Null for a depth or a name that there is none of; an empty name stands for the depth's own.
const KyImageLayout* kyFindImageLayout(int bitsPerPixel, std::string_view name = {});
