// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHolder.h"
#include "KyShader.h"

#include "KyMat4.h"

#include <vector>

class KyCamera;
class KyMeshDrawing;
class KyMeshNode;
class KyNode;
class KyScene;
class KyTexture;

/// Draws a scene into the bound target; keeps the shaders.
class KySceneRenderer {
public:
    KySceneRenderer();

    void render(const KyScene& scene, const KyCamera& camera, bool hasBackground, int width, int height);
    /// Puts a premultiplied picture over the target.
    void copy(KyTexture& texture);

private:
    struct Item {
        const KyMeshNode* node;
        KyMat4d modelView;
        double depth;
    };
    using Items = std::vector<Item>;

    void collect(const KyNode& node, const KyMat4d& view);
    bool isInView(const KyMat4d& modelView, const KyMeshNode& node) const;
    void drawBackground(const KyScene& scene);
    void drawItems(const Items& items, KyShader& shader, const KyScene& scene, const KyCamera& camera,
                   KyMeshDrawing& drawing);
    void setTexture(const KyMeshNode& node, KyShader& shader);
    void drawGrids(KyMeshDrawing& drawing);
    void setShades(const Item& grid, double cellsPerUnit);

    KyHolder<KyShader> mBackgroundShader;
    KyHolder<KyShader> mSolidShader;
    KyHolder<KyShader> mTransparentShader;
    KyHolder<KyShader> mGridShader;
    KyHolder<KyShader> mCopyShader;
    KyMat4d mProjection;
    Items mSolids;
    Items mGrids;
    Items mTransparents;
};
