// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyFrameBuffer.h"
#include "KyHolder.h"
#include "KyPassEventHandler.h"

#include "KyObject.h"
#include "KyRect.h"
#include "KyReferenceCounted.h"
#include "KyVec3.h"

#include <cstdint>
#include <string>

class KyGraphicsViewMultiPass;
class KyRendererContext;

/// One step of drawing a view. Each frame a pass adapts to the view, then prepares, draws and finishes, all before the
/// pass with the next higher priority. Reference counted: views hold a reference. One pass belongs to one view.
///
/// A pass draws into its own frame buffer, or without one into the view's target.
class KYSCENE_EXPORT KyBaseGraphicsPass : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyBaseGraphicsPass* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyBaseGraphicsPass() = default;
    /// Name, priority and switches; the copy shares the event handler and has no frame buffer.
    KyBaseGraphicsPass(const KyBaseGraphicsPass& other);
    KyBaseGraphicsPass& operator=(const KyBaseGraphicsPass&) = delete;

    const std::string& getName() const override { return mName; }
    void setName(const std::string& name) override;
    bool hasNameAttribute() const override { return true; }
    /// A pass that is not enabled neither draws nor takes events.
    bool isEnabled() const { return mIsEnabled; }
    /// Passes are drawn from the lowest priority to the highest.
    float getPriority() const { return mPriority; }
    /// Null when the pass takes no events.
    KyPassEventHandler* getEventHandler() const { return mEventHandler.get(); }
    /// Null when the pass draws into the view's target.
    KyFrameBuffer* getFrameBuffer() const { return mFrameBuffer.get(); }
    /// The area that the pass covers in this view, pixels of the canvas, top left origin; null for a null view.
    virtual KyRect<int> getAreaPixels(const KyGraphicsViewMultiPass* view) const;
    /// The size after the last adaptView.
    int getViewportWidth() const { return mViewportWidth; }
    /// See getViewportWidth.
    int getViewportHeight() const { return mViewportHeight; }
    /// Another number after every change that makes the picture another one.
    virtual std::uint64_t getRevision() const { return mRevision; }
    /// The point of what it shows under a pixel of the canvas, in world coordinates; false when there is none.
    virtual bool pickPoint(const KyGraphicsViewMultiPass& view, int x, int y, KyVec3<double>& world) const;

    /// See isEnabled.
    void setEnabled(bool isEnabled);
    /// Lower ones come first: -1 before 0. NaN is ignored. The view sorts anew.
    void setPriority(float priority);
    /// Holds a reference; null takes no events.
    void setEventHandler(KyPassEventHandler* handler);
    /// Holds a reference; null draws into the view's target.
    virtual void setFrameBuffer(KyFrameBuffer* buffer);

    /// Takes over the size of the pass's area in the view; true when it changed.
    virtual bool adaptView(const KyGraphicsViewMultiPass& view);
    /// Called right before doRender: the place to make what that needs, in targets of its own.
    virtual void preRender(KyRendererContext& context);
    /// Draws into the pass's area of the view, which is bound as GL's viewport.
    virtual void doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view);
    /// Called right after doRender.
    virtual void postRender(KyRendererContext& context);

protected:
    /// Says that the picture would be another one now.
    void touch() { ++mRevision; }
    /// Counts the change and tells the listeners.
    void markModified(std::string_view attribute);

private:
    std::string mName;
    float mPriority = 0.0f;
    bool mIsEnabled = true;
    int mViewportWidth = 0;
    int mViewportHeight = 0;
    std::uint64_t mRevision = 1;
    KyHolder<KyPassEventHandler> mEventHandler;
    KyHolder<KyFrameBuffer> mFrameBuffer;

    static const KyType* msType;
};
