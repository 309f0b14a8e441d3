// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyNode.h"

#include "KyColor.h"

#include <vector>

class KyLight;

/// The top of a tree of nodes, with what surrounds it: the background and the light from the sky and the ground.
///
/// ```
/// KyHolder<KyScene> scene(new KyScene);
/// scene->addChild(box);
/// scene->setBackground(KyColor(KyColor::eWhite));
/// ```
class KYSCENE_EXPORT KyScene : public KyNode {
public:
    static const KyType* getType();
    static KyScene* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The background goes from the top colour to the bottom one.
    const KyColor& getBackgroundTop() const { return mBackgroundTop; }
    /// See getBackgroundTop.
    const KyColor& getBackgroundBottom() const { return mBackgroundBottom; }
    /// Light without direction, from above and from below.
    const KyColor& getSkyColor() const { return mSkyColor; }
    /// See getSkyColor.
    const KyColor& getGroundColor() const { return mGroundColor; }
    /// The visible lights below, in the order of the tree.
    std::vector<KyLight*> getLights() const;
    /// Visible ones, as getLights.
    unsigned getNbLights() const { return static_cast<unsigned>(getLights().size()); }
    /// Null when out of range.
    KyLight* getLight(unsigned index) const;

    /// One colour from top to bottom.
    void setBackground(const KyColor& color);
    void setBackgroundTop(const KyColor& color);
    /// See setBackgroundTop.
    void setBackgroundBottom(const KyColor& color);
    void setSkyColor(const KyColor& color);
    /// See setSkyColor.
    void setGroundColor(const KyColor& color);

private:
    void assign(KyColor& member, const KyColor& color, const char* attribute);

    KyColor mBackgroundTop{0.33f, 0.39f, 0.48f, 1.0f};
    KyColor mBackgroundBottom{0.83f, 0.86f, 0.90f, 1.0f};
    KyColor mSkyColor{0.46f, 0.50f, 0.57f, 1.0f};
    KyColor mGroundColor{0.22f, 0.20f, 0.19f, 1.0f};

    static const KyType* msType;
};
