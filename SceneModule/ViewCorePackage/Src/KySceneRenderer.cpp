// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySceneRenderer_p.h"

#include "KyCamera.h"
#include "KyMeshDrawing_p.h"
#include "KyMeshNode.h"
#include "KyProgramSourceManager.h"
#include "KyScene.h"
#include "KySceneLights_p.h"
#include "KyTexture.h"

#include "KyCast.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::size_t cMaxShades = 16;
const KyColor cWholeTexture(1.0f, 1.0f, 0.0f, 0.0f);
const KyColor cAxisXColor(0.86f, 0.36f, 0.38f, 0.85f);
const KyColor cAxisZColor(0.35f, 0.52f, 0.87f, 0.85f);

struct ShaderSetup {
    const char* vertex;
    const char* fragment;
    bool usesDepth;
    bool writesDepth;
    bool blends;
};

KyShader* makeShader(const ShaderSetup& setup) {
    const KyProgramSourceManager& sources = KyProgramSourceManager::get();
    KyShader* shader = KyShader::create();
    shader->setVertexProgram(sources.getSource(setup.vertex));
    shader->setFragmentProgram(sources.getSource(setup.fragment));
    shader->setState(KyShaderState::eDepthTest, setup.usesDepth);
    shader->setState(KyShaderState::eDepthWrite, setup.writesDepth);
    shader->setState(KyShaderState::eBlend, setup.blends);
    return shader;
}

/// The matrix that keeps normals upright under scale.
KyMat4f getNormalMatrix(const KyMat4d& modelView) {
    KyMat4d matrix = modelView.getInverse();
    matrix.transpose();
    return KyMat4f(matrix);
}

/// How much the matrix stretches at most.
double getScale(const KyMat4d& matrix) {
    return std::max({matrix.getColumn(0).length(), matrix.getColumn(1).length(), matrix.getColumn(2).length()});
}

} // namespace

KySceneRenderer::KySceneRenderer()
    : mBackgroundShader(makeShader({"KyBackground_vp.glsl", "KyBackground_fp.glsl", false, false, false}))
    , mSolidShader(makeShader({"KyScene_vp.glsl", "KyScene_fp.glsl", true, true, false}))
    , mTransparentShader(makeShader({"KyScene_vp.glsl", "KyScene_fp.glsl", true, false, true}))
    , mGridShader(makeShader({"KyScene_vp.glsl", "KyGrid_fp.glsl", true, false, true}))
    , mCopyShader(makeShader({"KyPrevious_vp.glsl", "KyPrevious_fp.glsl", false, false, true})) {}

void KySceneRenderer::render(const KyScene& scene, const KyCamera& camera, bool hasBackground, int width, int height) {
    mProjection = camera.getProjection(static_cast<double>(width) / height);
    mSolids.clear();
    mGrids.clear();
    mTransparents.clear();
    collect(scene, camera.getViewMatrix());
    if (hasBackground)
        drawBackground(scene);
    glDepthFunc(GL_LEQUAL);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    // Near to far saves shading what will be covered, far to near is what blending needs.
    std::ranges::sort(mSolids, {}, &Item::depth);
    std::ranges::sort(mTransparents, std::ranges::greater{}, &Item::depth);
    KyMeshDrawing drawing;
    drawItems(mSolids, *mSolidShader, scene, camera, drawing);
    drawGrids(drawing);
    drawItems(mTransparents, *mTransparentShader, scene, camera, drawing);
}

void KySceneRenderer::collect(const KyNode& node, const KyMat4d& view) {
    if (!node.isVisible())
        return;
    if (const auto* mesh = kyCast<KyMeshNode>(static_cast<const KyObject*>(&node)); mesh && mesh->getMesh()) {
        const KyMat4d modelView = view * mesh->getWorldFrame();
        if (isInView(modelView, *mesh)) {
            Items& items = mesh->getShading() == KyMeshNode::eGrid ? mGrids
                           : mesh->isTranslucent()                 ? mTransparents
                                                                   : mSolids;
            items.push_back({mesh, modelView, -modelView.transformPoint(mesh->getOwnVolume().getCenter()).z});
        }
    }
    for (unsigned i = 0; i < node.getNbChildren(); ++i)
        collect(*node.getChild(i), view);
}

bool KySceneRenderer::isInView(const KyMat4d& modelView, const KyMeshNode& node) const {
    const KyVolumed volume = node.getOwnVolume();
    if (volume.isNull())
        return false;
    const KyVec3d centre = modelView.transformPoint(volume.getCenter());
    const double radius = volume.getRadius() * getScale(modelView);
    // The planes of the view are sums of the projection's rows.
    for (int row = 0; row < 3; ++row)
        for (const double sign : {1.0, -1.0}) {
            const auto number = [this, row, sign](int column) {
                return mProjection.get(3, column) + sign * mProjection.get(row, column);
            };
            const KyVec3d normal(number(0), number(1), number(2));
            if (normal.dot(centre) + number(3) < -radius * normal.length())
                return false;
        }
    return true;
}

void KySceneRenderer::drawBackground(const KyScene& scene) {
    if (!mBackgroundShader->bind())
        return;
    mBackgroundShader->setUniform("kyTexCoordTransform", cWholeTexture);
    mBackgroundShader->setUniform("kyTop", scene.getBackgroundTop());
    mBackgroundShader->setUniform("kyBottom", scene.getBackgroundBottom());
    kyDrawScreenTriangle();
}

void KySceneRenderer::drawItems(const Items& items, KyShader& shader, const KyScene& scene, const KyCamera& camera,
                                KyMeshDrawing& drawing) {
    if (items.empty() || !shader.bind())
        return;
    KySceneLights(scene, camera).apply(shader);
    shader.setUniform("kyProjection", KyMat4f(mProjection));
    shader.setUniform("kyIsPerspective", camera.isOrthographic() ? 0 : 1);
    for (const Item& item : items) {
        shader.setUniform("kyModelView", KyMat4f(item.modelView));
        shader.setUniformRotation("kyNormalMatrix", getNormalMatrix(item.modelView));
        shader.setUniform("kyMaterialColor", item.node->getColor());
        shader.setUniform("kyRoughness", static_cast<float>(item.node->getRoughness()));
        shader.setUniform("kyMetalness", static_cast<float>(item.node->getMetalness()));
        shader.setUniform("kyIsLit", item.node->getShading() == KyMeshNode::eSmooth ? 1 : 0);
        setTexture(*item.node, shader);
        drawing.draw(*item.node->getMesh());
    }
}

void KySceneRenderer::setTexture(const KyMeshNode& node, KyShader& shader) {
    KyTexture* const texture = node.getTexture();
    const bool hasTexture = texture && texture->bind(0);
    shader.setUniform("kyHasTexture", hasTexture ? 1 : 0);
    if (!hasTexture)
        return;
    shader.setUniform("kyTexture", 0);
    shader.setUniform("kyTextureAlpha", node.getTextureAlpha());
    shader.setUniform("kyIsTextureFlipped", node.isTextureFlipped() ? 1 : 0);
}

void KySceneRenderer::drawGrids(KyMeshDrawing& drawing) {
    if (mGrids.empty() || !mGridShader->bind())
        return;
    mGridShader->setUniform("kyProjection", KyMat4f(mProjection));
    mGridShader->setUniform("kyAxisXColor", cAxisXColor);
    mGridShader->setUniform("kyAxisZColor", cAxisZColor);
    for (const Item& item : mGrids) {
        mGridShader->setUniform("kyModelView", KyMat4f(item.modelView));
        mGridShader->setUniform("kyMaterialColor", item.node->getColor());
        const float halfDivisions = std::abs(item.node->getMesh()->getData().vertices.front().texCoord[0]);
        mGridShader->setUniform("kyHalfDivisions", halfDivisions);
        const double halfSize = std::max(item.node->getOwnVolume().getWidth() / 2.0, 1e-9);
        setShades(item, static_cast<double>(halfDivisions) / halfSize);
        drawing.draw(*item.node->getMesh());
    }
}

void KySceneRenderer::setShades(const Item& grid, double cellsPerUnit) {
    std::vector<float> shades, strengths;
    const KyMat4d toGrid = grid.node->getWorldFrame().getInverse();
    for (const Item& item : mSolids) {
        if (strengths.size() == cMaxShades)
            break;
        const KyVolumed bounds = item.node->getOwnVolume().getTransformed(toGrid * item.node->getWorldFrame());
        const KyVec3d middle = bounds.getCenter() * cellsPerUnit, half = bounds.getSize() * (cellsPerUnit / 2.0);
        // What floats throws a weaker shade, what is below the ground none; a plane on the ground would darken all.
        const double height = bounds.getMin().y * cellsPerUnit, extent = std::max(half.x, half.z);
        if (bounds.getMax().y <= 0.0 || half.y < 1e-3 * extent || extent <= 0.0)
            continue;
        const double strength = 0.55 * std::exp(-2.0 * std::max(height, 0.0) / extent);
        for (const double number : {middle.x, middle.z, std::max(half.x, 1e-3), std::max(half.z, 1e-3)})
            shades.push_back(static_cast<float>(number));
        strengths.push_back(static_cast<float>(strength));
    }
    mGridShader->setUniform("kyNbShades", static_cast<int>(strengths.size()));
    mGridShader->setUniformArray("kyShades", 4, shades);
    mGridShader->setUniformArray("kyShadeStrengths", 1, strengths);
}

void KySceneRenderer::copy(KyTexture& texture) {
    if (!mCopyShader->bind() || !texture.bind(0))
        return;
    mCopyShader->setUniform("kyPrevious", 0);
    mCopyShader->setUniform("kyTexCoordTransform", cWholeTexture);
    kyDrawScreenTriangle();
}
