// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFunction.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct lua_State;

/// The functions that a host publishes in an engine, by name; several of one name are overloads. Closures in Lua know
/// the name only, so that they find nothing once the records are gone.
class KyScriptFunctions {
public:
    struct Record {
        std::vector<std::unique_ptr<KyFunction>> functions;
        std::vector<const KyFunction*> overloads;
    };
    using Records = std::map<std::string, Record, std::less<>>;

    bool contains(const KyFunction* function) const;
    /// Takes the function over.
    void add(const std::string& name, std::unique_ptr<KyFunction> function);
    /// Null when there is none.
    const std::vector<const KyFunction*>* find(std::string_view name) const;
    Records takeAll();

    /// Pushes the closure that calls the functions of the name. May raise a memory error.
    static void pushClosure(lua_State* state, const std::string& name);

private:
    Records mRecords;
};
