// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"

#include "KyQtAxCall_p.h"
#include "KyQtLuaVariant_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QWidget>

namespace {

/// In place of a control: the widget is there, its operations say that they are not.
class AxWidget : public QWidget {
public:
    using QWidget::QWidget;
};

void reportMissing() {
    kyReportQt(QT_TRANSLATE_NOOP("KyQtLuaBinding", "QAxWidget : there are no ActiveX controls on this platform"));
}

void setControl(QWidget&, const QString&) {
    reportMissing();
}

QVariant dynamicCall(QWidget&, const QString&, const luabind::argument& parameters) {
    if (kyReadAxParameters(parameters))
        reportMissing();
    return {};
}

QVariant generateDocumentation(QWidget&) {
    reportMissing();
    return {};
}

QObject* toControl(QObject*) {
    return nullptr;
}

} // namespace

luabind::scope kyMakeQtAxTypes() {
    auto axClass = kyQtClass<AxWidget, QWidget>("QAxWidget", QWidget::staticMetaObject);
    kyQtWidgetConstructors<AxWidget>(axClass);
    KyCallSignatures::add("", {"toQAxWidget(object)"});
    KyCallSignatures::add("QAxWidget",
                          {"__init(parent?)", "setControl(control)", "dynamicCall(functionName, parameters)"});
    axClass.def("setControl", kyQt<&setControl>)
        .def("dynamicCall", kyQt<&dynamicCall>)
        .def("generateDocumentation", kyQt<&generateDocumentation>);
    return axClass, luabind::def("toQAxWidget", &toControl);
}
