// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtLuaVariant_p.h"
#include "KyQtTypes_p.h"
#include "KyQtWebView_p.h"

#include "KyCallSignatures.h"

#include <QUrl>
#include <QWidget>

namespace {

/// Stands for the browser widget, which is known by its name and its properties alone: builds have it or not, and a
/// host may bring its own.
class WebView : public QWidget {};

constexpr char cClassName[] = "QWebView";

bool isView(const QWidget& widget) {
    if (widget.inherits(cClassName))
        return true;
    kyReportQt(QT_TRANSLATE_NOOP("KyQtLuaBinding", "QWebView : there is no browser in this widget"));
    return false;
}

void setUrl(QWidget& widget, const QUrl& url) {
    if (isView(widget))
        widget.setProperty("url", url);
}

void setUrlText(QWidget& widget, const QString& url) {
    setUrl(widget, QUrl(url));
}

std::optional<QUrl> getUrl(QWidget& widget) {
    return isView(widget) ? std::optional(widget.property("url").toUrl()) : std::nullopt;
}

QObject* toView(QObject* object) {
    return object && object->inherits(cClassName) ? object : nullptr;
}

/// Where no browser is known, the methods report.
QObject* makeView(QWidget* parent) {
    return kyMakeQtWebView(parent);
}

} // namespace

luabind::scope kyMakeQtWebTypes() {
    auto viewClass = kyQtClass<WebView, QWidget>(cClassName, QWidget::staticMetaObject);
    KyCallSignatures::add("", {"toQWebView(object)"});
    KyCallSignatures::add(cClassName, {"__init(parent?)", "load(url)", "load(url)"});
    viewClass.def("__init", kyQtConstructor<WebView>(+[] { return makeView(nullptr); }))
        .def("__init", kyQtConstructor<WebView>(&makeView))
        .def("setUrl", kyQt<&setUrl>)
        .def("setUrl", kyQt<&setUrlText>)
        .def("load", kyQt<&setUrl>)
        .def("load", kyQt<&setUrlText>)
        .def("url", kyQt<&getUrl>);
    return viewClass, luabind::def("toQWebView", &toView);
}
