// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Draws the triangle that covers the viewport with the bound shader, without vertex inputs.
void kyDrawScreenTriangle();

/// A vertex array for the time of drawing: vertex arrays belong to one context, so none is kept.
class KyVertexArrayScope {
public:
    KyVertexArrayScope();
    ~KyVertexArrayScope();
    KyVertexArrayScope(const KyVertexArrayScope&) = delete;
    KyVertexArrayScope& operator=(const KyVertexArrayScope&) = delete;

private:
    unsigned mName = 0;
    int mFormer = 0;
};
