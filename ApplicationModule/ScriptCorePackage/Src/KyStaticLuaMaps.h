// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"

#include <map>
#include <string>
#include <typeindex>
#include <vector>

class KyLuaBinder;

/// The converters between fields and Lua values by C++ type, those for the value types of the foundation included.
/// A look-up by kind is one index into a table; types met again under another type record are found by their name.
///
/// Numbers, booleans, texts and objects cross without converters: one registered for their types is not asked.
class KYAPPLICATION_EXPORT KyStaticLuaMaps {
public:
    /// Pushes exactly one value.
    using CppToLua = void (*)(KyLuaBinder& binder, const KyField& field);
    /// Gives an invalid field for a value that is not its own; must leave the stack as it was.
    using LuaToCpp = KyField (*)(KyLuaBinder& binder, int index);

    /// Both ways for one type; either may be missing.
    struct Converters {
        /// Null when there is none.
        CppToLua cppToLua = nullptr;
        /// Null when there is none.
        LuaToCpp luaToCpp = nullptr;
    };

    /// A later registration replaces an earlier one; null takes it away.
    void registerCppToLua(const std::type_info& type, CppToLua converter);
    /// See registerCppToLua.
    void registerLuaToCpp(const std::type_info& type, LuaToCpp converter);

    /// Null when there is none.
    CppToLua findCppToLua(const std::type_info& type) const;
    /// See findCppToLua.
    LuaToCpp findLuaToCpp(const std::type_info& type) const;
    /// Both ways for a kind of field: those registered, or else none. Fast, for every call of a script.
    const Converters& find(KyFieldKind kind) const {
        const std::size_t index = kyFieldKindIndex(kind);
        return index < mByKind.size() && mByKind[index].isKnown ? mByKind[index].converters : findSlowly(kind);
    }

private:
    struct Entry {
        Converters converters;
        bool isKnown = false;
    };

    const Converters& findSlowly(KyFieldKind kind) const;

    std::map<std::type_index, CppToLua> mCppToLua;
    std::map<std::type_index, LuaToCpp> mLuaToCpp;
    std::map<std::string, Converters, std::less<>> mByName;
    mutable std::vector<Entry> mByKind;
};
