// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventTarget_p.h"

#include "KyQmlPass.h"
#include "KyQmlRenderControl.h"
#include "KyQtPass.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTouchEvent>

#include <algorithm>
#include <vector>

/// The friend by which Qt's own libraries send events as the system's; none of them exports it.
bool qt_sendSpontaneousEvent(QObject* receiver, QEvent* event);

bool qt_sendSpontaneousEvent(QObject* receiver, QEvent* event) {
    return QCoreApplication::sendSpontaneousEvent(receiver, event);
}

namespace {

/// Half of the smallest step that a picture of 8 bits has.
constexpr float cTransparent = 0.5f / 255.0f;

QPointF getCorner(const KyBaseGraphicsPass& pass, const KyGraphicsViewMultiPass& view) {
    const KyRect<int> area = pass.getAreaPixels(&view);
    return {static_cast<double>(area.origin.x), static_cast<double>(area.origin.y)};
}

bool isOpenPopup(const QGraphicsProxyWidget& proxy) {
    return proxy.isVisible() && proxy.widget() && proxy.widget()->windowType() == Qt::Popup;
}

/// Its upper left corner, when it is larger.
void moveInto(const QRectF& area, QGraphicsItem& item) {
    const QRectF rect = item.sceneBoundingRect();
    const double x = std::max(std::min(0.0, area.right() - rect.right()), area.left() - rect.left());
    const double y = std::max(std::min(0.0, area.bottom() - rect.bottom()), area.top() - rect.top());
    if (x != 0.0 || y != 0.0)
        item.moveBy(x, y);
}

/// Of the one in it that has the focus, in its coordinates.
QRectF findFocusRect(const QWidget& top) {
    const QWidget* focused = top.focusWidget() ? top.focusWidget() : &top;
    QRect rect = focused->rect();
    if (focused->testAttribute(Qt::WA_InputMethodEnabled))
        rect &= focused->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    return focused == &top ? rect : rect.translated(focused->mapTo(&top, QPoint()));
}

/// Whether one of an item's own handlers wants fingers; they may wait for what comes before they take one.
bool hasTouchHandler(const QQuickItem& item) {
    return std::ranges::any_of(item.children(), [](const QObject* child) {
        return child->inherits("QQuickPointerHandler") && !child->inherits("QQuickHoverHandler") &&
               !child->inherits("QQuickWheelHandler") && child->property("enabled").toBool();
    });
}

bool isTouchHandledAt(const QQuickItem& item, const QPointF& place) {
    if (!item.isVisible() || !item.isEnabled())
        return false;
    return (item.contains(item.mapFromScene(place)) && hasTouchHandler(item)) ||
           std::ranges::any_of(item.childItems(),
                               [&place](const QQuickItem* child) { return isTouchHandledAt(*child, place); });
}

/// Whether an item has a finger, as touch or as mouse, or may want it. The window itself takes all of them.
bool isTouchTaken(const QQuickWindow& window, const QTouchEvent& touch) {
    if (window.mouseGrabberItem())
        return true;
    const QObjectList points = window.findChildren<QObject*>();
    return std::ranges::any_of(points,
                               [](const QObject* point) {
                                   return point->inherits("QQuickEventPoint") &&
                                          point->property("exclusiveGrabber").value<QObject*>();
                               }) ||
           std::ranges::any_of(touch.touchPoints(), [&window](const QTouchEvent::TouchPoint& point) {
               return isTouchHandledAt(*window.contentItem(), point.pos());
           });
}

class QtTarget : public KyPassEventTarget {
public:
    explicit QtTarget(KyQtPass& pass)
        : mPass(pass) {}

    QObject* getReceiver() const override {
        QGraphicsView* const view = getGraphicsView();
        return view ? view->viewport() : nullptr;
    }
    QGraphicsView* getGraphicsView() const override {
        QGraphicsView* const view = mPass.editQGraphicsView();
        return view && mPass.editQGraphicsScene() ? view : nullptr;
    }
    bool isOpaque(const KyVec2f& pixel, const KyGraphicsViewMultiPass& view) const override {
        return mPass.getPixelColor(pixel, &view).alpha > cTransparent;
    }
    KyPassEventMap adapt(const KyGraphicsViewMultiPass& view) override {
        mPass.adaptQGraphicsView(&view);
        KyPassEventMap map;
        map.origin = getCorner(mPass, view);
        if (mPass.editQWidget())
            map.scale = {static_cast<double>(mPass.getViewScale().x), static_cast<double>(mPass.getViewScale().y)};
        if (const QGraphicsView* shown = getGraphicsView()) {
            shown->viewport()->setAttribute(Qt::WA_AcceptTouchEvents);
            map.desktopOrigin = shown->viewport()->mapToGlobal(QPoint());
        }
        return map;
    }

    void placePopups() override {
        const QGraphicsView* const view = getGraphicsView();
        if (!view || !mPass.editQWidget())
            return;
        for (const auto& proxy : findPopups())
            moveInto(view->sceneRect(), *proxy);
    }

    void activate() override {
        QGraphicsScene* const scene = mPass.editQGraphicsScene();
        if (!scene || scene == mActivated)
            return;
        mActivated = scene;
        QEvent event(QEvent::WindowActivate);
        QCoreApplication::sendEvent(scene, &event);
    }
    bool hasFocusItem() const override {
        const QGraphicsScene* scene = mPass.editQGraphicsScene();
        return scene && scene->focusItem();
    }
    bool isFocused() const override {
        const QGraphicsScene* scene = mPass.editQGraphicsScene();
        return scene && scene->hasFocus();
    }
    void setFocused(bool isFocused) override {
        QGraphicsScene* const scene = mPass.editQGraphicsScene();
        if (scene && scene->hasFocus() != isFocused) {
            QFocusEvent event(isFocused ? QEvent::FocusIn : QEvent::FocusOut, Qt::ActiveWindowFocusReason);
            QCoreApplication::sendEvent(scene, &event);
        }
        if (!isFocused)
            closePopups();
    }
    bool focusField() override {
        QWidget* const widget = mPass.editQWidget();
        const QPointer<QGraphicsProxyWidget> proxy = widget ? widget->graphicsProxyWidget() : nullptr;
        if (!proxy || !findPopups().empty())
            return hasFocusItem();
        if (!hasField(*widget))
            return false;
        // A scene that becomes active takes the closed list of a combo box for its active window, and an item may have
        // the focus without any of its widgets.
        mPass.editQGraphicsScene()->setActivePanel(proxy->panel());
        if (proxy && (!proxy->hasFocus() || !widget->focusWidget())) {
            proxy->clearFocus();
            proxy->setFocus(widget->focusWidget() ? Qt::ActiveWindowFocusReason : Qt::TabFocusReason);
        }
        return hasFocusItem();
    }
    QRectF getFocusRect() const override {
        const QGraphicsView* view = getGraphicsView();
        const QGraphicsItem* item = view ? mPass.editQGraphicsScene()->focusItem() : nullptr;
        if (!item)
            return {};
        const auto* proxy = qgraphicsitem_cast<const QGraphicsProxyWidget*>(item);
        const QRectF rect = proxy && proxy->widget() ? findFocusRect(*proxy->widget()) : item->boundingRect();
        return view->viewportTransform().mapRect(item->mapRectToScene(rect));
    }
    QObject* getInputMethodReceiver() const override { return getGraphicsView(); }

protected:
    /// A view says by its answer whether an item took the pointer, and its window is never asked; of all else the last
    /// one that is asked always answers that it did.
    bool wasUsed(bool result, const QEvent& event) const override {
        const bool isAnswered = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease ||
                                event.type() == QEvent::TouchBegin || event.type() == QEvent::InputMethod ||
                                event.type() == QEvent::ContextMenu;
        return result && (!isAnswered || event.isAccepted());
    }
    /// Without the focus an item of a widget keeps context menus to itself, and says that they were used.
    bool isAsked(const QEvent& event) const override {
        const QGraphicsView* view = getGraphicsView();
        if (event.type() != QEvent::ContextMenu || !view)
            return true;
        const QGraphicsItem* item = view->itemAt(static_cast<const QContextMenuEvent&>(event).pos());
        return !qgraphicsitem_cast<const QGraphicsProxyWidget*>(item) || item->hasFocus();
    }

private:
    static bool hasField(const QWidget& top) {
        const auto isField = [&top](const QWidget* widget) {
            return (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && widget->isVisibleTo(&top);
        };
        const QList<QWidget*> widgets = top.findChildren<QWidget*>();
        return isField(&top) || std::ranges::any_of(widgets, isField);
    }
    /// One that closes may end others.
    std::vector<QPointer<QGraphicsProxyWidget>> findPopups() const {
        std::vector<QPointer<QGraphicsProxyWidget>> found;
        if (const QGraphicsScene* scene = mPass.editQGraphicsScene())
            for (QGraphicsItem* item : scene->items())
                if (auto* proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(item); proxy && isOpenPopup(*proxy))
                    found.emplace_back(proxy);
        return found;
    }
    void closePopups() {
        for (const auto& proxy : findPopups())
            if (proxy && proxy->widget())
                proxy->widget()->close();
    }

    KyQtPass& mPass;
    QPointer<QGraphicsScene> mActivated;
};

class QmlTarget : public KyPassEventTarget {
public:
    explicit QmlTarget(KyQmlPass& pass)
        : mPass(pass) {}

    QObject* getReceiver() const override { return mPass.getQuickWindow(); }
    bool isOpaque(const KyVec2f& pixel, const KyGraphicsViewMultiPass& view) const override {
        return mPass.getPixelColor(pixel, &view).alpha > cTransparent;
    }
    KyPassEventMap adapt(const KyGraphicsViewMultiPass& view) override {
        KyPassEventMap map;
        map.origin = getCorner(mPass, view);
        const KyRect<int> area = mPass.getAreaPixels(&view);
        const QSize size = mPass.getFboSize();
        if (!size.isEmpty() && area.getWidth() > 0 && area.getHeight() > 0)
            map.scale = {double(size.width()) / area.getWidth(), double(size.height()) / area.getHeight()};
        if (const QQuickWindow* window = mPass.getQuickWindow())
            map.desktopOrigin = window->mapToGlobal(QPoint());
        return map;
    }

    void activate() override {
        if (mWantsFocus)
            setFocused(true);
    }
    bool hasFocusItem() const override {
        const QQuickWindow* window = mPass.getQuickWindow();
        return window && window->activeFocusItem() && window->activeFocusItem() != window->contentItem();
    }
    bool isFocused() const override { return mWantsFocus; }
    void setFocused(bool isFocused) override {
        mWantsFocus = isFocused;
        QQuickWindow* const window = mPass.getQuickWindow();
        KyQmlRenderControl* const control = mPass.getRenderControl();
        if (!window || !control || window->contentItem()->hasActiveFocus() == isFocused)
            return;
        // Items get the focus only in what is shown by the window that has it.
        QPoint offset;
        QWindow* const shown = control->renderWindow(&offset);
        control->setRenderWindow(QGuiApplication::focusWindow());
        QFocusEvent event(isFocused ? QEvent::FocusIn : QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(window, &event);
        if (control == mPass.getRenderControl())
            control->setRenderWindow(shown, offset);
    }
    bool focusField() override {
        if (hasFocusItem())
            return true;
        QQuickWindow* const window = mPass.getQuickWindow();
        QQuickItem* const content = window ? window->contentItem() : nullptr;
        QQuickItem* const first = content ? content->nextItemInFocusChain() : nullptr;
        if (first && first != content)
            first->forceActiveFocus(Qt::TabFocusReason);
        return hasFocusItem();
    }
    QObject* getInputMethodReceiver() const override {
        const QQuickWindow* window = mPass.getQuickWindow();
        return window ? window->activeFocusItem() : nullptr;
    }
    QRectF mapFromInputMethod(const QRectF& rect) const override {
        const QQuickWindow* window = mPass.getQuickWindow();
        const QQuickItem* item = window ? window->activeFocusItem() : nullptr;
        return item ? item->mapRectToScene(rect) : rect;
    }

    void cancelMouse() override {
        QQuickWindow* const window = mPass.getQuickWindow();
        if (QQuickItem* const item = window ? window->mouseGrabberItem() : nullptr)
            item->ungrabMouse();
    }
    bool takesTouchAsMouse() const override { return false; }
    bool knowsTouchCancel() const override { return true; }

protected:
    bool wasUsed(bool, const QEvent& event) const override {
        const QQuickWindow* window = mPass.getQuickWindow();
        if (event.type() == QEvent::TouchBegin)
            return window && isTouchTaken(*window, static_cast<const QTouchEvent&>(event));
        return event.isAccepted();
    }
    bool isAsked(const QEvent& event) const override {
        return event.type() != QEvent::ContextMenu && event.type() != QEvent::ToolTip;
    }

private:
    KyQmlPass& mPass;
    bool mWantsFocus = true;
};

} // namespace

std::unique_ptr<KyPassEventTarget> KyPassEventTarget::create(KyBaseGraphicsPass* pass) {
    if (KyQtPass* qtPass = KyQtPass::cast(pass))
        return std::make_unique<QtTarget>(*qtPass);
    if (KyQmlPass* qmlPass = KyQmlPass::cast(pass))
        return std::make_unique<QmlTarget>(*qmlPass);
    return nullptr;
}

bool KyPassEventTarget::deliver(QEvent& event) {
    QObject* const receiver = getReceiver();
    if (!receiver)
        return false;
    const bool canBeUsed = isAsked(event);
    const bool result = qt_sendSpontaneousEvent(receiver, &event);
    return canBeUsed && wasUsed(result, event);
}
