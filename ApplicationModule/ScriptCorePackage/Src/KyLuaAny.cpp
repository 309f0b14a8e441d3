// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaAny_p.h"

#include "KyLuaBinder.h"

#include "KyBox.h"
#include "KyColor.h"
#include "KyDate.h"
#include "KyDateTime.h"
#include "KyIntersectionPoint.h"
#include "KyMat4.h"
#include "KyObject.h"
#include "KyPlane.h"
#include "KyQuat.h"
#include "KyRay.h"
#include "KyRect.h"
#include "KyTime.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"
#include "KyVolume.h"
#include "KyWayPoint.h"

#include <map>
#include <typeindex>
#include <vector>

namespace {

using ToField = void (*)(const boost::any& value, KyField& field);
using Converters = std::map<std::type_index, ToField>;

template <class T>
void toField(const boost::any& value, KyField& field) {
    field = KyField(*boost::any_cast<T>(&value));
}

template <class... Ts>
void add(Converters& converters, KyTypeList<Ts...>) {
    (converters.emplace(typeid(Ts), &toField<Ts>), ...);
}

const Converters& getConverters() {
    static const Converters converters = [] {
        Converters all;
        add(all, KyBuiltInFieldTypes());
        add(all, KyLuaFurtherValues());
        add(all, KyTypeList<const char*, char*, short, unsigned short, long, unsigned long, long long,
                            unsigned long long, KyObject*, std::vector<KyField>, std::vector<int>, std::vector<double>,
                            std::vector<std::string>>());
        all.emplace(typeid(KyField),
                    [](const boost::any& value, KyField& field) { field = *boost::any_cast<KyField>(&value); });
        return all;
    }();
    return converters;
}

} // namespace

bool kyAnyToField(const boost::any& value, KyField& field) {
    const auto found = getConverters().find(value.type());
    if (found == getConverters().end())
        return false;
    found->second(value, field);
    return true;
}
