// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

struct ClassNames {
    const char* name;
    const char* members;
};

/// What scripts know of Qt: the classes and their members; the free functions as members of "_G", last.
inline constexpr ClassNames cClasses[] = {
    {"QObject", "findChild findChildren objectName setObjectName property setProperty parent setParent blockSignals "
                "inherits"},
    {"QWidget", "parentWidget setParent setEnabled isEnabled show hide isHidden setVisible isVisible "
                "setAutoFillBackground setColor layout setLayout setStyleSheet move resize width height setGeometry "
                "geometry mapToGlobal testAttribute setAttribute childAt addAction objectName"},
    {"QApplication", "property"},
    {"QSettings", "beginGroup endGroup setValue value clear remove contains setFileName fileName"},
    {"QMovie", "speed setSpeed start stop setPaused fileName"},
    {"QAction", "isChecked isVisible text icon setIcon"},
    {"QIcon", "__init"},
    {"QString", "fromStdString toStdString toUtf8 fromUtf8 toQUrl isEmpty"},
    {"QUrl", "toString isEmpty path"},
    {"QMenu", "addAction activeAction clear setTitle title"},
    {"QScrollArea", "ensureWidgetVisible ensureVisible"},
    {"QLayout", "addWidget"},
    {"QBoxLayout", "addWidget insertWidget"},
    {"QHBoxLayout", "insertWidget"},
    {"QVBoxLayout", "insertWidget"},
    {"QListWidget", "clear currentRow addItem"},
    {"QDockWidget", "isFloating setWidget setFloating"},
    {"QLabel", "text setText setPixmap setMovie movie"},
    {"QLineEdit", "text setText setCursorPosition getCursorPosition"},
    {"QTextEdit", "text setText setHtml"},
    {"QComboBox", "addItem insertItem removeItem currentIndex setCurrentIndex currentText clear count itemText"},
    {"QAbstractSlider", "value setValue minimum setMinimum maximum setMaximum"},
    {"QSlider", "value setValue minimum setMinimum maximum setMaximum"},
    {"QDoubleSpinBox", "value setValue"},
    {"QProgressBar", "value setValue minimum setMinimum maximum setMaximum"},
    {"QTreeWidget", "invisibleRootItem currentItem"},
    {"QTreeView", "width"},
    {"QTreeWidgetItem", "parent child childCount columnCount text setText setIcon addChild insertChild removeChild "
                        "indexOfChild"},
    {"QAbstractButton", "isChecked setChecked text setText icon setIcon"},
    {"QPushButton", "isChecked setChecked text setText icon setIcon setMenu"},
    {"QStackedWidget", "currentIndex setCurrentIndex"},
    {"QWebView", "setUrl url load"},
    {"QFile", "copy exists link remove rename"},
    {"QDir", "entryList"},
    {"QAxWidget", "setControl dynamicCall generateDocumentation"},
    {"_G", "deleteQObject loadUi generateGUID connect disconnect toQWidget toQListWidget toQLabel toQAction "
           "toQDockWidget toQLineEdit toQTextEdit toQComboBox toQAbstractSlider toQSlider toQDoubleSpinBox "
           "toQTreeWidget toQTreeView toQWebView toQPushButton toQAbstractButton toQLayout toQBoxLayout toQHBoxLayout "
           "toQVBoxLayout toQStackedWidget toQScrollArea toQMenu toQMovie toQAxWidget toQApplication toQProgressBar "
           "QAxWidget_dynamicCall QAxWidget_GenerateDoc QBoxLayout_insertWidget QComboBox_addItem "
           "QComboBox_insertItem QDir_entryList QDir_entryListOld QObject_property QObject_setProperty "
           "QSettings_beginGroup QSettings_contains QSettings_remove QSettings_setValue QSettings_value "
           "QString_fromStdString QString_fromUtf8 QString_toQUrl QString_toStdString QString_toUtf8 QUrl_toString "
           "QWidget_getGeometry QWidget_mapToGlobal findChild findChildren getCursorPosition getQApplication"},
};
