// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyGraphicsViewMultiPass.h"
#include "KyHolder.h"

#include "KyEventHandler.h"
#include "KyObject.h"
#include "KyReferenceCounted.h"
#include "KySignal.h"

#include <cstdint>
#include <vector>

/// The whole of a window, or of an offscreen picture: views, the rearmost first. Reference counted; it holds references
/// of its views. The host tells its size in device pixels, asks needsRedraw() and renders.
///
/// ```
/// canvas->setSize(width, height);
/// if (canvas->needsRedraw()) {
///     KyRendererContext context(&device);
///     canvas->render(context);
/// }
/// ```
class KYSCENE_EXPORT KyCanvas : public KyObject, public KyReferenceCounted {
public:
    /// Sent with the view that was taken out.
    using ViewRemovedSignal = KySignal<KyGraphicsViewMultiPass*>;

    static const KyType* getType();
    static KyCanvas* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyCanvas() = default;
    ~KyCanvas() override;
    KyCanvas(const KyCanvas&) = delete;
    KyCanvas& operator=(const KyCanvas&) = delete;

    /// @{
    /// Pixels; 0 before the first size.
    int getWidth() const { return mWidth; }
    int getHeight() const { return mHeight; }
    /// @}
    /// Views that stand directly in the canvas.
    unsigned getNbViews() const { return static_cast<unsigned>(mViews.size()); }
    /// Null when out of range.
    KyGraphicsViewMultiPass* getView(unsigned index) const;
    /// All views with this pixel in their area, child views too, front first; those not enabled as well.
    std::vector<KyGraphicsViewMultiPass*> pickViews(int x, int y) const;
    /// Turns a position of a stereo picture into one of a single eye's; without stereo it stays as it is.
    virtual void transformStereoPoint(int& x, int& y) const;
    /// Whether anything that would be drawn changed since the last frame; true before the first.
    bool needsRedraw() const { return getRevision() != mRenderedRevision; }
    /// Another number after every change that makes the picture another one.
    std::uint64_t getRevision() const;

    /// Device pixels, at least 0.
    void setSize(int width, int height);
    /// Inserts before the position, -1 is the end: the front. The view leaves its former place. False for null.
    bool insertView(KyGraphicsViewMultiPass* view, int position = -1);
    /// Gives the reference back after the signal. False when it is none of the canvas's own views.
    bool removeView(KyGraphicsViewMultiPass* view);
    /// Sees all events of the canvas before the views; null for none. Holds a reference.
    void setEventHandler(KyEventHandler* handler) { mEventHandler.reset(handler); }

    /// Gives the event to the handler, then to the enabled views under its position, front first. True when it was
    /// used. Handlers may remove views and drop the canvas.
    virtual bool handleEvent(const KyInputEvent& event);
    /// Draws all views into the context's target, leaving the GL state as it was. False when there is no usable
    /// context or no size.
    bool render(KyRendererContext& context);

    /// Sent with each view that leaves, the deepest child first, while it still exists. Slots may drop the canvas.
    ViewRemovedSignal& viewRemovedSignal() { return mViewRemovedSignal; }
    /// Sent when the pointer left the window that shows the canvas: nothing is under it any more.
    KySignal<>& pointerLeftSignal() { return mPointerLeftSignal; }
    /// Sent with each event after the views were asked, whether one used it or not: those that were not asked can tell
    /// that it went elsewhere.
    KySignal<const KyInputEvent*>& eventSentSignal() { return mEventSentSignal; }
    /// Sent when the system took a touch away whose end does not come; with true when it was sent as a mouse button.
    KySignal<bool>& touchCanceledSignal() { return mTouchCanceledSignal; }
    /// Sent when the window that shows the canvas lost the keyboard focus, and with true when it got it.
    KySignal<bool>& keyboardFocusSignal() { return mKeyboardFocusSignal; }

private:
    bool insertViewAt(unsigned index, KyGraphicsViewMultiPass* view) {
        return insertView(view, static_cast<int>(index));
    }
    bool removeViewAt(unsigned index);

    int mWidth = 0;
    int mHeight = 0;
    std::uint64_t mOwnRevision = 1;
    std::uint64_t mRenderedRevision = 0;
    std::vector<KyHolder<KyGraphicsViewMultiPass>> mViews;
    KyHolder<KyEventHandler> mEventHandler;
    ViewRemovedSignal mViewRemovedSignal{"viewRemoved"};
    KySignal<> mPointerLeftSignal{"pointerLeft"};
    KySignal<const KyInputEvent*> mEventSentSignal{"eventSent"};
    KySignal<bool> mTouchCanceledSignal{"touchCanceled"};
    KySignal<bool> mKeyboardFocusSignal{"keyboardFocus"};

    static const KyType* msType;
};
