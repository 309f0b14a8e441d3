// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <luabind/scope.hpp>

/// The scope `Resource`: operations on directories and local files for scripts. A place is a `URL` or a text, which is
/// a local path in UTF-8 or a whole URL; anything else is a Lua error. What cannot be done is false, never an error.
///
/// ```
/// if not Resource.existDirectory("out") then Resource.createDirectory("out") end
/// Resource.copyFile("scene.xml", URL("file:///data/backup.xml"))
/// Resource.pushThreadDirectory("models")   -- for relative URLs, until Resource.popThreadDirectory()
/// ```
luabind::scope kyMakeLuaResourceScope();
