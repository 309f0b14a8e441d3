// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptFile_p.h"

#include "KyResource.h"
#include "KyResourceInformation.h"
#include "KyURL.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";

/// The file's text behind the byte-order mark; false when it has none or cannot be read.
bool readMarkedFile(const std::string& fileName, std::string& text) {
    const std::u8string name(fileName.begin(), fileName.end());
    std::ifstream stream(std::filesystem::path(name), std::ios::binary);
    char mark[cByteOrderMark.size()] = {};
    if (!stream.read(mark, sizeof(mark)) || std::string_view(mark, sizeof(mark)) != cByteOrderMark)
        return false;
    text.assign(std::istreambuf_iterator<char>(stream), {});
    // As in files without a mark, a first line "#!..." is for the operating system.
    if (text.starts_with('#'))
        text.erase(0, text.find('\n'));
    return true;
}

} // namespace

KyScriptFile::KyScriptFile(const std::string& path)
    : mThread(KyThread::getCurrentThreadID()) {
    const KyURL url(path, KyURL::eLocalPath);
    const KyResourceInformation information(url);
    std::string directory;
    mIsLocal = information.getLocalDirectory(directory) && information.getFileName(mFileName) && !mFileName.empty();
    if (!mIsLocal)
        return;
    mPath = directory + mFileName;
    mHasCurrentDirectory = KyResource::pushCurrentDirectory(directory);
    mHasThreadDirectory = KyResource::pushThreadDirectory(mThread, directory);
    if (!mHasCurrentDirectory)
        mFileName.insert(0, directory);
}

KyScriptFile::~KyScriptFile() {
    if (mHasThreadDirectory)
        KyResource::popThreadDirectory(mThread);
    if (mHasCurrentDirectory)
        KyResource::popCurrentDirectory();
}

bool kyLoadLuaFile(lua_State* state, const std::string& fileName, std::string& buffer) {
    if (!readMarkedFile(fileName, buffer))
        return luaL_loadfile(state, fileName.c_str()) == 0;
    lua_pushlstring(state, "@", 1);
    lua_pushlstring(state, fileName.data(), fileName.size());
    lua_concat(state, 2);
    const int status = luaL_loadbuffer(state, buffer.data(), buffer.size(), lua_tostring(state, -1));
    lua_remove(state, -2);
    return status == 0;
}
