// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMovie>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTreeWidget>

namespace {

template <class T>
QObject* toClass(QObject* object) {
    return qobject_cast<T*>(object);
}

struct Cast {
    const char* name;
    QObject* (*cast)(QObject* object);
};

constexpr Cast cCasts[] = {
    {"toQWidget", &toClass<QWidget>},
    {"toQListWidget", &toClass<QListWidget>},
    {"toQLabel", &toClass<QLabel>},
    {"toQAction", &toClass<QAction>},
    {"toQDockWidget", &toClass<QDockWidget>},
    {"toQLineEdit", &toClass<QLineEdit>},
    {"toQTextEdit", &toClass<QTextEdit>},
    {"toQComboBox", &toClass<QComboBox>},
    {"toQAbstractSlider", &toClass<QAbstractSlider>},
    {"toQSlider", &toClass<QSlider>},
    {"toQDoubleSpinBox", &toClass<QDoubleSpinBox>},
    {"toQTreeWidget", &toClass<QTreeWidget>},
    {"toQTreeView", &toClass<QTreeView>},
    {"toQPushButton", &toClass<QPushButton>},
    {"toQAbstractButton", &toClass<QAbstractButton>},
    {"toQLayout", &toClass<QLayout>},
    {"toQBoxLayout", &toClass<QBoxLayout>},
    {"toQHBoxLayout", &toClass<QHBoxLayout>},
    {"toQVBoxLayout", &toClass<QVBoxLayout>},
    {"toQStackedWidget", &toClass<QStackedWidget>},
    {"toQScrollArea", &toClass<QScrollArea>},
    {"toQMenu", &toClass<QMenu>},
    {"toQMovie", &toClass<QMovie>},
    {"toQApplication", &toClass<QApplication>},
    {"toQProgressBar", &toClass<QProgressBar>},
};

} // namespace

luabind::scope kyMakeQtCasts() {
    luabind::scope casts;
    for (const Cast& cast : cCasts) {
        KyCallSignatures::add({}, {std::string(cast.name) + "(object)"});
        static_cast<void>((casts, luabind::def(cast.name, cast.cast)));
    }
    return casts;
}
