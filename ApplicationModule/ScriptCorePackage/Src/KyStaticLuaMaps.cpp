// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStaticLuaMaps.h"

#include <string_view>

void KyStaticLuaMaps::registerCppToLua(const std::type_info& type, CppToLua converter) {
    mCppToLua[type] = converter;
    mByName[type.name()].cppToLua = converter;
    mByKind.clear();
}

void KyStaticLuaMaps::registerLuaToCpp(const std::type_info& type, LuaToCpp converter) {
    mLuaToCpp[type] = converter;
    mByName[type.name()].luaToCpp = converter;
    mByKind.clear();
}

KyStaticLuaMaps::CppToLua KyStaticLuaMaps::findCppToLua(const std::type_info& type) const {
    const auto found = mCppToLua.find(type);
    if (found != mCppToLua.end())
        return found->second;
    const auto named = mByName.find(std::string_view(type.name()));
    return named == mByName.end() ? nullptr : named->second.cppToLua;
}

KyStaticLuaMaps::LuaToCpp KyStaticLuaMaps::findLuaToCpp(const std::type_info& type) const {
    const auto found = mLuaToCpp.find(type);
    if (found != mLuaToCpp.end())
        return found->second;
    const auto named = mByName.find(std::string_view(type.name()));
    return named == mByName.end() ? nullptr : named->second.luaToCpp;
}

const KyStaticLuaMaps::Converters& KyStaticLuaMaps::findSlowly(KyFieldKind kind) const {
    const std::size_t index = kyFieldKindIndex(kind);
    if (index >= mByKind.size())
        mByKind.resize(index + 1);
    Entry& entry = mByKind[index];
    entry.isKnown = true;
    const KyFieldType& type = KyFieldManager::getFieldType(kind);
    // Enumerated kinds share the C++ type of integers and are no values of it.
    if (!type.isEnumerated())
        entry.converters = {findCppToLua(type.getTypeInfo()), findLuaToCpp(type.getTypeInfo())};
    return entry.converters;
}
