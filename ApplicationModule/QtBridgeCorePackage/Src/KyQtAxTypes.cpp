// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"

#include "KyQtAxCall_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QAxWidget>

namespace {

QVariant dynamicCall(QAxWidget& control, const QString& method, const luabind::argument& parameters) {
    std::optional<QVariantList> list = kyReadAxParameters(parameters);
    return list ? control.dynamicCall(qUtf8Printable(method), *list) : QVariant();
}

QObject* toControl(QObject* object) {
    return qobject_cast<QAxWidget*>(object);
}

} // namespace

luabind::scope kyMakeQtAxTypes() {
    auto axClass = kyQtClass<QAxWidget, QWidget>("QAxWidget");
    kyQtWidgetConstructors<QAxWidget>(axClass);
    KyCallSignatures::add("", {"toQAxWidget(object)"});
    KyCallSignatures::add("QAxWidget",
                          {"__init(parent?)", "setControl(control)", "dynamicCall(functionName, parameters)"});
    axClass
        .def("setControl", kyQtCall([](QAxWidget& control, const QString& name) { return control.setControl(name); }))
        .def("dynamicCall", kyQt<&dynamicCall>)
        .def("generateDocumentation", kyQtCall([](QAxWidget& control) { return control.generateDocumentation(); }));
    return axClass, luabind::def("toQAxWidget", &toControl);
}
