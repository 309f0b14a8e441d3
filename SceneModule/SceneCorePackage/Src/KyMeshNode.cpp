// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMeshNode.h"

#include "KyMeshBuilder.h"
#include "KyModelLoader.h"

#include "KyException.h"
#include "KyURL.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

template <class Part>
bool KyMeshNode::replacePart(KyHolder<Part>& holder, Part* part) {
    if (holder == part)
        return false;
    if (holder)
        holder->disconnectModified(this, &KyMeshNode::onPartModified);
    holder.reset(part);
    if (holder)
        holder->connectModified(this, &KyMeshNode::onPartModified);
    return true;
}

void KyMeshNode::setMesh(KyMesh* mesh) {
    if (replacePart(mMesh, mesh))
        markModified("Mesh");
}

void KyMeshNode::setTexture(KyTexture* texture) {
    if (replacePart(mTexture, texture))
        markModified("Texture");
}

void KyMeshNode::onPartModified(KyObject*, KyObjectModificationType, const std::string&, int) {
    touch();
}

void KyMeshNode::setColor(const KyColor& color) {
    if (color == mColor)
        return;
    mColor = color;
    markModified("Color");
}

void KyMeshNode::setRoughness(double roughness) {
    const double limited = std::clamp(roughness, 0.0, 1.0);
    if (std::isnan(roughness) || limited == mRoughness)
        return;
    mRoughness = limited;
    markModified("Roughness");
}

void KyMeshNode::setMetalness(double metalness) {
    const double limited = std::clamp(metalness, 0.0, 1.0);
    if (std::isnan(metalness) || limited == mMetalness)
        return;
    mMetalness = limited;
    markModified("Metalness");
}

void KyMeshNode::setShading(int shading) {
    if (shading < 0 || shading >= eNbShadings || shading == mShading)
        return;
    mShading = shading;
    markModified("Shading");
}

void KyMeshNode::setTextureAlpha(int alpha) {
    if (alpha < 0 || alpha >= eNbTextureAlphas || alpha == mTextureAlpha)
        return;
    mTextureAlpha = alpha;
    markModified("TextureAlpha");
}

void KyMeshNode::setTextureFlipped(bool isFlipped) {
    if (isFlipped == mIsTextureFlipped)
        return;
    mIsTextureFlipped = isFlipped;
    markModified("TextureFlipped");
}

bool KyMeshNode::isTranslucent() const {
    return mColor.alpha < 1.0f || (mTexture && mTextureAlpha != eIgnored);
}

void KyMeshNode::setShape(KyMeshData data, Shading shading) {
    const KyHolder<KyMesh> mesh(new KyMesh(std::move(data)));
    setMesh(mesh.get());
    if (shading == eGrid || mShading == eGrid)
        setShading(shading);
}

void KyMeshNode::makeBox(double width, double height, double depth) {
    setShape(KyMeshBuilder::makeBox(width, height, depth));
}

void KyMeshNode::makeSphere(double radius, int segments) {
    setShape(KyMeshBuilder::makeSphere(radius, segments));
}

void KyMeshNode::makeCylinder(double radius, double height, int segments) {
    setShape(KyMeshBuilder::makeCylinder(radius, height, segments));
}

void KyMeshNode::makeCone(double radius, double height, int segments) {
    setShape(KyMeshBuilder::makeCone(radius, height, segments));
}

void KyMeshNode::makeTorus(double radius, double tubeRadius, int segments) {
    setShape(KyMeshBuilder::makeTorus(radius, tubeRadius, segments));
}

void KyMeshNode::makePlane(double width, double depth) {
    setShape(KyMeshBuilder::makePlane(width, depth));
}

void KyMeshNode::makeGrid(double size, int divisions) {
    setShape(KyMeshBuilder::makeGrid(size, divisions), eGrid);
    setColor(KyColor(0.62f, 0.66f, 0.72f, 0.55f));
}

bool KyMeshNode::loadModel(const KyURL& url) {
    std::string error;
    KyNode* model = KyModelLoader::load(url, error);
    if (!model) {
        KyException::create(error);
        return false;
    }
    const KyHolder<KyNode> keep(model);
    if (addChild(model))
        return true;
    KyException::create(
        fmt::format("KyMeshNode::loadModel(): \"{}\" has too many levels of nodes to stand here.", url.toString()));
    return false;
}

KyVolumed KyMeshNode::getOwnVolume() const {
    return mMesh ? mMesh->getBoundingVolume() : KyVolumed();
}

bool KyMeshNode::intersectOwn(const KyRay<double>& ray, KySurfaceHit& hit) const {
    return mMesh && mMesh->intersect(ray, hit);
}
