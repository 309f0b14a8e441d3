// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLifetime_p.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace {

using Origins = std::unordered_map<const QObject*, KyQtLifetime::Origin>;

/// Never end: objects may outlive what a program destroys at its exit. Each leaves when its destructor runs.
Origins& gOrigins = *new Origins;
std::unordered_set<const QObject*>& gEndingLater = *new std::unordered_set<const QObject*>;

std::vector<QPointer<QObject>> gSenders;
std::vector<const QObject*> gInDestructor;

constexpr std::string_view cPlainContainers[] = {"QWidget", "QFrame", "QGroupBox", "QObject"};
constexpr const char* cWindowParts[] = {"QDockWidget", "QToolBar", "QMenuBar", "QStatusBar"};

bool isSameOrAbove(const QObject* above, const QObject* object) {
    while (object && object != above)
        object = object->parent();
    return object != nullptr;
}

/// The name of the object's nearest class of the toolkit itself.
std::string_view getToolkitClass(const QObject& object) {
    const QMetaObject* meta = object.metaObject();
    while (meta->className()[0] != 'Q' && meta->superClass())
        meta = meta->superClass();
    return meta->className();
}

bool isPlacedInWindow(const QObject& child, const QMainWindow& window) {
    return &child == window.centralWidget() || std::any_of(std::begin(cWindowParts), std::end(cWindowParts),
                                                           [&child](const char* name) { return child.inherits(name); });
}

/// Whether somebody other than the toolkit has put the child there.
bool isPlaced(const QObject& child, const QObject& parent) {
    const std::string_view container = getToolkitClass(parent);
    if (container == "QMainWindow")
        return isPlacedInWindow(child, static_cast<const QMainWindow&>(parent));
    if (container == "QDialog")
        return !child.inherits("QSizeGrip");
    return std::find(std::begin(cPlainContainers), std::end(cPlainContainers), container) != std::end(cPlainContainers);
}

/// Whether the object is in its destructor, as one below it is: it does not know any more the child that it deletes.
bool isDeletingChildren(const QObject& object) {
    return std::any_of(gInDestructor.begin(), gInDestructor.end(), [&object](const QObject* child) {
        while (child && child->parent() != &object)
            child = child->parent();
        return child && !object.children().contains(const_cast<QObject*>(child));
    });
}

bool isInUse(const QObject& object) {
    const auto isBelow = [&object](const QObject* user) { return user && isSameOrAbove(&object, user); };
    return (KyQtLifetime::isSending() && object.isWidgetType()) ||
           std::any_of(gSenders.begin(), gSenders.end(), isBelow) ||
           std::any_of(gInDestructor.begin(), gInDestructor.end(), isBelow);
}

void endLater(QObject& object) {
    gEndingLater.insert(&object);
    QObject::connect(&object, &QObject::destroyed, [ended = &object] { gEndingLater.erase(ended); });
    if (auto* widget = qobject_cast<QWidget*>(&object))
        widget->hide();
    object.deleteLater();
}

} // namespace

void KyQtLifetime::add(QObject& object, Origin origin) {
    if (object.thread() == QThread::currentThread() && gOrigins.try_emplace(&object, origin).second)
        QObject::connect(&object, &QObject::destroyed, [ended = &object] { gOrigins.erase(ended); });
}

bool KyQtLifetime::isPart(const QObject& object) {
    if (&object == QCoreApplication::instance())
        return true;
    const QObject* child = &object;
    while (!gOrigins.contains(child) && child->parent()) {
        if (!isPlaced(*child, *child->parent()))
            return true;
        child = child->parent();
    }
    return false;
}

bool KyQtLifetime::isInner(const QObject& object) {
    if (!isPart(object))
        return false;
    const QObject* above = object.parent();
    while (above && !gOrigins.contains(above))
        above = above->parent();
    return above && gOrigins[above] == eMade;
}

bool KyQtLifetime::isEnding(const QObject& object) {
    if (gEndingLater.empty() && gInDestructor.empty())
        return false;
    const auto ends = [](const QObject* above) {
        return gEndingLater.contains(above) ||
               std::find(gInDestructor.begin(), gInDestructor.end(), above) != gInDestructor.end() ||
               isDeletingChildren(*above);
    };
    const QObject* above = &object;
    while (above && !ends(above))
        above = above->parent();
    return above != nullptr;
}

bool KyQtLifetime::isSending() {
    return !gSenders.empty() || !gInDestructor.empty();
}

void KyQtLifetime::destroy(QObject& object) {
    if (object.thread() != QThread::currentThread())
        object.deleteLater();
    else if (isInUse(object))
        endLater(object);
    else
        delete &object;
}

KyQtLifetime::SenderScope::SenderScope(QObject& sender) {
    gSenders.emplace_back(&sender);
}

KyQtLifetime::SenderScope::~SenderScope() {
    gSenders.pop_back();
}

KyQtLifetime::EndingScope::EndingScope(const QObject& object) {
    gInDestructor.push_back(&object);
}

KyQtLifetime::EndingScope::~EndingScope() {
    gInDestructor.pop_back();
}

QObjectList KyQtLifetime::getLiving(const QObjectList& objects) {
    QObjectList living;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(living),
                 [](const QObject* object) { return !isEnding(*object); });
    return living;
}
