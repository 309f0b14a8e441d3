// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySvgBuilder_p.h"

#include <string_view>

/// What is done with elements, by name.
struct KySvgElements {
    struct Kind {
        std::string_view name;
        /// Null for what is not drawn where it stands.
        void (KySvgBuilder::*build)(const KySvgBuilder::State&) = nullptr;
        /// Whether what is in it matters.
        bool hasContent = true;
    };
    /// Null for an element that is not carried.
    static const Kind* find(std::string_view name);
};
