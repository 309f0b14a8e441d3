// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsStateScope.h"

#include "KyGpuName_p.h"

#include <epoxy/gl.h>

#include <array>
#include <cstddef>

namespace {

constexpr std::array<GLenum, 10> cSwitches{GL_BLEND,           GL_DEPTH_TEST,          GL_CULL_FACE,
                                           GL_SCISSOR_TEST,    GL_STENCIL_TEST,        GL_MULTISAMPLE,
                                           GL_DITHER,          GL_POLYGON_OFFSET_FILL, GL_SAMPLE_ALPHA_TO_COVERAGE,
                                           GL_FRAMEBUFFER_SRGB};

constexpr std::array<GLenum, 8> cPixelStores{GL_PACK_ALIGNMENT,   GL_PACK_ROW_LENGTH,   GL_PACK_SKIP_ROWS,
                                             GL_PACK_SKIP_PIXELS, GL_UNPACK_ALIGNMENT,  GL_UNPACK_ROW_LENGTH,
                                             GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS};

constexpr std::array<GLint, 8> cPlainPixelStores{1, 0, 0, 0, 1, 0, 0, 0};

struct Binding {
    GLenum query;
    void (*bind)(GLuint name);
};

constexpr std::array<Binding, 10> cBindings{{
    {GL_DRAW_FRAMEBUFFER_BINDING, [](GLuint name) { glBindFramebuffer(GL_DRAW_FRAMEBUFFER, name); }},
    {GL_READ_FRAMEBUFFER_BINDING, [](GLuint name) { glBindFramebuffer(GL_READ_FRAMEBUFFER, name); }},
    {GL_RENDERBUFFER_BINDING, [](GLuint name) { glBindRenderbuffer(GL_RENDERBUFFER, name); }},
    {GL_CURRENT_PROGRAM, [](GLuint name) { glUseProgram(name); }},
    {GL_VERTEX_ARRAY_BINDING, [](GLuint name) { glBindVertexArray(name); }},
    {GL_ARRAY_BUFFER_BINDING, [](GLuint name) { glBindBuffer(GL_ARRAY_BUFFER, name); }},
    {GL_PIXEL_PACK_BUFFER_BINDING, [](GLuint name) { glBindBuffer(GL_PIXEL_PACK_BUFFER, name); }},
    {GL_PIXEL_UNPACK_BUFFER_BINDING, [](GLuint name) { glBindBuffer(GL_PIXEL_UNPACK_BUFFER, name); }},
    {GL_TEXTURE_BINDING_2D, [](GLuint name) { glBindTexture(GL_TEXTURE_2D, name); }},
    {GL_ACTIVE_TEXTURE, [](GLuint unit) { glActiveTexture(unit); }},
}};

constexpr std::array<GLenum, 6> cBlendValues{GL_BLEND_SRC_RGB,   GL_BLEND_DST_RGB,      GL_BLEND_SRC_ALPHA,
                                             GL_BLEND_DST_ALPHA, GL_BLEND_EQUATION_RGB, GL_BLEND_EQUATION_ALPHA};

template <class Values>
void readIntegers(const auto& names, Values& values) {
    for (std::size_t i = 0; i < names.size(); ++i)
        glGetIntegerv(names[i], &values[i]);
}

} // namespace

struct KyGraphicsStateScope::State {
    std::array<GLboolean, cSwitches.size()> switches{};
    std::array<GLint, cPixelStores.size()> pixelStores{};
    std::array<GLint, cBindings.size()> bindings{};
    std::array<GLint, cBlendValues.size()> blend{};
    std::array<GLint, 4> viewport{};
    std::array<GLint, 4> scissor{};
    std::array<GLfloat, 4> clearColor{};
    std::array<GLboolean, 4> colorMask{};
    std::array<GLint, 2> polygonMode{};
    GLfloat clearDepth = 1.0f;
    GLint clearStencil = 0;
    GLboolean depthMask = GL_TRUE;
    GLint depthFunction = GL_LESS;
    GLint cullMode = GL_BACK;
    GLint frontFace = GL_CCW;
    std::array<GLint, 4> textures{};
};

KyGraphicsStateScope::KyGraphicsStateScope() {
    if (!kyGetCurrentGpuHandle())
        return;
    mState = std::make_unique<State>();
    State& state = *mState;
    for (std::size_t i = 0; i < cBindings.size(); ++i)
        glGetIntegerv(cBindings[i].query, &state.bindings[i]);
    for (std::size_t i = 0; i < cSwitches.size(); ++i)
        state.switches[i] = glIsEnabled(cSwitches[i]);
    readIntegers(cPixelStores, state.pixelStores);
    readIntegers(cBlendValues, state.blend);
    glGetIntegerv(GL_VIEWPORT, state.viewport.data());
    glGetIntegerv(GL_SCISSOR_BOX, state.scissor.data());
    glGetFloatv(GL_COLOR_CLEAR_VALUE, state.clearColor.data());
    glGetBooleanv(GL_COLOR_WRITEMASK, state.colorMask.data());
    glGetFloatv(GL_DEPTH_CLEAR_VALUE, &state.clearDepth);
    glGetIntegerv(GL_STENCIL_CLEAR_VALUE, &state.clearStencil);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &state.depthMask);
    glGetIntegerv(GL_DEPTH_FUNC, &state.depthFunction);
    glGetIntegerv(GL_CULL_FACE_MODE, &state.cullMode);
    glGetIntegerv(GL_FRONT_FACE, &state.frontFace);
    glGetIntegerv(GL_POLYGON_MODE, state.polygonMode.data());
    for (std::size_t i = 0; i < state.textures.size(); ++i) {
        glActiveTexture(static_cast<GLenum>(GL_TEXTURE0 + i));
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &state.textures[i]);
    }
    for (std::size_t i = 0; i < cPixelStores.size(); ++i)
        glPixelStorei(cPixelStores[i], cPlainPixelStores[i]);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glActiveTexture(GL_TEXTURE0);
}

KyGraphicsStateScope::~KyGraphicsStateScope() {
    if (!mState || !kyGetCurrentGpuHandle())
        return;
    const State& state = *mState;
    for (std::size_t i = 0; i < state.textures.size(); ++i) {
        glActiveTexture(static_cast<GLenum>(GL_TEXTURE0 + i));
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(state.textures[i]));
    }
    // The active unit is last in the table, its texture stands before: so the unit has to be chosen first.
    glActiveTexture(static_cast<GLenum>(state.bindings.back()));
    for (std::size_t i = 0; i < cBindings.size(); ++i)
        cBindings[i].bind(static_cast<GLuint>(state.bindings[i]));
    for (std::size_t i = 0; i < cSwitches.size(); ++i)
        (state.switches[i] ? glEnable : glDisable)(cSwitches[i]);
    for (std::size_t i = 0; i < cPixelStores.size(); ++i)
        glPixelStorei(cPixelStores[i], state.pixelStores[i]);
    const auto blend = [&state](std::size_t i) { return static_cast<GLenum>(state.blend[i]); };
    glBlendFuncSeparate(blend(0), blend(1), blend(2), blend(3));
    glBlendEquationSeparate(blend(4), blend(5));
    glViewport(state.viewport[0], state.viewport[1], state.viewport[2], state.viewport[3]);
    glScissor(state.scissor[0], state.scissor[1], state.scissor[2], state.scissor[3]);
    glClearColor(state.clearColor[0], state.clearColor[1], state.clearColor[2], state.clearColor[3]);
    glColorMask(state.colorMask[0], state.colorMask[1], state.colorMask[2], state.colorMask[3]);
    glClearDepth(static_cast<double>(state.clearDepth));
    glClearStencil(state.clearStencil);
    glDepthMask(state.depthMask);
    glDepthFunc(static_cast<GLenum>(state.depthFunction));
    glCullFace(static_cast<GLenum>(state.cullMode));
    glFrontFace(static_cast<GLenum>(state.frontFace));
    glPolygonMode(GL_FRONT_AND_BACK, static_cast<GLenum>(state.polygonMode[0]));
}
