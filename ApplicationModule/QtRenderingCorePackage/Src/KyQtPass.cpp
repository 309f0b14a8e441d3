// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPass.h"

#include "KyPassDelivery_p.h"
#include "KyQtPassPainting_p.h"

#include "Ky2DScene.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>

#include <algorithm>
#include <utility>

namespace {

std::vector<KyQtPass*>& editPasses() {
    // Never destroyed: passes may end after the statics.
    static auto* const passes = new std::vector<KyQtPass*>;
    return *passes;
}

/// Of an item's data.
constexpr int cRetired = 0x4b79;

/// Ends a 2D scene when Qt's event loop is back: one of its items may be handling an event.
class Retired : public QObject {
public:
    explicit Retired(Ky2DScene* scene)
        : mScene(scene) {
        deleteLater();
    }
    ~Retired() override {
        if (KyObject* scene = mScene.get())
            scene->destroy();
    }

private:
    KyObjectReference mScene;
};

/// The item would end its widget with it, and the widget would come up as a window if it was not hidden.
void detachWidget(QGraphicsProxyWidget& proxy) {
    proxy.hide();
    proxy.setWidget(nullptr);
}

void retire(QGraphicsProxyWidget* proxy) {
    if (!proxy)
        return;
    proxy->hide();
    proxy->setData(cRetired, true);
    if (proxy->scene())
        proxy->scene()->removeItem(proxy);
    // It asks its widget after it has given it an event.
    KyPassDelivery::runAfter([item = QPointer(proxy)] {
        if (!item)
            return;
        detachWidget(*item);
        item->deleteLater();
    });
}

/// From an item that waits for its end.
void takeBack(QWidget& widget) {
    QGraphicsProxyWidget* const proxy = widget.graphicsProxyWidget();
    if (proxy && proxy->data(cRetired).toBool())
        detachWidget(*proxy);
}

/// A view asks its scene after it has given it an event, which may have taken the scene away.
QGraphicsScene* getEmptyScene(QGraphicsView& view) {
    auto* const scene = view.findChild<QGraphicsScene*>(QString(), Qt::FindDirectChildrenOnly);
    return scene ? scene : new QGraphicsScene(&view);
}

QGraphicsView* makeView() {
    auto* view = new QGraphicsView;
    view->setFrameShape(QFrame::NoFrame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setTransformationAnchor(QGraphicsView::NoAnchor);
    view->setResizeAnchor(QGraphicsView::NoAnchor);
    view->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Nobody sees it.
    view->setViewportUpdateMode(QGraphicsView::NoViewportUpdate);
    return view;
}

} // namespace

KyQtPass::KyQtPass()
    : mGraphicsView(makeView())
    , mPainting(std::make_unique<Painting>()) {
    // Widgets cannot end after the application; each one forgets these routines when it ends.
    qRemovePostRoutine(&KyQtPass::closeAll);
    qAddPostRoutine(&KyQtPass::closeAll);
    editPasses().push_back(this);
    initializeDataForReadPixelOperation();
    setFrameBuffer(nullptr);
    set2DScene(Ky2DScene::create(), true);
}

KyQtPass::~KyQtPass() {
    notifyEnd();
    std::erase(editPasses(), this);
    mSlots.disconnectAll();
    close();
    finalizeDataForReadPixelOperation();
}

void KyQtPass::closeAll() {
    for (KyQtPass* pass : std::vector(editPasses()))
        pass->close();
}

void KyQtPass::close() {
    mPainting->target.reset();
    if (mWidget)
        disconnect(mWidget, nullptr, this, nullptr);
    if (mProxy)
        detachWidget(*mProxy);
    delete mProxy.data();
    if (mOwnsWidget)
        delete mWidget.data();
    mWidget = nullptr;
    delete mGraphicsView.data();
    attachQGraphicsScene(nullptr);
    KyObject* const scene = m2DScene.get();
    m2DScene = KyObjectReference();
    mSlots.disconnectAll();
    if (scene && std::exchange(mOwns2DScene, false))
        scene->destroy();
}

KyQtPass* KyQtPass::clone() const {
    KyQtPass* copy = create();
    if (!copy)
        return nullptr;
    copy->setName(getName());
    copy->setPriority(getPriority());
    copy->setEnabled(isEnabled());
    copy->setEventHandler(getEventHandler());
    copy->setArea(getArea());
    copy->mViewPosition = mViewPosition;
    copy->mViewRectSize = mViewRectSize;
    copy->mViewScale = mViewScale;
    copy->mIsKeepAspectRatio = mIsKeepAspectRatio;
    copy->mIsOverrideCacheMode = mIsOverrideCacheMode;
    copy->mPaintMethod = mPaintMethod;
    const Ky2DScene* scene = edit2DScene();
    copy->set2DScene(scene ? scene->clone() : nullptr, true);
    return copy;
}

QWidget* KyQtPass::editQWidget() const {
    // Others may take it out of the item.
    return mProxy && mProxy->widget() == mWidget ? mWidget.data() : nullptr;
}

QGraphicsView* KyQtPass::editQGraphicsView() const {
    return mGraphicsView;
}

QGraphicsScene* KyQtPass::editQGraphicsScene() const {
    return mGraphicsScene;
}

Ky2DScene* KyQtPass::edit2DScene() const {
    return static_cast<Ky2DScene*>(m2DScene.get());
}

void KyQtPass::set2DScene(Ky2DScene* scene, bool own) {
    Ky2DScene* const former = edit2DScene();
    if (scene == former && (scene || !mGraphicsScene))
        return;
    const bool endsFormer = former && std::exchange(mOwns2DScene, false);
    // What listens may end the pass.
    const KyObjectReference self(this);
    mSlots.disconnectAll();
    m2DScene = KyObjectReference(scene);
    mOwns2DScene = scene && own;
    attachQGraphicsScene(scene ? scene->getQGraphicsScene() : nullptr);
    if (scene) {
        scene->changesPendingSignal().connect(mSlots, [this](Ky2DScene*) { setNeedUpdate(true); });
        scene->modifiedSignal().connect(mSlots,
                                        [this](KyObject*, KyObjectModificationType kind, const std::string&, int) {
                                            if (kind == eObjectEnding)
                                                leave2DScene();
                                        });
    }
    if (endsFormer)
        new Retired(former);
    setNeedUpdate(true);
    if (self.get() && isWatched())
        notifyModified("Scene2D");
}

void KyQtPass::leave2DScene() {
    mOwns2DScene = false;
    set2DScene(nullptr, false);
}

void KyQtPass::connectQGraphicsScene(QGraphicsScene* scene) {
    if (scene == mGraphicsScene)
        return;
    attachQGraphicsScene(scene);
    setNeedUpdate(true);
}

void KyQtPass::attachQGraphicsScene(QGraphicsScene* scene) {
    if (scene == mGraphicsScene)
        return;
    if (mGraphicsScene)
        disconnect(mGraphicsScene, nullptr, this, nullptr);
    // Before the scene that it is in can end, and the widget with both.
    if (mProxy && mProxy->scene())
        mProxy->scene()->removeItem(mProxy);
    mGraphicsScene = scene;
    if (mGraphicsView)
        mGraphicsView->setScene(scene ? scene : getEmptyScene(*mGraphicsView));
    if (!scene)
        return;
    if (mProxy)
        scene->addItem(mProxy);
    connect(scene, SIGNAL(changed(const QList<QRectF>&)), this, SLOT(onQGraphicsSceneChanged(const QList<QRectF>&)));
    connect(scene, &QObject::destroyed, this, [this] {
        if (mGraphicsView)
            mGraphicsView->setScene(getEmptyScene(*mGraphicsView));
        setNeedUpdate(true);
    });
}

void KyQtPass::onQGraphicsSceneChanged(const QList<QRectF>& regions) {
    if (!regions.isEmpty())
        setNeedUpdate(true);
}

QGraphicsProxyWidget* KyQtPass::setQWidget(QWidget* widget, bool own) {
    if (!widget) {
        leaveWidget();
        return nullptr;
    }
    if (widget == editQWidget())
        return mProxy;
    takeBack(*widget);
    if (!mGraphicsScene || widget->parent() || widget->graphicsProxyWidget())
        return nullptr;
    if (widget == mWidget)
        mOwnsWidget = false;
    dropWidget();
    mProxy = mGraphicsScene->addWidget(widget);
    // The widget's own attribute is not looked at.
    mProxy->setAcceptTouchEvents(true);
    mWidget = widget;
    mOwnsWidget = own;
    connect(widget, &QObject::destroyed, this, [this] { onWidgetDestroyed(); });
    QGraphicsProxyWidget* const proxy = mProxy;
    const KyObjectReference self(this);
    setNeedUpdate(true);
    // What listens may have set another one.
    return self.get() && mWidget == widget ? proxy : nullptr;
}

bool KyQtPass::dropWidget() {
    QWidget* const widget = mWidget;
    if (!widget)
        return false;
    disconnect(widget, nullptr, this, nullptr);
    mWidget = nullptr;
    retire(mProxy.data());
    mProxy = nullptr;
    if (std::exchange(mOwnsWidget, false))
        widget->deleteLater();
    return true;
}

void KyQtPass::leaveWidget() {
    if (dropWidget())
        onWidgetDestroyed();
}

void KyQtPass::onWidgetDestroyed() {
    mOwnsWidget = false;
    // Grows with the items again.
    if (mGraphicsScene)
        mGraphicsScene->setSceneRect(QRectF());
    setNeedUpdate(true);
}

template <class T>
void KyQtPass::change(T& member, const T& value, std::string_view attribute) {
    if (value == member)
        return;
    member = value;
    // What listens may end the pass.
    const KyObjectReference self(this);
    setNeedUpdate(true);
    if (self.get() && isWatched())
        notifyModified(attribute);
}

void KyQtPass::setViewPosition(const KyVec2f& position) {
    if (position.isFinite())
        change(mViewPosition, position, "ViewPosition");
}

void KyQtPass::setViewRectSize(const KyVec2f& size) {
    if (size.isFinite())
        change(mViewRectSize, size, "ViewRectSize");
}

void KyQtPass::setViewScale(const KyVec2f& scale) {
    if (scale.isFinite())
        change(mViewScale, scale, "ViewScale");
}

void KyQtPass::setKeepAspectRatioEnabled(bool isOn) {
    change(mIsKeepAspectRatio, isOn, "KeepAspectRatio");
}

void KyQtPass::setOverrideCacheModeInWidgetMode(bool isOn) {
    change(mIsOverrideCacheMode, isOn, "OverrideCacheMode");
}

bool KyQtPass::setPaintMethod(PaintMethod method) {
    if (method < eAutomatic || method >= eNbPaintMethods)
        return false;
    mPainting->isTargetStale |= method != mPaintMethod;
    change(mPaintMethod, method, "PaintMethod");
    return true;
}
