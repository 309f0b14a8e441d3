// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDynamicObject.h"
#include "KyException.h"
#include "KyModuleManager.h"
#include "KyScriptEngine.h"

#include <lua.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

/// Statements over four variables a to d; "%" stands for a variable, "#" for a value, both chosen by the input.
constexpr std::array cStatements{
    "% = createKyObject('KyNode')",
    "% = createKyObject('KyMeshNode')",
    "% = createKyObject('KyCamera')",
    "% = createKyObject('KyScene')",
    "% = createKyObject(#)",
    "%:destroy()",
    "deleteKyObject(%)",
    "deleteKyObject(#)",
    "% = %",
    "% = nil",
    "collectgarbage()",
    "%.Name = #",
    "%.Position = #",
    "%.Near = #",
    "% = %.Children",
    "% = %[#]",
    "%[#] = #",
    "%[#] = %",
    "%:insert(#, %)",
    "%.insert(%, #, #)",
    "%:remove(#)",
    "local n = #%",
    "%:addChild(%)",
    "%:removeChild(%)",
    "%:setPosition(#, #, #)",
    "%:rotate(#, #, #, #)",
    "%.addChild(%, %)",
    "%:find(#)",
    "local t = tostring(%)",
    "local e = % == %",
    "local e = % < %",
    "getmetatable(%).__index(%, #)",
    "getmetatable(%).__newindex(%, #, #)",
    "getmetatable(%).__gc(%)",
    "getmetatable(%).__lt(%, #)",
    "setmetatable({}, getmetatable(%)).Name = #",
    "% = getmetatable(%)",
    "% = coroutine.create(function() %.Name = coroutine.yield(#) end)",
    "coroutine.resume(%, #)",
    "% = {__tessaly_object = %, __tessaly_attr = #, size = #}",
    "% = %.__tessaly_attr",
    "bindClass(#)",
};

constexpr std::array cValues{
    "nil",
    "true",
    "0",
    "1",
    "-1",
    "2^53",
    "0/0",
    "1/0",
    "-1/0",
    "0.5",
    "''",
    "'Name'",
    "'KyNode'",
    "'a\\0b'",
    "{}",
    "{1, 2, 3}",
    "function() end",
    "io.stdout",
    "newproxy(true)",
    "Vec3d(1, 2, 3)",
    "coroutine.create(print)",
    "print",
};

constexpr const char* cVariables = "abcd";

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : mData(data)
        , mSize(size) {}
    bool isEmpty() const { return mSize == 0; }
    std::size_t take(std::size_t count) {
        if (mSize == 0)
            return 0;
        --mSize;
        return *mData++ % count;
    }

private:
    const std::uint8_t* mData;
    std::size_t mSize;
};

std::string makeStatement(Input& input) {
    std::string text;
    const std::string pattern = cStatements[input.take(cStatements.size())];
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool isLength = pattern[i] == '#' && i + 1 < pattern.size() && pattern[i + 1] == '%';
        if (pattern[i] == '%')
            text += cVariables[input.take(4)];
        else if (pattern[i] == '#' && !isLength)
            text += cValues[input.take(cValues.size())];
        else
            text += pattern[i];
    }
    return text;
}

void ignore(const std::string&) {}

void initializeOnce() {
    static const bool isReady = [] {
        KyException::setReportHandler(&ignore);
        KyScriptEngine::setPrintCallback(&ignore);
        const bool isInitialized = KyModuleManager::get().initialize();
        std::atexit([] { KyModuleManager::get().finalize(); });
        return isInitialized;
    }();
    if (!isReady)
        std::abort();
}

} // namespace

/// A byte string becomes a script of statements over scene objects, each on its own so that the next runs after an
/// error. Whatever they do, the stack stays as it was and the engine works afterwards.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    initializeOnce();
    KyScriptEngine& engine = KyScriptEngine::get();
    Input input(data, size);
    // Objects that are not counted belong to the host, whatever the script does with them.
    const KyObjectReference hosted(new KyDynamicObject);
    engine.bindInstance(hosted.get(), "a");
    for (int i = 0; i < 200 && !input.isEmpty(); ++i)
        engine.executeChunk(makeStatement(input));
    if (KyObject* object = hosted.get())
        object->destroy();
    engine.executeChunk("a, b, c, d = nil collectgarbage()");
    std::vector<KyField> results;
    if (!engine.executeChunktWithReturnValues("return 1 + 1", results) || results.size() != 1 ||
        results.front().toInt() != 2 || lua_gettop(engine.editLuaState()) != 0)
        std::abort();
    return 0;
}
