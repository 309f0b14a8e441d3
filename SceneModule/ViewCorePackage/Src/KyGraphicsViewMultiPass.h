// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGraphicsView.h"
#include "KyHolder.h"

#include "KyBaseGraphicsPass.h"
#include "KyColor.h"

#include <vector>

/// A view that is drawn by passes, in the order of their priorities, and then by child views above it. It holds
/// references of both. An event goes to its passes with event handlers, front first (the highest priority); child views
/// get their events from the canvas.
///
/// ```
/// auto* view = KyGraphicsViewMultiPass::create();
/// view->setMainPass(scenePass);
/// view->insert(overlay, -1);
/// canvas->insertView(view);
/// ```
class KYSCENE_EXPORT KyGraphicsViewMultiPass : public KyGraphicsView {
public:
    /// What is cleared before the first pass draws.
    enum ClearOrder { eClearNothing = 0, eClearColor = 1, eClearDepth = 2, eClearColorAndDepth = 3, eNbClearOrders };

    static const KyType* getType();
    static KyGraphicsViewMultiPass* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    static KyGraphicsViewMultiPass* create() { return new KyGraphicsViewMultiPass; }
    ~KyGraphicsViewMultiPass() override;

    /// As getAbsoluteArea.
    KyRect<int> getAreaPixels() const { return getAbsoluteArea(); }
    /// The pass whose picture the others can use; null when there is none.
    KyBaseGraphicsPass* getMainPass() const { return mMainPass; }
    /// The main pass included.
    unsigned getNbPasses() const { return static_cast<unsigned>(mPasses.size()); }
    /// In the order in which they came; null when out of range.
    KyBaseGraphicsPass* getPass(unsigned index) const;
    /// Child views.
    unsigned getNbViews() const { return static_cast<unsigned>(mViews.size()); }
    /// A child view, the rearmost first; null when out of range.
    KyGraphicsViewMultiPass* getView(unsigned index) const;
    /// See setClearOrder.
    int getClearOrder() const { return mClearOrder; }
    /// See setClearColor.
    const KyColor& getClearColor() const { return mClearColor; }

    /// Replaces the main pass; null removes it.
    void setMainPass(KyBaseGraphicsPass* pass);
    /// False for null and a pass that is here already.
    bool addPass(KyBaseGraphicsPass* pass);
    /// Gives the reference back. False when it is not here.
    bool removePass(KyBaseGraphicsPass* pass);
    /// Puts a view above this one, before the position among its children, -1 is the end. It leaves its former place.
    /// False for null, this view and those that it stands in.
    bool insert(KyGraphicsViewMultiPass* view, int position = -1);
    /// Gives the reference back after the canvas told of the removal. False when it is no child.
    bool remove(KyGraphicsViewMultiPass* view);
    /// A number of ClearOrder, others are ignored; colour and depth at the start.
    void setClearOrder(int order);
    /// Used when the clear order clears the colour.
    void setClearColor(const KyColor& color);

    bool handleEvent(const KyInputEvent& event) override;
    bool pickPoint(int x, int y, KyVec3<double>& world) const override;
    void render(KyRendererContext& context) override;
    std::uint64_t getRevision() const override;

private:
    friend class KyCanvas;

    using Passes = std::vector<KyHolder<KyBaseGraphicsPass>>;

    Passes getSortedPasses() const;
    void clear(KyRendererContext& context) const;
    void renderPass(KyBaseGraphicsPass& pass, KyRendererContext& context);
    bool removePassAt(unsigned index);
    bool insertPassAt(unsigned index, KyBaseGraphicsPass* pass);
    bool insertViewAt(unsigned index, KyGraphicsViewMultiPass* view) { return insert(view, static_cast<int>(index)); }
    bool removeViewAt(unsigned index);
    void tellRemoval(KyCanvas& canvas);
    void leave();
    void pick(int x, int y, std::vector<KyGraphicsViewMultiPass*>& found);

    KyBaseGraphicsPass* mMainPass = nullptr;
    Passes mPasses;
    std::vector<KyHolder<KyGraphicsViewMultiPass>> mViews;
    int mClearOrder = eClearColorAndDepth;
    KyColor mClearColor{0.0f, 0.0f, 0.0f, 1.0f};

    static const KyType* msType;
};
