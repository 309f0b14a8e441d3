// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include <QBoxLayout>
#include <QWidget>

#include <algorithm>

namespace {

/// Qt makes the widget a child of the layout's.
void checkPlace(const QLayout& layout, const QWidget& widget) {
    if (const QWidget* parent = layout.parentWidget())
        kyCheckQtParent(widget, *parent);
}

void addWidget(QLayout& layout, QWidget& widget) {
    checkPlace(layout, widget);
    layout.addWidget(&widget);
}

/// At the end for an index that is none.
void insertWidget(QBoxLayout& layout, int index, QWidget& widget) {
    checkPlace(layout, widget);
    layout.removeWidget(&widget);
    layout.insertWidget(index < 0 || index > layout.count() ? layout.count() : index, &widget);
}

template <class T>
luabind::scope makeDirection(const char* name) {
    auto layoutClass = kyQtClass<T, QBoxLayout>(name);
    layoutClass.def("__init", kyQtConstructor<T>(+[]() -> QObject* { return new T; }));
    return layoutClass;
}

} // namespace

luabind::scope kyMakeQtLayoutTypes() {
    auto layoutClass = kyQtClass<QLayout, QObject>("QLayout");
    layoutClass.def("addWidget", kyQt<&addWidget>);
    auto boxClass = kyQtClass<QBoxLayout, QLayout>("QBoxLayout");
    boxClass
        .def("__init",
             kyQtConstructor<QBoxLayout>(+[]() -> QObject* { return new QBoxLayout(QBoxLayout::LeftToRight); }))
        .def("insertWidget", kyQt<&insertWidget>);
    return layoutClass, boxClass, makeDirection<QHBoxLayout>("QHBoxLayout"), makeDirection<QVBoxLayout>("QVBoxLayout");
}
