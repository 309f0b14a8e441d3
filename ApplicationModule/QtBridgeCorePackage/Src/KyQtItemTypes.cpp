// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtArgument_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QComboBox>
#include <QIcon>
#include <QListWidget>

namespace {

using luabind::argument;

luabind::scope makeListWidget() {
    auto listClass = kyQtClass<QListWidget, QWidget>("QListWidget");
    kyQtWidgetConstructors<QListWidget>(listClass);
    KyCallSignatures::add("QListWidget", {"__init(parent?)", "addItem(text)"});
    listClass.def("clear", kyQt<&QListWidget::clear>)
        .def("currentRow", kyQt<&QListWidget::currentRow>)
        .def("addItem", kyQtCall([](QListWidget& list, const QString& text) { list.addItem(text); }));
    return listClass;
}

/// What an entry carries.
QVariant readData(const argument& data) {
    const KyQtArgument read(data);
    if (!read.isGood())
        throw KyScriptError("this value cannot be kept by an item");
    return read.getValue();
}

void removeItem(QComboBox& box, int index) {
    if (index >= 0 && index < box.count())
        box.removeItem(index);
}

luabind::scope makeComboBox() {
    auto boxClass = kyQtClass<QComboBox, QWidget>("QComboBox");
    kyQtWidgetConstructors<QComboBox>(boxClass);
    KyCallSignatures::add("QComboBox",
                          {"__init(parent?)", "addItem(text)", "addItem(icon, text)", "addItem(text, data)",
                           "addItem(icon, text, data)", "insertItem(index: integer, text)",
                           "insertItem(index: integer, icon, text)", "insertItem(index: integer, text, data)",
                           "insertItem(index: integer, icon, text, data)", "removeItem(index: integer)",
                           "itemText(index: integer)"});
    boxClass.def("addItem", kyQtCall([](QComboBox& box, const QString& text) { box.addItem(text); }))
        .def("addItem",
             kyQtCall([](QComboBox& box, const QIcon& icon, const QString& text) { box.addItem(icon, text); }))
        .def("addItem", kyQtCall([](QComboBox& box, const QString& text, const argument& data) {
                 box.addItem(text, readData(data));
             }))
        .def("addItem", kyQtCall([](QComboBox& box, const QIcon& icon, const QString& text, const argument& data) {
                 box.addItem(icon, text, readData(data));
             }));
    boxClass
        .def("insertItem",
             kyQtCall([](QComboBox& box, int index, const QString& text) { box.insertItem(index, text); }))
        .def("insertItem", kyQtCall([](QComboBox& box, int index, const QIcon& icon, const QString& text) {
                 box.insertItem(index, icon, text);
             }))
        .def("insertItem", kyQtCall([](QComboBox& box, int index, const QString& text, const argument& data) {
                 box.insertItem(index, text, readData(data));
             }))
        .def("insertItem", kyQtCall([](QComboBox& box, int index, const QIcon& icon, const QString& text,
                                       const argument& data) { box.insertItem(index, icon, text, readData(data)); }))
        .def("removeItem", kyQt<&removeItem>)
        .def("currentIndex", kyQt<&QComboBox::currentIndex>)
        .def("setCurrentIndex", kyQt<&QComboBox::setCurrentIndex>)
        .def("currentText", kyQt<&QComboBox::currentText>)
        .def("clear", kyQt<&QComboBox::clear>)
        .def("count", kyQt<&QComboBox::count>)
        .def("itemText", kyQt<&QComboBox::itemText>);
    return boxClass;
}

} // namespace

luabind::scope kyMakeQtItemTypes() {
    return makeListWidget(), makeComboBox();
}
