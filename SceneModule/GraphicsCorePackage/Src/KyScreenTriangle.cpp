// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScreenTriangle_p.h"

#include "KyDrawStatistics.h"

#include <epoxy/gl.h>

KyVertexArrayScope::KyVertexArrayScope() {
    glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &mFormer);
    glGenVertexArrays(1, &mName);
    glBindVertexArray(mName);
}

KyVertexArrayScope::~KyVertexArrayScope() {
    glBindVertexArray(static_cast<GLuint>(mFormer));
    glDeleteVertexArrays(1, &mName);
}

void kyDrawScreenTriangle() {
    const KyVertexArrayScope vertexArray;
    // In a compatibility context input 0 must be given a value for anything to be drawn.
    glDisableVertexAttribArray(0);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    KyDrawStatistics::count(1);
}
