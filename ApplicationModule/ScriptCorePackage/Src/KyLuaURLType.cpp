// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueClass_p.h"
#include "KyLuaValueTypes_p.h"

#include "KyCallSignatures.h"
#include "KyURL.h"

#include <cmath>

namespace {

int checkSchemeType(double schemeType) {
    return kyCheckLuaIndex(schemeType, KyURL::eNbSchemeTypes, "scheme type");
}

/// Not a number is as bad a port as any, and must not become port 0.
void setPort(KyURL& url, double port) {
    if (!std::isnan(port))
        url.setPort(kyToLuaElement<int>(port));
}

void defineConstructors(luabind::class_<KyURL>& urlClass) {
    urlClass.def("__init", kyLuaConstructor(+[](const std::string& text) { return KyURL(text); }))
        .def("__init", kyLuaConstructor(+[](const std::string& text, double schemeType) {
                 return KyURL(text, checkSchemeType(schemeType));
             }));
}

void defineProperties(luabind::class_<KyURL>& urlClass) {
    using Path = std::string (KyURL::*)() const;
    urlClass.property("path", &KyURL::getPath, &KyURL::setPath)
        .property("port", &KyURL::getPort, &setPort)
        .property("query", &KyURL::getQuery, &KyURL::setQuery)
        .property("fragment", &KyURL::getFragment, &KyURL::setFragment)
        .property("host", &KyURL::getHost, &KyURL::setHost)
        .property("scheme", &KyURL::getScheme, &KyURL::setScheme)
        .property("user", &KyURL::getUser, &KyURL::setUser)
        .property("localPath", static_cast<Path>(&KyURL::getLocalPath), &KyURL::setLocalPath)
        .property("extension", &KyURL::getExtension, &KyURL::setExtension)
        .property("filename", &KyURL::getFileName, &KyURL::setFileName);
}

void defineReading(luabind::class_<KyURL>& urlClass) {
    urlClass
        .def(
            "fromString", +[](KyURL& url, const std::string& text) { return url.fromString(text); })
        .def(
            "fromString", +[](KyURL& url, const std::string& text,
                              double schemeType) { return url.fromString(text, checkSchemeType(schemeType)); })
        .def("fromLocalPath", &KyURL::fromLocalPath)
        .def(
            "checkScheme",
            +[](const KyURL& url, double schemeType) { return url.checkScheme(checkSchemeType(schemeType)); })
        .def("clear", &KyURL::clear);
}

void defineParts(luabind::class_<KyURL>& urlClass) {
    using Path = std::string (KyURL::*)() const;
    urlClass.def("isRelative", &KyURL::isRelative)
        .def("isEmpty", &KyURL::isEmpty)
        .def("toString", &KyURL::toString)
        .def("getLocalPath", static_cast<Path>(&KyURL::getLocalPath))
        .def("getDirectory", &KyURL::getDirectory)
        .def("getLocalDirectory", &KyURL::getLocalDirectory)
        .def("getBasename", &KyURL::getBasename)
        .def("getFileName", &KyURL::getFileName)
        .def("setFileName", &KyURL::setFileName)
        .def("appendPath", &KyURL::appendPath)
        .def("setCanonicalPath", &KyURL::setCanonicalPath)
        .def("getAbsoluteURL", &KyURL::getAbsoluteURL)
        .def("setAbsoluteURL", &KyURL::setAbsoluteURL)
        .def("getRelativeURL", &KyURL::getRelativeURL)
        .def("setRelativeURL", &KyURL::setRelativeURL);
}

luabind::scope makeURL() {
    using luabind::value;
    luabind::class_<KyURL> urlClass("URL");
    KyCallSignatures::add("URL", {"__init(text, schemeType?: integer)", "fromString(text, schemeType?: integer)",
                                  "fromLocalPath(path)", "checkScheme(schemeType: integer)", "appendPath(path)",
                                  "getAbsoluteURL(base)", "getRelativeURL(base)"});
    kyDefineLuaValue(urlClass);
    urlClass.enum_("SchemeType")[(value("eFile", KyURL::eFile), value("eHttp", KyURL::eHttp),
                                  value("eFtp", KyURL::eFtp), value("eResource", KyURL::eResource),
                                  value("eURL", KyURL::eURL), value("eLocalPath", KyURL::eLocalPath))];
    defineConstructors(urlClass);
    defineProperties(urlClass);
    defineReading(urlClass);
    defineParts(urlClass);
    return urlClass;
}

} // namespace

void kyBindURLType(lua_State* state) {
    luabind::module(state)[makeURL()];
}
