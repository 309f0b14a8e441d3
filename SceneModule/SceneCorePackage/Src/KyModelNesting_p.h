// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// Readers of model files call themselves for what stands inside, so a file that nests deeply enough ends the process.
// Each of these tells, without calling itself, why a file is not to be given to its reader; empty when it may.

/// glTF as JSON text: brackets, and the chain of nodes below nodes, of which each may have one parent.
std::string kyCheckGltfNesting(std::string_view json);
/// Elements of XML text.
std::string kyCheckXmlNesting(std::string_view xml);
/// Braces of text. What stands in quotes, or from one of these signs to the end of the line, closes no others.
std::string kyCheckBraceNesting(std::string_view text, std::string_view commentSigns);
/// Records of a binary FBX file.
std::string kyCheckBinaryFbxNesting(std::string_view bytes);
