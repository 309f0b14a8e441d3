// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyObject.h"
#include "KyRect.h"
#include "KyReferenceCounted.h"
#include "KyVec3.h"

#include <cstdint>
#include <string>

class KyCanvas;
class KyInputEvent;
class KyRendererContext;

/// A part of a canvas that shows something and takes events. Reference counted: canvas and parent views hold a
/// reference. Its area is a fraction of the parent view, or of the canvas; positions are pixels of the canvas, from its
/// top left corner.
class KYSCENE_EXPORT KyGraphicsView : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyGraphicsView* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyGraphicsView() = default;
    KyGraphicsView(const KyGraphicsView&) = delete;
    KyGraphicsView& operator=(const KyGraphicsView&) = delete;

    const std::string& getName() const override { return mName; }
    void setName(const std::string& name) override;
    bool hasNameAttribute() const override { return true; }
    /// A view that is not enabled neither draws nor takes events.
    bool isEnabled() const { return mIsEnabled; }
    /// Enabled itself, and all the views that it stands in.
    bool isEnabledWithParents() const;
    /// Null outside a canvas.
    KyCanvas* getCanvas() const;
    /// The view that this one stands in; null at the top.
    KyGraphicsView* getParent() const { return mParent; }
    /// x, y, width, height as fractions, y down; all of the parent at the start.
    const KyRect<double>& getArea() const { return mArea; }
    /// In pixels of the canvas; null outside a canvas.
    KyRect<int> getAbsoluteArea() const;
    /// Whether the pixel of the canvas lies in the view's area.
    bool containsPixel(int x, int y) const;

    void setEnabled(bool isEnabled);
    /// A null rectangle stands for the whole parent.
    void setArea(const KyRect<double>& area);

    /// True when the event was used and goes no further.
    virtual bool handleEvent(const KyInputEvent& event);
    /// The world point of what is shown under a pixel; false, and `world` unchanged, when there is none.
    virtual bool pickPoint(int x, int y, KyVec3<double>& world) const;
    /// Draws the view; the canvas calls it for views that are enabled.
    virtual void render(KyRendererContext& context);
    /// Another number after every change that makes the picture another one.
    virtual std::uint64_t getRevision() const { return mRevision; }

protected:
    /// Says that the picture would be another one now.
    void touch() { ++mRevision; }
    /// Counts the change and tells the listeners.
    void markModified(std::string_view attribute);

private:
    friend class KyCanvas;
    friend class KyGraphicsViewMultiPass;

    std::string mName;
    bool mIsEnabled = true;
    KyRect<double> mArea{0.0, 0.0, 1.0, 1.0};
    /// What most areas are, and asked for with every event.
    bool mIsWhole = true;
    KyCanvas* mCanvas = nullptr;
    KyGraphicsView* mParent = nullptr;
    std::uint64_t mRevision = 1;

    static const KyType* msType;
};

/// The part of a pixel area that fractions of it name; edges that fit together in fractions do so in pixels.
/// What no int can hold becomes the nearest that does.
KYSCENE_EXPORT KyRect<int> kyScaleArea(const KyRect<int>& area, const KyRect<double>& fractions);
