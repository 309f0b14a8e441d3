// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFieldType.h"

#include "KyBox.h"
#include "KyColor.h"
#include "KyDate.h"
#include "KyDateTime.h"
#include "KyField.h"
#include "KyMat4.h"
#include "KyQuat.h"
#include "KyRect.h"
#include "KyTime.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"
#include "KyVolume.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <typeindex>
#include <utility>

namespace {

constexpr std::array<const char*, cNbBuiltInFieldTypes> cBuiltInNames = {
    "Invalid", "Bool",  "Int",   "UInt",  "Int64",   "UInt64",  "Float",   "Double", "String",  "KyObject", "Vec2i",
    "Vec2f",   "Vec2d", "Vec3i", "Vec3f", "Vec3d",   "Color",   "Quatf",   "Quatd",  "Matrixf", "Matrixd",  "Recti",
    "Rectf",   "Rectd", "Boxf",  "Boxd",  "Volumei", "Volumef", "Volumed", "Date",   "Time",    "DateTime", "URL"};

struct Tables {
    /// Addresses of the records must hold while others are added.
    std::deque<KyFieldType> types;
    std::map<std::string, std::size_t, std::less<>> byName;
    std::map<std::type_index, std::size_t> byType;
};

Tables& tables() {
    static Tables* const instance = new Tables;
    return *instance;
}

} // namespace

const std::string& KyFieldType::getValueName(unsigned value) const {
    static const std::string none;
    return value < mValueNames.size() ? mValueNames[value] : none;
}

int KyFieldType::findValue(std::string_view name) const {
    const auto found = std::find(mValueNames.begin(), mValueNames.end(), name);
    return found == mValueNames.end() ? -1 : static_cast<int>(found - mValueNames.begin());
}

KyFieldManager& KyFieldManager::get() {
    static KyFieldManager* const instance = new KyFieldManager;
    return *instance;
}

template <class... Ts>
void KyFieldManager::registerBuiltIn(KyTypeList<Ts...>) {
    (registerOperations(cBuiltInNames[KyTypeList<Ts...>::template indexOf<Ts>() + 1], kyMakeFieldOperations<Ts>(),
                        cFieldManagedBit<Ts>),
     ...);
}

KyFieldManager::KyFieldManager() {
    KyFieldOperations nothing;
    nothing.typeInfo = &typeid(void);
    registerOperations(cBuiltInNames[0], nothing, 0).getKind();
    tables().types.front().mIsValue = false;
    registerBuiltIn(KyBuiltInFieldTypes());
}

const KyFieldType& KyFieldManager::registerOperations(const char* name, const KyFieldOperations& operations,
                                                      KyFieldKind managedBit) {
    Tables& all = tables();
    const auto known = all.byType.find(*operations.typeInfo);
    const auto named = name ? all.byName.find(std::string_view(name)) : all.byName.end();
    if (known != all.byType.end()) {
        KyFieldType& type = all.types[known->second];
        if (name && named == all.byName.end())
            all.byName.emplace(name, known->second);
        if (name && !std::exchange(type.mIsNamed, true))
            type.mName = name;
        return type;
    }
    if (named != all.byName.end())
        return all.types[named->second];
    const std::size_t index = all.types.size();
    KyFieldType& type = all.types.emplace_back();
    type.mName = name ? name : operations.typeInfo->name();
    type.mKind = static_cast<KyFieldKind>(index) | managedBit;
    type.mOperations = operations;
    type.mIsNamed = name != nullptr;
    type.mIsValue = *operations.typeInfo != typeid(KyInvalidField);
    all.byName.emplace(type.mName, index);
    all.byType.emplace(*operations.typeInfo, index);
    return type;
}

const KyFieldType& KyFieldManager::registerEnumFieldType(const char* name, unsigned count, const char* const* names) {
    Tables& all = tables();
    const auto named = all.byName.find(std::string_view(name));
    const std::size_t index = named == all.byName.end() ? all.types.size() : named->second;
    KyFieldType& type = named == all.byName.end() ? all.types.emplace_back() : all.types[index];
    if (named == all.byName.end()) {
        type.mName = name;
        type.mKind = static_cast<KyFieldKind>(index);
        type.mOperations = kyMakeFieldOperations<std::int32_t>();
        type.mIsEnumerated = true;
        all.byName.emplace(type.mName, index);
    }
    type.mValueNames.assign(names, names + count);
    return type;
}

unsigned KyFieldManager::getNbFieldTypes() const {
    return static_cast<unsigned>(tables().types.size());
}

const KyFieldType* KyFieldManager::findFieldType(std::string_view name) const {
    const auto found = tables().byName.find(name);
    return found == tables().byName.end() ? nullptr : &tables().types[found->second];
}

const KyFieldType* KyFieldManager::findFieldType(const std::type_info& type) const {
    const auto found = tables().byType.find(type);
    return found == tables().byType.end() ? nullptr : &tables().types[found->second];
}

const KyFieldType& KyFieldManager::getFieldType(KyFieldKind kind) {
    get();
    const std::size_t index = kyFieldKindIndex(kind);
    return tables().types[index < tables().types.size() ? index : 0];
}
