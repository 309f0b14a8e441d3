// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaChunks_p.h"

#include "KyCallSignatures.h"

#include <algorithm>
#include <array>

#include <lua.hpp>

namespace {

constexpr char cPrintMetatable[] = "function ldb(a) tprint(getmetatable(a)) end";

constexpr char cPrintTable[] = R"lua(
function tprint(tbl, indent, enclosing)
    if type(tbl) ~= 'table' then
        if not pcall(print, tbl) then
            print('Error: Cannot print ' .. type(tbl))
        end
        return
    end
    indent = indent or 1
    enclosing = enclosing or {}
    enclosing[tbl] = true
    local outer = string.rep('    ', indent - 1)
    local inner = string.rep('    ', indent)
    print(outer .. '{')
    for k, v in pairs(tbl) do
        local head = inner .. tostring(k) .. ' = '
        local kind = type(v)
        if kind == 'entity' then
            print(head .. 'Object: ' .. v:getName() .. ',')
        elseif kind == 'table' and not enclosing[v] then
            print(head)
            tprint(v, indent + 1, enclosing)
        elseif kind == 'boolean' then
            print(head .. (v and 'true,' or 'false,'))
        else
            local ok, text = pcall(function() return kind .. ': ' .. v end)
            if not ok then
                ok, text = pcall(function() return kind .. ': ' .. v:__tostring() end)
            end
            print(head .. (ok and text or kind) .. ',')
        end
    end
    enclosing[tbl] = nil
    print(outer .. (indent == 1 and '}' or '},'))
end
)lua";

bool runChunk(lua_State* state, const char* chunk) {
    if (luaL_loadstring(state, chunk) == 0 && lua_pcall(state, 0, 0, 0) == 0)
        return true;
    lua_pop(state, 1);
    return false;
}

} // namespace

bool kyInstallLuaChunks(lua_State* state) {
    KyCallSignatures::add({}, {"ldb(value: any) -- Prints the metatable of a value.",
                               "tprint(values: table, indent?: integer) -- Prints a table with the tables in it."});
    constexpr std::array chunks{cPrintMetatable, cPrintTable};
    return std::all_of(chunks.begin(), chunks.end(), [state](const char* chunk) { return runChunk(state, chunk); });
}
