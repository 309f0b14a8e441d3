// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// What is wrong with the bytes of a model file as far as its own counts tell, before anybody believes them; empty when
/// nothing is. `extension` in lower case, without dot.
std::string kyCheckModelFile(std::string_view extension, std::string_view bytes);
