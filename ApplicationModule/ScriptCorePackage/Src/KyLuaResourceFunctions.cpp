// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaResourceFunctions_p.h"

#include "KyLuaValueHolder_p.h"

#include "KyCallSignatures.h"
#include "KyResource.h"

#include <luabind/luabind.hpp>

#include <cstddef>
#include <string>

namespace {

/// A `URL` or a text of a script.
struct LuaPlace {
    KyURL url;
};

bool setCurrentDirectory(const LuaPlace& directory) {
    return KyResource::setCurrentDirectory(directory.url);
}

bool pushThreadDirectory(const LuaPlace& directory) {
    return KyResource::pushThreadDirectory(directory.url);
}

bool popThreadDirectory() {
    return KyResource::popThreadDirectory();
}

KyURL getThreadDirectory() {
    return KyResource::getThreadDirectory();
}

template <bool (*Function)(const KyURL&)>
bool at(const LuaPlace& place) {
    return Function(place.url);
}

template <bool (*Function)(const KyURL&, const KyURL&)>
bool fromTo(const LuaPlace& from, const LuaPlace& to) {
    return Function(from.url, to.url);
}

} // namespace

namespace luabind {

template <>
struct default_converter<LuaPlace> : native_converter_base<LuaPlace> {
    int compute_score(lua_State* state, int index) {
        return lua_type(state, index) == LUA_TSTRING || findURL(state, index) ? 0 : -1;
    }

    LuaPlace from(lua_State* state, int index) {
        if (const KyURL* url = findURL(state, index))
            return {*url};
        std::size_t size = 0;
        const char* text = lua_tolstring(state, index, &size);
        return {KyURL(std::string(text, size), KyURL::eLocalPath)};
    }

private:
    static const KyURL* findURL(lua_State* state, int index) {
        const detail::object_rep* object = detail::get_instance(state, index);
        if (!object)
            return nullptr;
        const auto [value, distance] = object->get_instance(detail::registered_class<KyURL>::id);
        return distance < 0 ? nullptr : static_cast<const KyURL*>(value);
    }
};

template <>
struct default_converter<const LuaPlace&> : default_converter<LuaPlace> {};

/// Candidates in errors show what scripts may give.
template <>
struct detail::type_to_string<const LuaPlace&> {
    static void get(lua_State* state) { lua_pushliteral(state, "text or URL"); }
};

} // namespace luabind

luabind::scope kyMakeLuaResourceScope() {
    using namespace luabind;
    KyCallSignatures::add("Resource",
                          {"existDirectory(directory)", "existFile(file)", "setCurrentDirectory(directory)",
                           "pushThreadDirectory(directory)", "deleteDirectory(directory)",
                           "createDirectoryHierarchy(directory)", "createDirectory(directory)", "copyFile(from, to)",
                           "renameFile(from, to)", "deleteFile(file)", "createFile(file)"});
    return namespace_("Resource")[(
        def("existDirectory", &at<&KyResource::existDirectory>), def("existFile", &at<&KyResource::existFile>),
        def("setCurrentDirectory", &setCurrentDirectory), def("getCurrentDirectory", &KyResource::getCurrentDirectory),
        def("pushThreadDirectory", &pushThreadDirectory), def("popThreadDirectory", &popThreadDirectory),
        def("getThreadDirectory", &getThreadDirectory), def("deleteDirectory", &at<&KyResource::deleteDirectory>),
        def("createDirectoryHierarchy", &at<&KyResource::createDirectoryHierarchy>),
        def("createDirectory", &at<&KyResource::createDirectory>), def("copyFile", &fromTo<&KyResource::copyFile>),
        def("renameFile", &fromTo<&KyResource::renameFile>), def("deleteFile", &at<&KyResource::deleteFile>),
        def("createFile", &at<&KyResource::createFile>))];
}
