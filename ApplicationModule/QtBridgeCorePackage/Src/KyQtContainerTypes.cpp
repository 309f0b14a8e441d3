// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLifetime_p.h"
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QAction>
#include <QDockWidget>
#include <QIcon>
#include <QMenu>
#include <QScrollArea>
#include <QStackedWidget>

namespace {

/// Qt follows a null pointer when there is nothing in the area.
void ensureWidgetVisible(QScrollArea& area, QWidget& widget, int xMargin, int yMargin) {
    if (area.widget())
        area.ensureWidgetVisible(&widget, xMargin, yMargin);
}

luabind::scope makeScrollArea() {
    auto areaClass = kyQtClass<QScrollArea, QWidget>("QScrollArea");
    kyQtWidgetConstructors<QScrollArea>(areaClass);
    KyCallSignatures::add("QScrollArea", {"__init(parent?)", "ensureWidgetVisible(widget)",
                                          "ensureWidgetVisible(widget, xMargin, yMargin)", "ensureVisible(x, y)",
                                          "ensureVisible(x, y, xMargin, yMargin)"});
    areaClass
        .def("ensureWidgetVisible",
             kyQtCall([](QScrollArea& area, QWidget& widget) { ensureWidgetVisible(area, widget, 50, 50); }))
        .def("ensureWidgetVisible", kyQt<&ensureWidgetVisible>)
        .def("ensureVisible", kyQtCall([](QScrollArea& area, int x, int y) { area.ensureVisible(x, y); }))
        .def("ensureVisible", kyQtCall([](QScrollArea& area, int x, int y, int xMargin, int yMargin) {
                 area.ensureVisible(x, y, xMargin, yMargin);
             }));
    return areaClass;
}

void setDockWidget(QDockWidget& dock, QWidget* widget) {
    if (widget)
        kyCheckQtParent(*widget, dock);
    dock.setWidget(widget);
}

luabind::scope makeDockWidget() {
    auto dockClass = kyQtClass<QDockWidget, QWidget>("QDockWidget");
    kyQtTextConstructors<QDockWidget>(dockClass);
    KyCallSignatures::add("QDockWidget", {"__init(parent?)", "__init(text, parent?)"});
    dockClass.def("isFloating", kyQt<&QDockWidget::isFloating>)
        .def("setFloating", kyQt<&QDockWidget::setFloating>)
        .def("setWidget", kyQt<&setDockWidget>);
    return dockClass;
}

luabind::scope makeStackedWidget() {
    auto stackClass = kyQtClass<QStackedWidget, QWidget>("QStackedWidget");
    kyQtWidgetConstructors<QStackedWidget>(stackClass);
    KyCallSignatures::add("QStackedWidget", {"__init(parent?)"});
    stackClass.def("currentIndex", kyQt<&QStackedWidget::currentIndex>)
        .def("setCurrentIndex", kyQt<&QStackedWidget::setCurrentIndex>);
    return stackClass;
}

QAction* addAction(QMenu& menu, const QIcon& icon, const QString& text) {
    QAction* action = menu.addAction(icon, text);
    KyQtLifetime::add(*action, KyQtLifetime::eMade);
    return action;
}

luabind::scope makeMenu() {
    auto menuClass = kyQtClass<QMenu, QWidget>("QMenu");
    kyQtTextConstructors<QMenu>(menuClass);
    KyCallSignatures::add("QMenu", {"__init(parent?)", "__init(title, parent?)", "addAction(text)",
                                    "addAction(icon, text)", "addAction(action)"});
    menuClass.def("addAction", kyQtCall([](QMenu& menu, const QString& text) { return addAction(menu, {}, text); }))
        .def("addAction", kyQt<&addAction>)
        .def("addAction",
             kyQtCall([](QMenu& menu, QAction& action) { static_cast<QWidget&>(menu).addAction(&action); }))
        .def("activeAction", kyQt<&QMenu::activeAction>)
        .def("clear", kyQt<&QMenu::clear>)
        .def("setTitle", kyQt<&QMenu::setTitle>)
        .def("title", kyQt<&QMenu::title>);
    return menuClass;
}

} // namespace

luabind::scope kyMakeQtContainerTypes() {
    return makeScrollArea(), makeDockWidget(), makeStackedWidget(), makeMenu();
}
