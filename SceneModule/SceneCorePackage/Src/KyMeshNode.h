// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyHolder.h"
#include "KyMesh.h"
#include "KyNode.h"
#include "KyTexture.h"

#include "KyColor.h"

#include <string>

class KyURL;

/// A node that shows a mesh in a colour, with a picture on it where it has a texture. Scripts make shapes by its
/// methods:
///
/// ```
/// local box = createKyObject("KyMeshNode")
/// box:makeBox(1, 1, 1)
/// box.Color = Color(0.9, 0.4, 0.1)
/// ```
class KYSCENE_EXPORT KyMeshNode : public KyNode, public KyHasSlots {
public:
    /// Lit smoothly, its plain colour, or as a grid of lines (for the mesh of makeGrid).
    enum Shading { eSmooth = 0, eUnlit = 1, eGrid = 2, eNbShadings };
    /// What the texture's alpha does: nothing, or it lets shine through what is behind, with colours as they are or
    /// multiplied with it already, as Qt paints them.
    enum TextureAlpha { eIgnored = 0, eStraight = 1, ePremultiplied = 2, eNbTextureAlphas };

    static const KyType* getType();
    static KyMeshNode* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Null when it shows nothing.
    KyMesh* getMesh() const { return mMesh.get(); }
    /// See setColor.
    const KyColor& getColor() const { return mColor; }
    /// 0 is a mirror, 1 is dull.
    double getRoughness() const { return mRoughness; }
    /// 0 is paint or plastic, 1 is metal.
    double getMetalness() const { return mMetalness; }
    /// A number of Shading.
    int getShading() const { return mShading; }
    /// Null without picture.
    KyTexture* getTexture() const { return mTexture.get(); }
    /// A number of TextureAlpha.
    int getTextureAlpha() const { return mTextureAlpha; }
    /// Row 0 of the texture is shown at the top instead of at the bottom.
    bool isTextureFlipped() const { return mIsTextureFlipped; }
    /// Whether something behind may shine through.
    bool isTranslucent() const;

    /// Holds a reference of the mesh; null shows nothing.
    void setMesh(KyMesh* mesh);
    /// Alpha below 1 lets what is behind shine through.
    void setColor(const KyColor& color);
    /// Limited to 0 ... 1; NaN is ignored.
    void setRoughness(double roughness);
    void setMetalness(double metalness);
    /// Others than those of Shading are ignored.
    void setShading(int shading);
    /// Its colours are multiplied with the node's; grids show none. Holds a reference; the node counts as changed with
    /// every new version of the texture. Null for none.
    void setTexture(KyTexture* texture);
    /// Others than those of TextureAlpha are ignored.
    void setTextureAlpha(int alpha);
    void setTextureFlipped(bool isFlipped);

    /// Each gives the node a mesh of its own, see KyMeshBuilder.
    void makeBox(double width, double height, double depth);
    /// @{
    /// As makeBox.
    void makeSphere(double radius, int segments = 48);
    void makeCylinder(double radius, double height, int segments = 48);
    void makeCone(double radius, double height, int segments = 48);
    void makeTorus(double radius, double tubeRadius, int segments = 64);
    void makePlane(double width, double depth);
    /// @}
    /// A ground of lines in the plane of x and z, `divisions` cells along each side, fading towards its rim.
    void makeGrid(double size, int divisions);
    /// Puts the content of a model file under this node, see KyModelLoader; false, after a report, when it cannot.
    bool loadModel(const KyURL& url);

    KyVolumed getOwnVolume() const override;

protected:
    bool intersectOwn(const KyRay<double>& ray, KySurfaceHit& hit) const override;

private:
    void setShape(KyMeshData data, Shading shading = eSmooth);
    void onPartModified(KyObject* part, KyObjectModificationType kind, const std::string& attribute, int index);
    template <class Part>
    bool replacePart(KyHolder<Part>& holder, Part* part);

    KyHolder<KyMesh> mMesh;
    KyHolder<KyTexture> mTexture;
    KyColor mColor{0.75f, 0.77f, 0.80f, 1.0f};
    double mRoughness = 0.45;
    double mMetalness = 0.0;
    int mShading = eSmooth;
    int mTextureAlpha = eIgnored;
    bool mIsTextureFlipped = false;

    static const KyType* msType;
};
