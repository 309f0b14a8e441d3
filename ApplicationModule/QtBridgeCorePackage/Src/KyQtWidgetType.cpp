// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyQtValues.h"

#include "KyCallSignatures.h"
#include "KyColor.h"
#include "KyRect.h"
#include "KyVec2.h"

#include <QAction>
#include <QLayout>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Window systems count pixels in 16 bits.
constexpr int cMaxPixel = 32767;

/// What Qt keeps for itself: a widget that is told wrong here follows null pointers.
constexpr std::array cStates{Qt::WA_WState_Visible,
                             Qt::WA_WState_Hidden,
                             Qt::WA_WState_Created,
                             Qt::WA_WState_CompressKeys,
                             Qt::WA_WState_InPaintEvent,
                             Qt::WA_WState_Reparented,
                             Qt::WA_WState_ConfigPending,
                             Qt::WA_WState_Polished,
                             Qt::WA_WState_OwnSizePolicy,
                             Qt::WA_WState_ExplicitShowHide,
                             Qt::WA_WState_WindowOpacitySet,
                             Qt::WA_WState_AcceptedTouchBeginEvent,
                             Qt::WA_OutsideWSRange,
                             Qt::WA_ForceUpdatesDisabled,
                             Qt::WA_PendingMoveEvent,
                             Qt::WA_PendingResizeEvent,
                             Qt::WA_PendingUpdate};

int toPosition(double value) {
    return std::clamp(kyToLuaElement<int>(value), -cMaxPixel, cMaxPixel);
}

int toSize(double value) {
    return std::clamp(kyToLuaElement<int>(value), 0, cMaxPixel);
}

QPoint toPoint(const KyVec2d& position) {
    const auto round = [](double value) { return toPosition(std::round(value)); };
    return {round(position.x), round(position.y)};
}

Qt::WidgetAttribute checkAttribute(double attribute) {
    return kyCheckLuaEnum<Qt::WidgetAttribute>(attribute, Qt::WA_AttributeCount, "widget attribute");
}

void setAttribute(QWidget& widget, double number, bool isOn) {
    const auto attribute = checkAttribute(number);
    if (std::find(cStates.begin(), cStates.end(), attribute) != cStates.end())
        throw KyScriptError("this widget attribute is a state, which cannot be set");
    widget.setAttribute(attribute, isOn);
}

void setColor(QWidget& widget, const KyColor& color) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, KyApplication::toQColor(color));
    widget.setPalette(palette);
}

void setGeometry(QWidget& widget, double x, double y, double width, double height) {
    widget.setGeometry(toPosition(x), toPosition(y), toSize(width), toSize(height));
}

KyRecti getGeometry(QWidget& widget) {
    const QRect rect = widget.geometry();
    return KyRecti(rect.x(), rect.y(), rect.width(), rect.height());
}

KyVec2d mapToGlobal(QWidget& widget, const KyVec2d& position) {
    const QPoint global = widget.mapToGlobal(toPoint(position));
    return KyVec2d(global.x(), global.y());
}

/// Qt makes the widgets of the layout children of the widget.
void checkLayout(const QLayout& layout, const QWidget& widget) {
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* item = layout.itemAt(i);
        if (item->widget())
            kyCheckQtParent(*item->widget(), widget);
        if (item->layout())
            checkLayout(*item->layout(), widget);
    }
}

void setLayout(QWidget& widget, QLayout& layout) {
    kyCheckQtMovable(layout);
    checkLayout(layout, widget);
    widget.setLayout(&layout);
}

void defineState(luabind::class_<QWidget, QObject>& widgetClass) {
    widgetClass.def("parentWidget", kyQt<&QWidget::parentWidget>)
        .def("setEnabled", kyQt<&QWidget::setEnabled>)
        .def("isEnabled", kyQt<&QWidget::isEnabled>)
        .def("show", kyQt<&QWidget::show>)
        .def("hide", kyQt<&QWidget::hide>)
        .def("isHidden", kyQt<&QWidget::isHidden>)
        .def("setVisible", kyQtCall([](QWidget& widget, bool isVisible) { widget.setVisible(isVisible); }))
        .def("isVisible", kyQt<&QWidget::isVisible>)
        .def("setAutoFillBackground", kyQt<&QWidget::setAutoFillBackground>)
        .def("setColor", kyQt<&setColor>)
        .def("setStyleSheet", kyQt<&QWidget::setStyleSheet>)
        .def("testAttribute", kyQtCall([](QWidget& widget, double attribute) {
                 return widget.testAttribute(checkAttribute(attribute));
             }))
        .def("setAttribute", kyQtCall([](QWidget& widget, double attribute) { setAttribute(widget, attribute, true); }))
        .def("setAttribute", kyQt<&setAttribute>)
        .def("addAction", kyQtCall([](QWidget& widget, QAction& action) { widget.addAction(&action); }));
}

void definePlace(luabind::class_<QWidget, QObject>& widgetClass) {
    widgetClass
        .def("move", kyQtCall([](QWidget& widget, double x, double y) { widget.move(toPosition(x), toPosition(y)); }))
        .def("move", kyQtCall([](QWidget& widget, const KyVec2d& position) { widget.move(toPoint(position)); }))
        .def("resize", kyQtCall([](QWidget& widget, const KyVec2d& size) {
                 widget.resize(toSize(std::round(size.x)), toSize(std::round(size.y)));
             }))
        .def("resize", kyQtCall([](QWidget& widget, double width, double height) {
                 widget.resize(toSize(width), toSize(height));
             }))
        .def("width", kyQt<&QWidget::width>)
        .def("height", kyQt<&QWidget::height>)
        .def("setGeometry", kyQt<&setGeometry>)
        .def("setGeometry", kyQtCall([](QWidget& widget, const KyRecti& rect) {
                 setGeometry(widget, rect.origin.x, rect.origin.y, rect.width, rect.height);
             }))
        .def("geometry", kyQt<&getGeometry>)
        .def("mapToGlobal", kyQt<&mapToGlobal>)
        .def("childAt",
             kyQtCall([](QWidget& widget, double x, double y) { return widget.childAt(toPosition(x), toPosition(y)); }))
        .def("childAt",
             kyQtCall([](QWidget& widget, const KyVec2d& position) { return widget.childAt(toPoint(position)); }))
        .def("layout", kyQtCall([](QWidget& widget) { return widget.layout(); }))
        .def("setLayout", kyQt<&setLayout>);
}

} // namespace

luabind::scope kyMakeQtWidgetType() {
    auto widgetClass = kyQtClass<QWidget, QObject>("QWidget");
    kyQtWidgetConstructors<QWidget>(widgetClass);
    KyCallSignatures::add("QWidget", {"__init(parent?)", "testAttribute(attribute: integer)",
                                      "setAttribute(attribute: integer, isOn?)", "addAction(action)", "move(x, y)",
                                      "move(position)", "resize(size)", "resize(width, height)",
                                      "setGeometry(x, y, width, height)", "setGeometry(rect)", "mapToGlobal(position)",
                                      "childAt(x, y)", "childAt(position)"});
    defineState(widgetClass);
    definePlace(widgetClass);
    return widgetClass;
}
