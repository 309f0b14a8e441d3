// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShader.h"

#include "KyGpuName_p.h"

#include "KyException.h"
#include "KyTypeBuilder.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <algorithm>

const KyType* KyShader::msType = nullptr;

namespace {

constexpr std::array<const char*, 4> cInputs{"kyPosition", "kyNormal", "kyTexCoord", "kyColor"};

constexpr std::array<GLenum, 10> cFactors{
    GL_ZERO,      GL_SRC_COLOR,           GL_ONE_MINUS_SRC_COLOR, GL_SRC_ALPHA,          GL_ONE, GL_ONE_MINUS_SRC_ALPHA,
    GL_DST_COLOR, GL_ONE_MINUS_DST_COLOR, GL_DST_ALPHA,           GL_ONE_MINUS_DST_ALPHA};

constexpr std::array<GLenum, 3> cEquations{GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT, GL_FUNC_ADD};

template <class Enumeration, std::size_t N>
GLenum look(const std::array<GLenum, N>& table, Enumeration value) {
    const auto index = static_cast<std::size_t>(value);
    return table[index < N ? index : N - 1];
}

void enable(GLenum what, bool isOn) {
    (isOn ? glEnable : glDisable)(what);
}

template <class GetParameter, class GetLog>
std::string readLog(GLuint name, GetParameter getParameter, GetLog getLog) {
    GLint length = 0;
    getParameter(name, GL_INFO_LOG_LENGTH, &length);
    std::string text(static_cast<std::size_t>(std::max(length, 1)), '\0');
    getLog(name, static_cast<GLsizei>(text.size()), nullptr, text.data());
    text.resize(text.find('\0') == std::string::npos ? text.size() : text.find('\0'));
    return text;
}

} // namespace

void KyShader::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyShader>("KyShader", KyGraphicsObject::getType())
                 .factory()
                 .attribute("VertexProgram", &KyShader::getVertexProgram, &KyShader::setVertexProgram)
                 .attribute("FragmentProgram", &KyShader::getFragmentProgram, &KyShader::setFragmentProgram)
                 .attribute("ErrorText", &KyShader::getErrorText)
                 .build();
}

void KyShader::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyShader::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyShader::getObjectType() const {
    return getType();
}

KyShader* KyShader::cast(KyObject* object) {
    return kyCast<KyShader>(object);
}

KyObject* KyShader::factory() {
    return new KyShader;
}

KyShader::KyShader()
    : mProgram(std::make_unique<KyGpuName>(KyGpuName::Kind::eProgram)) {}

KyShader::~KyShader() = default;

KyShader* KyShader::clone() const {
    auto* copy = new KyShader;
    copy->mVertexProgram = mVertexProgram;
    copy->mFragmentProgram = mFragmentProgram;
    copy->mStates = mStates;
    copy->mBlendFunction = mBlendFunction;
    return copy;
}

bool KyShader::getState(KyShaderState state) const {
    const auto index = static_cast<std::size_t>(state);
    return index < mStates.size() && mStates[index];
}

void KyShader::setVertexProgram(const std::string& source) {
    mVertexProgram = source;
    mHasFailed = false;
    mProgram->reset();
    notifyModified("VertexProgram");
}

void KyShader::setFragmentProgram(const std::string& source) {
    mFragmentProgram = source;
    mHasFailed = false;
    mProgram->reset();
    notifyModified("FragmentProgram");
}

void KyShader::setState(KyShaderState state, bool isOn) {
    const auto index = static_cast<std::size_t>(state);
    if (index < mStates.size())
        mStates[index] = isOn;
}

void KyShader::setBlendFunction(const KyBlendFunction& function) {
    mBlendFunction = function;
    setState(KyShaderState::eBlend, true);
}

bool KyShader::bind() {
    if (!kyGetCurrentGpuHandle() || (!mProgram->isUsable() && !compile()))
        return false;
    glUseProgram(mProgram->get());
    applyStates();
    return true;
}

void KyShader::applyStates() const {
    enable(GL_DEPTH_TEST, getState(KyShaderState::eDepthTest));
    glDepthMask(getState(KyShaderState::eDepthWrite) ? GL_TRUE : GL_FALSE);
    enable(GL_CULL_FACE, getState(KyShaderState::eCullFace));
    enable(GL_BLEND, getState(KyShaderState::eBlend));
    glBlendFunc(look(cFactors, mBlendFunction.source), look(cFactors, mBlendFunction.destination));
    glBlendEquation(look(cEquations, mBlendFunction.equation));
}

bool KyShader::compile() {
    if (mHasFailed)
        return false;
    mErrorText.clear();
    mUniforms.clear();
    const GLuint vertexStage = compileStage(GL_VERTEX_SHADER, mVertexProgram);
    const GLuint fragmentStage = vertexStage != 0 ? compileStage(GL_FRAGMENT_SHADER, mFragmentProgram) : 0;
    const bool isLinked = fragmentStage != 0 && link(vertexStage, fragmentStage);
    glDeleteShader(vertexStage);
    glDeleteShader(fragmentStage);
    if (isLinked)
        return true;
    mHasFailed = true;
    mProgram->reset();
    KyException::create(fmt::format("KyShader::bind(): {}", mErrorText));
    return false;
}

unsigned KyShader::compileStage(unsigned stage, const std::string& source) {
    const GLuint name = glCreateShader(stage);
    const char* text = source.c_str();
    glShaderSource(name, 1, &text, nullptr);
    glCompileShader(name);
    GLint isCompiled = GL_FALSE;
    glGetShaderiv(name, GL_COMPILE_STATUS, &isCompiled);
    // Some drivers compile an empty text.
    if (isCompiled && !source.empty())
        return name;
    mErrorText = source.empty() ? "a program text is empty." : readLog(name, glGetShaderiv, glGetShaderInfoLog);
    glDeleteShader(name);
    return 0;
}

bool KyShader::link(unsigned vertexStage, unsigned fragmentStage) {
    const GLuint program = mProgram->create();
    glAttachShader(program, vertexStage);
    glAttachShader(program, fragmentStage);
    for (std::size_t i = 0; i < cInputs.size(); ++i)
        glBindAttribLocation(program, static_cast<GLuint>(i), cInputs[i]);
    glBindFragDataLocation(program, 0, "kyFragment");
    glLinkProgram(program);
    glDetachShader(program, vertexStage);
    glDetachShader(program, fragmentStage);
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (!isLinked)
        mErrorText = readLog(program, glGetProgramiv, glGetProgramInfoLog);
    return isLinked == GL_TRUE;
}

int KyShader::getLocation(std::string_view name) {
    const auto found = std::ranges::find(mUniforms, name, &Uniform::name);
    if (found != mUniforms.end())
        return found->location;
    mUniforms.push_back({std::string(name), -1});
    mUniforms.back().location = glGetUniformLocation(mProgram->get(), mUniforms.back().name.c_str());
    return mUniforms.back().location;
}

void KyShader::setUniform(std::string_view name, int value) {
    glUniform1i(getLocation(name), value);
}

void KyShader::setUniform(std::string_view name, float value) {
    glUniform1f(getLocation(name), value);
}

void KyShader::setUniform(std::string_view name, const KyVec3f& value) {
    glUniform3f(getLocation(name), value.x, value.y, value.z);
}

void KyShader::setUniform(std::string_view name, const KyColor& value) {
    glUniform4f(getLocation(name), value.red, value.green, value.blue, value.alpha);
}

void KyShader::setUniform(std::string_view name, const KyMat4f& value) {
    glUniformMatrix4fv(getLocation(name), 1, GL_FALSE, value.data());
}

void KyShader::setUniformRotation(std::string_view name, const KyMat4f& value) {
    std::array<float, 9> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = value.get(static_cast<int>(i % 3), static_cast<int>(i / 3));
    glUniformMatrix3fv(getLocation(name), 1, GL_FALSE, numbers.data());
}

void KyShader::setUniformArray(std::string_view name, int nbComponents, std::span<const float> values) {
    if (nbComponents < 1)
        return;
    const int location = getLocation(name);
    const auto count = static_cast<GLsizei>(values.size()) / nbComponents;
    if (nbComponents == 1)
        glUniform1fv(location, count, values.data());
    else if (nbComponents == 3)
        glUniform3fv(location, count, values.data());
    else if (nbComponents == 4)
        glUniform4fv(location, count, values.data());
}
