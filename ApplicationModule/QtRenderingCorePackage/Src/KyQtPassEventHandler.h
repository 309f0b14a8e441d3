// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyPassEventHandler.h"

#include <memory>

/// Makes what a Qt pass or a QML pass shows interactive: it gives the events of the 3D view to the widgets, 2D items
/// and QML items under the pointer. A pass or somebody else holds a reference; it may serve several passes. Passes,
/// views, widgets and the handler itself may end while they handle an event. GUI thread.
///
/// | event | reaches |
/// |---|---|
/// | press, double click, wheel, touch's begin, context menu, tool tip, move | what is under the pointer |
/// | mouse after a press that was used, touch after its begin | the one that used it, wherever it goes |
/// | keys, input methods, context menu by key | what has the keyboard focus in the pass |
///
/// "Under the pointer" asks the picture: where the pass is not there or fully transparent, nothing is reached and the
/// event goes on to the passes behind. So does an event that nobody used, such as a press on a label; but what is
/// behind something is neither hovered nor shows tool tips. A press that the pass did not use or that went to another
/// view of the canvas closes its popups and takes the keyboard focus from it, which a later click on it gives back; so
/// does the window when it loses the focus, until it has it again. A press or touch whose end is lost or canceled is no
/// click.
///
/// A widget that takes no touches gets the first finger as the left mouse button.
///
/// Tool tips are drawn in the picture, by themselves when the pointer rests; QML items show their own.
///
/// ```
/// KyHolder<KyQtPassEventHandler> handler(KyQtPassEventHandler::create());
/// pass->setEventHandler(handler.get());
/// ```
class KYAPPLICATION_EXPORT KyQtPassEventHandler : public KyPassEventHandler {
public:
    static const KyType* getType();
    static KyQtPassEventHandler* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static KyQtPassEventHandler* create() { return new KyQtPassEventHandler; }

    KyQtPassEventHandler();
    ~KyQtPassEventHandler() override;
    KyQtPassEventHandler(const KyQtPassEventHandler&) = delete;
    KyQtPassEventHandler& operator=(const KyQtPassEventHandler&) = delete;

    /// Whether input methods may write into the pass: dead keys, composed letters, on-screen keyboards. Off at the
    /// start: the system's input method then leaves the keys of the 3D view alone.
    bool isInputMethodEnabled() const { return mIsInputMethodEnabled; }
    void setInputMethodEnabled(bool isEnabled);

    using KyPassEventHandler::handleEvent;
    /// True when the event was used, which its internal return holds as well; false for passes of other kinds. The
    /// event's position, in pixels of the canvas, counts, not that of the native event, so that whoever shows a pass
    /// elsewhere can send events with the position in the view moved accordingly.
    bool handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view, KyBaseGraphicsPass* pass) override;

    /// True from a press or a touch that the pass used to the end of it: the pass gets all of that, wherever the
    /// pointer is.
    bool isGrabbing(const KyBaseGraphicsPass* pass) const;
    /// Whether keys reach something in the pass.
    bool hasKeyboardFocus(const KyBaseGraphicsPass* pass) const;
    /// Gives keys to the pass, as a click on it would: to what had them before, else to its first field. False, and
    /// nothing changed, when it has none. The view is the one that shows it.
    bool takeKeyboardFocus(KyBaseGraphicsPass* pass, KyGraphicsViewMultiPass* view);
    /// Takes keys from the pass that a click, a touch or takeKeyboardFocus() gave them last, whichever handler serves
    /// it; false when none has them.
    static bool dropKeyboardFocus();
    /// The pointer is elsewhere now: ends hovering and the tool tip. For those that send events by themselves; a
    /// canvas tells by its signal.
    void leave(KyBaseGraphicsPass* pass);

private:
    class Sessions;

    std::unique_ptr<Sessions> mSessions;
    bool mIsInputMethodEnabled = false;

    static const KyType* msType;
};
