// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QIcon>
#include <QUrl>

namespace {

KyQtText makeText(const QString& text) {
    return {text};
}

luabind::scope makeTextClass() {
    luabind::class_<KyQtText> textClass("QString");
    KyCallSignatures::add("QString", {"__init(text)", "fromStdString(text)", "fromUtf8(text)"});
    kyDefineLuaEquality(textClass);
    const auto toLua = +[](const KyQtText& self) { return self.text; };
    textClass.def("__init", kyLuaConstructor(+[] { return KyQtText(); }))
        .def("__init", kyLuaConstructor(&makeText))
        .def("__tostring", toLua)
        .def("toStdString", toLua)
        .def("toUtf8", toLua)
        .def(
            "toQUrl", +[](const KyQtText& self) { return QUrl(self.text); })
        .def(
            "isEmpty", +[](const KyQtText& self) { return self.text.isEmpty(); })
        .scope[(luabind::def("fromStdString", &makeText), luabind::def("fromUtf8", &makeText))];
    return textClass;
}

luabind::scope makeUrl() {
    luabind::class_<QUrl> urlClass("QUrl");
    KyCallSignatures::add("QUrl", {"__init(text)"});
    kyDefineLuaEquality(urlClass);
    const auto toText = +[](const QUrl& url) { return url.toString(); };
    urlClass.def("__init", kyLuaConstructor(+[] { return QUrl(); }))
        .def("__init", kyLuaConstructor(+[](const QString& text) { return QUrl(text); }))
        .def("__tostring", toText)
        .def("toString", toText)
        .def(
            "isEmpty", +[](const QUrl& url) { return url.isEmpty(); })
        .def(
            "path", +[](const QUrl& url) { return url.path(); });
    return urlClass;
}

QIcon makeIcon(const QString& file) {
    kyCheckQtGui();
    return QIcon(file);
}

luabind::scope makeIconClass() {
    luabind::class_<QIcon> iconClass("QIcon");
    KyCallSignatures::add("QIcon", {"__init(file)"});
    iconClass.def("__init", kyLuaConstructor(+[] { return QIcon(); }))
        .def("__init", kyLuaConstructor(&makeIcon))
        .def(
            "__eq", +[](const QIcon& a, const QIcon& b) { return a.cacheKey() == b.cacheKey(); })
        .def(
            "__eq", +[](const QIcon&, const luabind::argument&) { return false; })
        .def(
            "__eq", +[](const luabind::argument&, const QIcon&) { return false; });
    return iconClass;
}

} // namespace

luabind::scope kyMakeQtValueTypes() {
    return makeTextClass(), makeUrl(), makeIconClass();
}
