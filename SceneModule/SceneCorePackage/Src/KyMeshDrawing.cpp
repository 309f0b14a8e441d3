// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMeshDrawing_p.h"

#include "KyDrawStatistics.h"
#include "KyMesh.h"

#include <epoxy/gl.h>

#include <array>
#include <cstddef>

namespace {

struct Input {
    GLint size;
    GLenum type;
    GLboolean isNormalized;
    std::size_t offset;
};

constexpr std::array<Input, 4> cInputs{{{3, GL_FLOAT, GL_FALSE, offsetof(KyVertex, position)},
                                        {3, GL_FLOAT, GL_FALSE, offsetof(KyVertex, normal)},
                                        {2, GL_FLOAT, GL_FALSE, offsetof(KyVertex, texCoord)},
                                        {4, GL_UNSIGNED_BYTE, GL_TRUE, offsetof(KyVertex, color)}}};

constexpr std::array<GLenum, 3> cPrimitives{GL_TRIANGLES, GL_LINES, GL_POINTS};

void upload(GLenum target, const void* data, std::size_t size) {
    glBufferData(target, static_cast<GLsizeiptr>(size), data, GL_STATIC_DRAW);
}

} // namespace

bool KyMeshDrawing::setUp(const KyMesh& mesh) {
    KyMeshBuffers& buffers = *mesh.mBuffers;
    const bool isNew = !buffers.vertices.isUsable() || !buffers.indices.isUsable();
    if (isNew && (buffers.vertices.create() == 0 || buffers.indices.create() == 0))
        return false;
    glBindBuffer(GL_ARRAY_BUFFER, buffers.vertices.get());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers.indices.get());
    const KyMeshData& data = mesh.getData();
    if (isNew || buffers.isStale) {
        upload(GL_ARRAY_BUFFER, data.vertices.data(), data.vertices.size() * sizeof(KyVertex));
        upload(GL_ELEMENT_ARRAY_BUFFER, data.indices.data(), data.indices.size() * sizeof(std::uint32_t));
        buffers.isStale = false;
    }
    for (std::size_t i = 0; i < cInputs.size(); ++i) {
        const auto location = static_cast<GLuint>(i);
        glEnableVertexAttribArray(location);
        glVertexAttribPointer(location, cInputs[i].size, cInputs[i].type, cInputs[i].isNormalized, sizeof(KyVertex),
                              reinterpret_cast<const void*>(cInputs[i].offset));
    }
    mLast = &mesh;
    return true;
}

bool KyMeshDrawing::draw(const KyMesh& mesh) {
    const KyMeshData& data = mesh.getData();
    if (data.indices.empty() || (mLast != &mesh && !setUp(mesh)))
        return false;
    glDrawElements(cPrimitives[static_cast<std::size_t>(data.primitive)], static_cast<GLsizei>(data.indices.size()),
                   GL_UNSIGNED_INT, nullptr);
    KyDrawStatistics::count(data.indices.size() / kyGetPrimitiveSize(data.primitive));
    return true;
}
