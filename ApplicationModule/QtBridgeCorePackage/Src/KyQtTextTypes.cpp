// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMovie>
#include <QTextEdit>

#include <algorithm>

namespace {

/// The icon's largest picture; icons that draw in any size are asked for one.
QPixmap getLargestPixmap(const QIcon& icon) {
    constexpr QSize cAnySize(64, 64);
    const QList<QSize> sizes = icon.availableSizes();
    const auto isSmaller = [](const QSize& a, const QSize& b) { return a.width() < b.width(); };
    const auto largest = std::max_element(sizes.begin(), sizes.end(), isSmaller);
    return icon.pixmap(largest == sizes.end() ? cAnySize : *largest);
}

luabind::scope makeLabel() {
    auto labelClass = kyQtClass<QLabel, QWidget>("QLabel");
    kyQtTextConstructors<QLabel>(labelClass);
    KyCallSignatures::add("QLabel", {"__init(parent?)", "__init(text, parent?)", "setPixmap(file)", "setPixmap(icon)"});
    labelClass.def("text", kyQt<&QLabel::text>)
        .def("setText", kyQt<&QLabel::setText>)
        .def("setPixmap", kyQtCall([](QLabel& label, const QString& file) { label.setPixmap(QPixmap(file)); }))
        .def("setPixmap", kyQtCall([](QLabel& label, const QIcon& icon) { label.setPixmap(getLargestPixmap(icon)); }))
        .def("setMovie", kyQt<&QLabel::setMovie>)
        .def("movie", kyQt<&QLabel::movie>);
    return labelClass;
}

luabind::scope makeLineEdit() {
    auto editClass = kyQtClass<QLineEdit, QWidget>("QLineEdit");
    kyQtTextConstructors<QLineEdit>(editClass);
    KyCallSignatures::add("QLineEdit", {"__init(parent?)", "__init(text, parent?)"});
    editClass.def("text", kyQt<&QLineEdit::text>)
        .def("setText", kyQt<&QLineEdit::setText>)
        .def("setCursorPosition", kyQt<&QLineEdit::setCursorPosition>)
        .def("getCursorPosition", kyQt<&QLineEdit::cursorPosition>);
    return editClass;
}

luabind::scope makeTextEdit() {
    auto editClass = kyQtClass<QTextEdit, QWidget>("QTextEdit");
    kyQtTextConstructors<QTextEdit>(editClass);
    KyCallSignatures::add("QTextEdit", {"__init(parent?)", "__init(text, parent?)"});
    editClass.def("text", kyQt<&QTextEdit::toPlainText>)
        .def("setText", kyQt<&QTextEdit::setText>)
        .def("setHtml", kyQt<&QTextEdit::setHtml>);
    return editClass;
}

} // namespace

luabind::scope kyMakeQtTextTypes() {
    return makeLabel(), makeLineEdit(), makeTextEdit();
}
