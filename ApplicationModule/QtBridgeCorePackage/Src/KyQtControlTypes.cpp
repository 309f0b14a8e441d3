// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QIcon>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>

#include <cmath>

namespace {

/// Counted from 1 as Qt does.
QObject* makeSlider(double orientation, QWidget* parent) {
    constexpr int cNbOrientations = 2;
    return new QSlider(
        static_cast<Qt::Orientation>(1 + kyCheckLuaIndex(orientation - 1, cNbOrientations, "orientation")), parent);
}

luabind::scope makeSliders() {
    auto abstractClass = kyQtClass<QAbstractSlider, QWidget>("QAbstractSlider");
    kyQtRange<QAbstractSlider>(abstractClass);
    auto sliderClass = kyQtClass<QSlider, QAbstractSlider>("QSlider");
    kyQtWidgetConstructors<QSlider>(sliderClass);
    KyCallSignatures::add("QSlider", {"__init(parent?)", "__init(orientation: integer, parent?)"});
    sliderClass
        .def("__init", kyQtConstructor<QSlider>(+[](double orientation) { return makeSlider(orientation, nullptr); }))
        .def("__init", kyQtConstructor<QSlider>(&makeSlider));
    return abstractClass, sliderClass;
}

luabind::scope makeSpinBox() {
    auto boxClass = kyQtClass<QDoubleSpinBox, QWidget>("QDoubleSpinBox");
    kyQtWidgetConstructors<QDoubleSpinBox>(boxClass);
    KyCallSignatures::add("QDoubleSpinBox", {"__init(parent?)"});
    boxClass.def("value", kyQt<&QDoubleSpinBox::value>).def("setValue", kyQtCall([](QDoubleSpinBox& box, double value) {
                                                                box.setValue(std::isnan(value) ? 0.0 : value);
                                                            }));
    return boxClass;
}

luabind::scope makeProgressBar() {
    auto barClass = kyQtClass<QProgressBar, QWidget>("QProgressBar");
    kyQtWidgetConstructors<QProgressBar>(barClass);
    KyCallSignatures::add("QProgressBar", {"__init(parent?)"});
    kyQtRange<QProgressBar>(barClass);
    return barClass;
}

luabind::scope makeButtons() {
    auto abstractClass = kyQtClass<QAbstractButton, QWidget>("QAbstractButton");
    abstractClass.def("isChecked", kyQt<&QAbstractButton::isChecked>)
        .def("setChecked", kyQt<&QAbstractButton::setChecked>)
        .def("text", kyQt<&QAbstractButton::text>)
        .def("setText", kyQt<&QAbstractButton::setText>)
        .def("icon", kyQt<&QAbstractButton::icon>)
        .def("setIcon", kyQt<&QAbstractButton::setIcon>);
    auto pushClass = kyQtClass<QPushButton, QAbstractButton>("QPushButton");
    kyQtTextConstructors<QPushButton>(pushClass);
    KyCallSignatures::add("QPushButton", {"__init(parent?)", "__init(text, parent?)", "__init(icon, text, parent?)"});
    pushClass
        .def("__init", kyQtConstructor<QPushButton>(+[](const QIcon& icon, const QString& text) -> QObject* {
                 return new QPushButton(icon, text);
             }))
        .def("__init",
             kyQtConstructor<QPushButton>(+[](const QIcon& icon, const QString& text, QWidget* parent) -> QObject* {
                 return new QPushButton(icon, text, parent);
             }))
        .def("setMenu", kyQt<&QPushButton::setMenu>);
    return abstractClass, pushClass;
}

} // namespace

luabind::scope kyMakeQtControlTypes() {
    return makeSliders(), makeSpinBox(), makeProgressBar(), makeButtons();
}
