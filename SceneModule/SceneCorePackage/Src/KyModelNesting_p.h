// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// Readers of model files call themselves for what stands inside, so a file that nests deeply enough ends the process,
// and one whose nodes contain each other, or stand below several, never ends. Each of these tells, without calling
// itself, why a file is not to be given to its reader; empty when it may.

/// glTF as JSON text: brackets, and the chain of nodes below nodes, of which each may have one parent.
std::string kyCheckGltfNesting(std::string_view json);
/// COLLADA: its XML elements, and its nodes with those that they instance.
std::string kyCheckColladaNesting(std::string_view xml);
/// Braces of text. What stands in quotes, or from one of these signs to the end of the line, closes no others.
std::string kyCheckBraceNesting(std::string_view text, std::string_view commentSigns);
/// FBX, as text or binary: its records, and its models with those that its connections put below them.
std::string kyCheckFbxNesting(std::string_view bytes);

/// Texts of two bytes a character without the zeros are readable enough to look for signs; `storage` holds the result
/// when it differs from the text.
std::string_view kyDropZeros(std::string_view text, std::string& storage);
