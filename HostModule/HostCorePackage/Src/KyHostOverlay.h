// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGraphicsViewMultiPass.h"
#include "KyHolder.h"

#include <QSize>

#include <functional>
#include <memory>

class KyHostStage;
class QPainter;

/// A small picture over what the stage shows, painted with Qt: off screen too, and whatever scene comes. It stands in
/// the canvas beside the scripts' view, which knows nothing of it, and takes no events.
class KyHostOverlay {
public:
    /// Where it stands, some pixels from the edge.
    enum Place { eTopLeft, eBottom, eNbPlaces };

    using Paint = std::function<void(QPainter& painter)>;

    /// The size is in device-independent pixels; `paint` fills a transparent picture of that size.
    KyHostOverlay(KyHostStage& stage, Place place, QSize size, Paint paint);
    ~KyHostOverlay();
    KyHostOverlay(const KyHostOverlay&) = delete;
    KyHostOverlay& operator=(const KyHostOverlay&) = delete;

    bool isShown() const { return mView->isEnabled(); }
    /// Hidden at first.
    void setShown(bool isShown);
    /// Goes to its place over what the stage shows now, which may be another scene or have another size.
    void follow();
    /// As follow(), and is painted anew when the stage is drawn next.
    void update();

    /// Called before and after what the stage shows is drawn, with the context current; the overlay itself comes later.
    void setProbes(std::function<void()> before, std::function<void()> after);

private:
    class Picture;
    class Probe;

    void place();
    void leave();

    KyHostStage& mStage;
    const Place mPlace;
    const QSize mSize;
    KyHolder<KyGraphicsViewMultiPass> mView;
    KyHolder<Picture> mPicture;
    /// Behind the scene; null without probes.
    KyHolder<KyGraphicsViewMultiPass> mRear;
};
