// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostOverlay.h"

#include "KyHostStage.h"

#include "KyFrameBuffer.h"
#include "KyScreenPass.h"
#include "KyTexture.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Device-independent pixels to the edges of the view.
constexpr int cMargin = 14;
/// The picture is made, and what lies below probed, before the pass that shows it.
constexpr float cPicturePriority = -1.0f;
constexpr float cProbePriority = -2.0f;

double getPixelRatio() {
    return qGuiApp ? qGuiApp->devicePixelRatio() : 1.0;
}

KyHolder<KyGraphicsViewMultiPass> makeView() {
    KyHolder<KyGraphicsViewMultiPass> view(KyGraphicsViewMultiPass::create());
    view->setClearOrder(KyGraphicsViewMultiPass::eClearNothing);
    return view;
}

KyHolder<KyScreenPass> makeScreenPass() {
    KyHolder<KyScreenPass> screen(KyScreenPass::create());
    screen->setVerticalFlip(true);
    screen->setSplitStereoTexCoord(false);
    screen->editShader()->setBlendFunction(
        {KyBlendFactor::eOne, KyBlendFactor::eOneMinusSrcAlpha, KyBlendEquation::eAdd});
    return screen;
}

} // namespace

/// Keeps its picture in the texture that the screen pass shows.
class KyHostOverlay::Picture : public KyBaseGraphicsPass {
public:
    Picture(QSize size, Paint paint)
        : mSize(size)
        , mPaint(std::move(paint)) {
        setPriority(cPicturePriority);
        setFrameBuffer(KyFrameBuffer::create());
    }

    void repaint() {
        mIsStale = true;
        touch();
    }

    void preRender(KyRendererContext&) override {
        KyTexture& texture = *getFrameBuffer()->getColorTexture();
        if (!std::exchange(mIsStale, false) && texture.hasPixels())
            return;
        const double ratio = getPixelRatio();
        QImage image(mSize * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        mPaint(painter);
        painter.end();
        texture.setPixels(reinterpret_cast<const std::uint32_t*>(image.constBits()), image.width(), image.height());
    }

private:
    const QSize mSize;
    const Paint mPaint;
    bool mIsStale = true;
};

class KyHostOverlay::Probe : public KyBaseGraphicsPass {
public:
    explicit Probe(std::function<void()> probe)
        : mProbe(std::move(probe)) {
        setPriority(cProbePriority);
    }

    void preRender(KyRendererContext&) override { mProbe(); }

private:
    const std::function<void()> mProbe;
};

KyHostOverlay::KyHostOverlay(KyHostStage& stage, Place place, QSize size, Paint paint)
    : mStage(stage)
    , mPlace(place)
    , mSize(size)
    , mView(makeView())
    , mPicture(new Picture(size, std::move(paint))) {
    mView->setMainPass(mPicture.get());
    mView->addPass(makeScreenPass().get());
    mView->setEnabled(false);
}

KyHostOverlay::~KyHostOverlay() {
    leave();
}

void KyHostOverlay::setProbes(std::function<void()> before, std::function<void()> after) {
    mRear = makeView();
    mRear->addPass(KyHolder<Probe>(new Probe(std::move(before))).get());
    mView->addPass(KyHolder<Probe>(new Probe(std::move(after))).get());
}

void KyHostOverlay::setShown(bool isShown) {
    mView->setEnabled(isShown);
    if (isShown)
        update();
    else
        leave();
}

void KyHostOverlay::update() {
    follow();
    mPicture->repaint();
}

void KyHostOverlay::follow() {
    KyCanvas& canvas = mStage.getCanvas();
    if (mView->getCanvas() != &canvas) {
        canvas.insertView(mView.get());
        if (mRear)
            canvas.insertView(mRear.get(), 0);
    }
    place();
}

void KyHostOverlay::leave() {
    for (KyGraphicsViewMultiPass* const view : {mView.get(), mRear.get()})
        if (view && view->getCanvas())
            view->getCanvas()->removeView(view);
}

void KyHostOverlay::place() {
    const KyCanvas& canvas = mStage.getCanvas();
    const double ratio = getPixelRatio();
    const QSize size = mSize * ratio;
    const double margin = std::round(cMargin * ratio);
    const double width = std::max(canvas.getWidth(), 1), height = std::max(canvas.getHeight(), 1);
    const double x = mPlace == eTopLeft ? margin : std::floor((width - size.width()) / 2.0);
    const double y = mPlace == eTopLeft ? margin : height - size.height() - 2.0 * margin;
    mView->setArea({x / width, y / height, size.width() / width, size.height() / height});
}
