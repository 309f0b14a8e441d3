// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QBoxLayout>
#include <QWidget>

#include <algorithm>

namespace {

/// Qt makes the widget a child of the layout's.
void checkPlace(const QLayout& layout, const QWidget& widget) {
    if (const QWidget* parent = layout.parentWidget())
        kyCheckQtParent(widget, *parent);
    else
        kyCheckQtMovable(widget);
}

void addWidget(QLayout& layout, QWidget& widget) {
    checkPlace(layout, widget);
    layout.addWidget(&widget);
}

/// At the end for an index that is none.
void insertAligned(QBoxLayout& layout, int index, QWidget& widget, int stretch, int alignment) {
    checkPlace(layout, widget);
    layout.removeWidget(&widget);
    layout.insertWidget(index < 0 || index > layout.count() ? layout.count() : index, &widget, std::max(stretch, 0),
                        Qt::Alignment(alignment));
}

void insertStretched(QBoxLayout& layout, int index, QWidget& widget, int stretch) {
    insertAligned(layout, index, widget, stretch, 0);
}

void insertWidget(QBoxLayout& layout, int index, QWidget& widget) {
    insertStretched(layout, index, widget, 0);
}

template <class T>
luabind::scope makeDirection(const char* name) {
    auto layoutClass = kyQtClass<T, QBoxLayout>(name);
    KyCallSignatures::add(name, {"__init(parent?)"});
    layoutClass.def("__init", kyQtConstructor<T>(+[]() -> QObject* { return new T; }))
        .def("__init", kyQtConstructor<T>(+[](QWidget* parent) -> QObject* { return new T(parent); }));
    return layoutClass;
}

QObject* makeBox(double direction, QWidget* parent) {
    constexpr int cNbDirections = 4;
    return new QBoxLayout(kyCheckLuaEnum<QBoxLayout::Direction>(direction, cNbDirections, "direction"), parent);
}

luabind::scope makeBoxClass() {
    auto boxClass = kyQtClass<QBoxLayout, QLayout>("QBoxLayout");
    KyCallSignatures::add("QBoxLayout",
                          {"__init(direction?: integer, parent?)",
                           "addWidget(widget, stretch?: integer, alignment?: integer)",
                           "insertWidget(index: integer, widget, stretch?: integer, alignment?: integer)"});
    boxClass.def("__init", kyQtConstructor<QBoxLayout>(+[] { return makeBox(QBoxLayout::LeftToRight, nullptr); }))
        .def("__init", kyQtConstructor<QBoxLayout>(+[](double direction) { return makeBox(direction, nullptr); }))
        .def("__init", kyQtConstructor<QBoxLayout>(&makeBox))
        .def("addWidget", kyQt<&addWidget>)
        .def("addWidget", kyQtCall([](QBoxLayout& layout, QWidget& widget, int stretch) {
                 insertStretched(layout, -1, widget, stretch);
             }))
        .def("addWidget", kyQtCall([](QBoxLayout& layout, QWidget& widget, int stretch, int alignment) {
                 insertAligned(layout, -1, widget, stretch, alignment);
             }))
        .def("insertWidget", kyQt<&insertWidget>)
        .def("insertWidget", kyQt<&insertStretched>)
        .def("insertWidget", kyQt<&insertAligned>);
    return boxClass;
}

} // namespace

luabind::scope kyMakeQtLayoutTypes() {
    auto layoutClass = kyQtClass<QLayout, QObject>("QLayout");
    KyCallSignatures::add("QLayout", {"addWidget(widget)"});
    layoutClass.def("addWidget", kyQt<&addWidget>);
    return layoutClass, makeBoxClass(), makeDirection<QHBoxLayout>("QHBoxLayout"),
           makeDirection<QVBoxLayout>("QVBoxLayout");
}
