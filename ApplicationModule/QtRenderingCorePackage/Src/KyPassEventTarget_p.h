// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassEventMaker_p.h"

#include "KyVec2.h"

#include <QRectF>

#include <memory>

class KyBaseGraphicsPass;
class KyGraphicsViewMultiPass;
class QGraphicsView;
class QObject;

/// What gets the events of a pass: the viewport of a Qt pass's graphics view, the quick window of a QML pass. It must
/// not be used any more once the pass is gone; the rest may be missing or end at any time.
class KyPassEventTarget {
public:
    /// Null for passes of other kinds.
    static std::unique_ptr<KyPassEventTarget> create(KyBaseGraphicsPass* pass);

    virtual ~KyPassEventTarget() = default;

    /// Null when there is none now.
    virtual QObject* getReceiver() const = 0;
    /// The view whose items have tool tips; null when there is none.
    virtual QGraphicsView* getGraphicsView() const { return nullptr; }
    /// Whether the picture can be seen at a pixel of the pass's area.
    virtual bool isOpaque(const KyVec2f& pixel, const KyGraphicsViewMultiPass& view) const = 0;
    /// Prepares the receiver for events; its coordinates.
    virtual KyPassEventMap adapt(const KyGraphicsViewMultiPass& view) = 0;

    /// Moves popups that stand out of the picture into it.
    virtual void placePopups() {}
    /// Tells the receiver that it is in use.
    virtual void activate() = 0;
    /// Whether keys reach something.
    virtual bool hasFocusItem() const = 0;
    virtual bool isFocused() const = 0;
    /// Without the focus it has no focus item and no popups; with it again it has the former focus item.
    virtual void setFocused(bool isFocused) = 0;
    /// Gives the focus to the first field that wants it, unless one has it; false when there is none.
    virtual bool focusField() = 0;
    /// Where keys go, in coordinates of the receiver: the cursor, or all of the item that has the focus.
    virtual QRectF getFocusRect() const { return {}; }
    /// Takes the mouse from who has it, where releases alone would still be a click.
    virtual void cancelMouse() {}
    /// Whether the receiver leaves it to others to make a mouse of a touch that nobody uses.
    virtual bool takesTouchAsMouse() const { return true; }
    virtual bool knowsTouchCancel() const { return false; }
    /// What answers input methods; null when there is none.
    virtual QObject* getInputMethodReceiver() const = 0;
    /// A rectangle of the one that answers input methods in coordinates of the receiver.
    virtual QRectF mapFromInputMethod(const QRectF& rect) const { return rect; }

    /// Gives the event to the receiver, as the system would. True when it was used.
    bool deliver(QEvent& event);

protected:
    virtual bool wasUsed(bool result, const QEvent& event) const = 0;
    /// Whether somebody is there who can say that he used the event.
    virtual bool isAsked(const QEvent&) const { return true; }
};
