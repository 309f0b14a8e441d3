// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLifetime_p.h"

#include <QPointer>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace {

/// As a rule empty. Kept small: each leaves when its destructor ends.
std::vector<const QObject*> gEnding;
std::vector<QPointer<QObject>> gSenders;

bool isSameOrAbove(const QObject* above, const QObject* object) {
    while (object && object != above)
        object = object->parent();
    return object != nullptr;
}

bool isSending(const QObject& object) {
    return std::any_of(gSenders.begin(), gSenders.end(),
                       [&object](const auto& sender) { return sender && isSameOrAbove(&object, sender); });
}

void endLater(QObject& object) {
    gEnding.push_back(&object);
    QObject::connect(&object, &QObject::destroyed, [ended = &object] { std::erase(gEnding, ended); });
    if (auto* widget = qobject_cast<QWidget*>(&object))
        widget->hide();
    object.deleteLater();
}

} // namespace

bool KyQtLifetime::isEnding(const QObject& object) {
    return std::any_of(gEnding.begin(), gEnding.end(),
                       [&object](const QObject* ending) { return isSameOrAbove(ending, &object); });
}

void KyQtLifetime::destroy(QObject& object) {
    if (object.thread() != QThread::currentThread())
        object.deleteLater();
    else if (isSending(object))
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

KyQtLifetime::EndingScope::EndingScope(const QObject& object)
    : mObject(&object) {
    gEnding.push_back(mObject);
}

KyQtLifetime::EndingScope::~EndingScope() {
    std::erase(gEnding, mObject);
}

/// All have such names.
bool KyQtLifetime::isPart(const QObject& object) {
    return object.objectName().startsWith(QLatin1String("qt_"));
}

QObjectList KyQtLifetime::getLiving(const QObjectList& objects) {
    QObjectList living;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(living),
                 [](const QObject* object) { return !isEnding(*object); });
    return living;
}
