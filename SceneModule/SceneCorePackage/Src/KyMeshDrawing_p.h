// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGpuName_p.h"
#include "KyScreenTriangle_p.h"

#include <cstddef>

class KyMesh;

/// A mesh on the device.
class KyMeshBuffers {
public:
    KyGpuName vertices{KyGpuName::Kind::eBuffer};
    KyGpuName indices{KyGpuName::Kind::eBuffer};
    bool isStale = true;
};

/// Draws meshes one after the other in the current context, with the shader that is bound; meshes that follow each
/// other are set up once. Lives on the stack.
class KyMeshDrawing {
public:
    /// False when the mesh is empty.
    bool draw(const KyMesh& mesh);

private:
    bool setUp(const KyMesh& mesh);

    KyVertexArrayScope mVertexArray;
    const KyMesh* mLast = nullptr;
};
