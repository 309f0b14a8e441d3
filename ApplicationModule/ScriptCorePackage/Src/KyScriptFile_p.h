// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyThread.h"

#include <string>
#include <string_view>

#include <lua.hpp>

/// A script file seen from its directory: while it stands on the stack, the directory is the process's current one and
/// the calling thread's, so that relative names in the script resolve beside it.
class KyScriptFile {
public:
    /// The path may be a URL or a local path.
    explicit KyScriptFile(const std::string& path);
    ~KyScriptFile();
    KyScriptFile(const KyScriptFile&) = delete;
    KyScriptFile& operator=(const KyScriptFile&) = delete;

    /// False when the path is not a local file's.
    bool isLocal() const { return mIsLocal; }
    /// Name to load it by: the bare name, or the whole path when its directory cannot be entered.
    const std::string& getFileName() const { return mFileName; }
    /// With its directory.
    const std::string& getPath() const { return mPath; }

private:
    std::string mFileName;
    std::string mPath;
    KyThread::ID mThread;
    bool mIsLocal = false;
    bool mHasCurrentDirectory = false;
    bool mHasThreadDirectory = false;
};

/// Raises an error when the text is bytecode and the state is in a sandbox.
void kyCheckLuaText(lua_State* state, std::string_view text, const char* name);

/// Loads a file as luaL_loadfile does, also when it begins with a UTF-8 byte-order mark, which Lua refuses. False with
/// Lua's message on top; `buffer` is room for the text.
bool kyLoadLuaFile(lua_State* state, const std::string& fileName, std::string& buffer);
