// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQMouseEventProvider.h"

#include "KyManipulator.h"
#include "KyQtEventConversion_p.h"
#include "KyQtEventTable_p.h"

#include <QPointer>
#include <QTouchEvent>
#include <QWheelEvent>

#include <utility>

/// The handlers by the number of Qt's event type.
struct KyQMouseEventProvider::Dispatch {
    using Handler = void (*)(KyQMouseEventProvider& provider, QEvent* event);

    template <class Event, void (KyQMouseEventProvider::*Method)(Event*)>
    static void callMouse(KyQMouseEventProvider& provider, QEvent* event) {
        if (!provider.mIsTouchUpdated)
            (provider.*Method)(static_cast<Event*>(event));
    }
    static void callTouch(KyQMouseEventProvider& provider, QEvent* event) {
        provider.mIsTouching = event->type() != QEvent::TouchEnd;
        provider.mIsTouchUpdated = provider.mIsTouching && (provider.mIsTouchUpdated || isUpdate(*event));
        provider.touch(static_cast<QTouchEvent*>(event));
    }
    static void callTouchCancel(KyQMouseEventProvider& provider, QEvent*) {
        provider.mIsTouching = false;
        provider.mIsTouchUpdated = false;
    }
    static bool isUpdate(const QEvent& event) { return event.type() == QEvent::TouchUpdate; }

    static constexpr std::pair<QEvent::Type, Handler> cRows[] = {
        {QEvent::MouseButtonPress, &callMouse<QMouseEvent, &KyQMouseEventProvider::mousePressed>},
        {QEvent::MouseButtonRelease, &callMouse<QMouseEvent, &KyQMouseEventProvider::mouseReleased>},
        {QEvent::MouseButtonDblClick, &callMouse<QMouseEvent, &KyQMouseEventProvider::mouseDoubleClicked>},
        {QEvent::MouseMove, &callMouse<QMouseEvent, &KyQMouseEventProvider::mouseMove>},
        {QEvent::Wheel, &callMouse<QWheelEvent, &KyQMouseEventProvider::wheel>},
        {QEvent::TouchBegin, &callTouch},
        {QEvent::TouchUpdate, &callTouch},
        {QEvent::TouchEnd, &callTouch},
        {QEvent::TouchCancel, &callTouchCancel},
    };

    static Handler find(QEvent::Type type) {
        static constexpr KyQtEventTable<Handler> cHandlers(cRows);
        return cHandlers.find(type);
    }
};

KyQMouseEventProvider::KyQMouseEventProvider(QObject* parent)
    : QObject(parent) {}

KyQMouseEventProvider::~KyQMouseEventProvider() = default;

KyManipulator* KyQMouseEventProvider::getManipulator() const {
    KyObject* manipulator = mManipulator.get();
    return manipulator && !manipulator->isEnding() ? static_cast<KyManipulator*>(manipulator) : nullptr;
}

void KyQMouseEventProvider::setManipulator(KyManipulator* manipulator) {
    mManipulator = KyObjectReference(manipulator);
}

bool KyQMouseEventProvider::eventFilter(QObject* watched, QEvent* event) {
    const bool isConsumed = QObject::eventFilter(watched, event);
    const Dispatch::Handler handler = Dispatch::find(event->type());
    if (!handler)
        return isConsumed;
    // The manipulator may delete what is watched, and this: Qt must not go on with the one, we not with the other.
    const QPointer<QObject> guard(watched);
    handler(*this, event);
    const bool isDeleted = watched && !guard;
    // Qt would look for the parent of what is gone.
    if (isDeleted)
        event->accept();
    return isConsumed || isDeleted;
}

void KyQMouseEventProvider::mousePressed(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMousePressed);
}

void KyQMouseEventProvider::mouseReleased(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMouseReleased);
}

void KyQMouseEventProvider::mouseDoubleClicked(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMouseDoubleClicked);
}

void KyQMouseEventProvider::mouseMove(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMouseMoved);
}

void KyQMouseEventProvider::sendMouse(QMouseEvent& event, KyInputEvent::Type type) {
    KyInputEvent input;
    input.setType(type);
    convertMouseEvent(&event, input);
    if (mIsTouching)
        input.setRepeatsTouch(KyQtEventConversion::isSynthesized(event));
    send(input, &event);
}

void KyQMouseEventProvider::wheel(QWheelEvent* event) {
    KyInputEvent input;
    convertWheelEvent(event, input);
    send(input, event);
}

void KyQMouseEventProvider::touch(QTouchEvent* event) {
    KyInputEvent input;
    KyQtEventConversion::convertTouch(*event, input, {});
    send(input, event);
}

void KyQMouseEventProvider::send(KyInputEvent& input, QEvent* event) {
    input.setNativeEvent(event);
    if (KyManipulator* manipulator = getManipulator())
        input.setInternalEventReturn(manipulator->setInputEvent(input));
}

void KyQMouseEventProvider::convertMouseEvent(QMouseEvent* event, KyInputEvent& input) {
    KyQtEventConversion::convertMouse(*event, input, {});
}

void KyQMouseEventProvider::convertWheelEvent(QWheelEvent* event, KyInputEvent& input) {
    input.setNativeEvent(static_cast<QEvent*>(event));
    KyQtEventConversion::convertWheel(*event, input, {});
}
