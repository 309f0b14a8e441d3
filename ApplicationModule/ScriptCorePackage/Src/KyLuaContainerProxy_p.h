// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaClass_p.h"

#include "KyAttributeInterface.h"

#include <lua.hpp>

struct KyLuaInstance;

/// What a container attribute reads as: a userdata whose environment table carries the fields "__tessaly_object",
/// "__tessaly_attr", "size", "insert" and "remove". All functions of proxies also take a plain table with these fields.
struct KyLuaContainerProxy {
    /// Kept alive by the environment table, and compared with what stands there.
    const KyLuaInstance* instance;
    const KyAttributeInterface* attribute;
};

/// Pushes the proxy of a container attribute of the instance at `instanceIndex` (absolute).
void kyLuaPushContainerProxy(lua_State* state, KyLuaShared& shared, int instanceIndex,
                             const KyAttributeInterface& attribute);

/// The values of the container whose proxy is at `index`, as a list; false for other values and unreadable containers.
bool kyLuaCheckContainerProxy(lua_State* state, int index, KyLuaShared& shared, KyField& field);
