// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptFile_p.h"

#include "KyScriptSandbox_p.h"

#include "KyResource.h"
#include "KyResourceInformation.h"
#include "KyURL.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";

/// As in files without a mark, a first line "#!..." is for the operating system.
void dropSystemLine(std::string& text) {
    if (text.starts_with('#'))
        text.erase(0, text.find('\n'));
}

std::ifstream openFile(const std::string& fileName) {
    const std::u8string name(fileName.begin(), fileName.end());
    return std::ifstream(std::filesystem::path(name), std::ios::binary);
}

/// The file's text behind the byte-order mark; false when it has none or cannot be read.
bool readMarkedFile(const std::string& fileName, std::string& text) {
    std::ifstream stream = openFile(fileName);
    char mark[cByteOrderMark.size()] = {};
    if (!stream.read(mark, sizeof(mark)) || std::string_view(mark, sizeof(mark)) != cByteOrderMark)
        return false;
    text.assign(std::istreambuf_iterator<char>(stream), {});
    dropSystemLine(text);
    return true;
}

/// The file's text, behind the mark if there is one.
bool readFile(const std::string& fileName, std::string& text) {
    std::ifstream stream = openFile(fileName);
    text.assign(std::istreambuf_iterator<char>(stream), {});
    if (!stream.is_open())
        return false;
    if (text.starts_with(cByteOrderMark))
        text.erase(0, cByteOrderMark.size());
    dropSystemLine(text);
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

void kyCheckLuaText(lua_State* state, std::string_view text, const char* name) {
    constexpr int cMaxNameSize = 60;
    if (KyScriptSandbox::Private::isRefused(state, text))
        luaL_error(state, "sandbox: %s is bytecode", std::string_view(name).size() < cMaxNameSize ? name : "the text");
}

bool kyLoadLuaFile(lua_State* state, const std::string& fileName, std::string& buffer) {
    const bool isText =
        KyScriptSandbox::Private::find(state) ? readFile(fileName, buffer) : readMarkedFile(fileName, buffer);
    if (!isText)
        return luaL_loadfile(state, fileName.c_str()) == 0;
    kyCheckLuaText(state, buffer, fileName.c_str());
    lua_pushlstring(state, "@", 1);
    lua_pushlstring(state, fileName.data(), fileName.size());
    lua_concat(state, 2);
    const int status = KyScriptSandbox::Private::load(state, buffer, lua_tostring(state, -1));
    lua_remove(state, -2);
    return status == 0;
}
