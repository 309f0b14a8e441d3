// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDrawing.h"

#include "KyHostErrors.h"
#include "KyHostKeys.h"
#include "KyHostPicture.h"
#include "KyHostWindow.h"

#include "Ky2DGroup.h"
#include "Ky2DSvgImporter.h"

#include <QApplication>
#include <QFileInfo>
#include <QGraphicsScene>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

/// Between drawings, of the width of what is there.
constexpr double cGap = 0.05;

/// In windows of 2D scenes, whoever made them, the keys that the window of the 3D view has, where they make sense.
class Keys : public QObject {
public:
    explicit Keys(KyHostDrawing::Listeners listeners)
        : mListeners(std::move(listeners)) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        auto* const view = dynamic_cast<Ky2DView*>(watched);
        const auto& pressed = static_cast<const QKeyEvent&>(*event);
        return view && view->isWindow() && KyHostKeys::isMeant(pressed) && press(*view, pressed.key());
    }

private:
    bool press(Ky2DView& view, int key) {
        if (key == Qt::Key_Escape)
            leave(view);
        else if (key == Qt::Key_F12)
            KyHostPicture::writeNext([&view](const std::string& path, std::string& error) {
                return KyHostPicture::save(KyHostDrawing::grab(view), path, error);
            });
        else
            return forward(view, key);
        return true;
    }

    void leave(Ky2DView& view) {
        KyHostWindow* const window = mListeners.findWindow();
        if (!mListeners.cancel() && !(window && window->hideHelp()))
            view.close();
    }

    /// Letters are for an item that has the focus first.
    bool forward(Ky2DView& view, int key) {
        KyHostWindow* const window = mListeners.findWindow();
        const bool isTaken = key == Qt::Key_P && view.scene() && view.scene()->focusItem();
        if (!window || isTaken)
            return false;
        if (key == Qt::Key_F1)
            window->toggleHelp(*view.windowHandle());
        else if (key == Qt::Key_P || key == Qt::Key_F9)
            KyHostKeys::press(*window, key);
        else
            return false;
        return true;
    }

    const KyHostDrawing::Listeners mListeners;
};

void end(const KyObjectReference& object) {
    if (object)
        object.get()->destroy();
}

/// What the importer left out, once by name.
void reportMissing(const std::string& path, const Ky2DSvgImporter& importer) {
    std::string names;
    for (unsigned i = 0; i < importer.getNbReports(); ++i)
        names += (i ? ", " : "") + importer.getReport(i);
    if (!names.empty())
        KyHostErrors::write("'" + path + "' is shown without: " + names);
}

} // namespace

KyHostDrawing::KyHostDrawing(QSize size)
    : mScene(Ky2DScene::create(nullptr, true)) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    auto* const view = new Ky2DView;
    mView = KyObjectReference(view);
    view->setCaption("kyhost");
    view->resize(size);
    view->setScene(getScene());
}

KyHostDrawing::~KyHostDrawing() {
    end(mView);
    end(mScene);
}

bool KyHostDrawing::addDocument(const std::string& path, std::string& error) {
    Ky2DScene* const scene = getScene();
    Ky2DSvgImporter importer;
    Ky2DGroup* const document = scene ? importer.importFile(path) : nullptr;
    if (!document) {
        error = scene ? "'" + path + "': " + importer.getError() : "there is no drawing for '" + path + "' any more";
        return false;
    }
    reportMissing(path, importer);
    const KyRectd before = scene->getBound();
    if (!before.isNull()) {
        const KyVec2d right(before.getMax().x + cGap * before.getWidth(), before.getMin().y);
        document->setTranslation(right - document->getBound().getMin());
    }
    scene->insertChild(document, Ky2DNode::cAppend);
    if (Ky2DView* const view = getView()) {
        view->setCaption(QFileInfo(QString::fromLocal8Bit(path.c_str())).fileName().toStdString() + " - kyhost");
        view->show();
        view->fit();
    }
    return true;
}

Ky2DScene* KyHostDrawing::getScene() const {
    return Ky2DScene::cast(mScene.get());
}

Ky2DView* KyHostDrawing::getView() const {
    return Ky2DView::cast(mView.get());
}

std::vector<Ky2DView*> KyHostDrawing::getViews() {
    std::vector<Ky2DView*> views;
    for (unsigned i = 0; i < Ky2DView::getNbViews(); ++i)
        views.push_back(Ky2DView::getView(i));
    return views;
}

Ky2DView* KyHostDrawing::findShownView() {
    const std::vector<Ky2DView*> views = getViews();
    const auto shown = std::find_if(views.rbegin(), views.rend(),
                                    [](const Ky2DView* view) { return view->isWindow() && view->isVisible(); });
    return shown == views.rend() ? nullptr : *shown;
}

QImage KyHostDrawing::grab(Ky2DView& view) {
    const QSizeF size = QSizeF(view.size()) * view.devicePixelRatioF();
    return view.toImage(qRound(size.width()), qRound(size.height()));
}

std::unique_ptr<QObject> KyHostDrawing::makeKeys(Listeners listeners) {
    auto keys = std::make_unique<Keys>(std::move(listeners));
    QCoreApplication::instance()->installEventFilter(keys.get());
    return keys;
}
