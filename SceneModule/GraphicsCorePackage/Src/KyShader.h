// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyColor.h"
#include "KyGraphicsObject.h"
#include "KyMat4.h"
#include "KyShaderState.h"
#include "KyVec3.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class KyGpuName;

/// A vertex and a fragment program with the switches that they are drawn with. Compiled when it is first bound in a
/// context; a program that does not compile is reported once and binds never. Vertex inputs are named kyPosition (0),
/// kyNormal (1), kyTexCoord (2) and kyColor (3).
///
/// ```
/// shader->setState(KyShaderState::eDepthTest, false);
/// shader->setBlendFunction({KyBlendFactor::eOne, KyBlendFactor::eOneMinusSrcAlpha, KyBlendEquation::eAdd});
/// if (shader->bind())
///     shader->setUniform("kyTop", KyColor(KyColor::eWhite));
/// ```
class KYSCENE_EXPORT KyShader : public KyGraphicsObject {
public:
    static const KyType* getType();
    static KyShader* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    static KyShader* create() { return new KyShader; }
    KyShader();
    ~KyShader() override;
    /// The same texts and switches.
    KyShader* clone() const override;

    /// @{
    /// See setVertexProgram.
    const std::string& getVertexProgram() const { return mVertexProgram; }
    const std::string& getFragmentProgram() const { return mFragmentProgram; }
    /// @}
    /// Depth test and depth write are on at the start.
    bool getState(KyShaderState state) const;
    /// See setBlendFunction.
    const KyBlendFunction& getBlendFunction() const { return mBlendFunction; }
    /// What the compiler or linker said when the program failed last; empty when it did not.
    const std::string& getErrorText() const { return mErrorText; }

    /// GLSL texts, version 150 or what the context takes.
    void setVertexProgram(const std::string& source);
    /// See setVertexProgram.
    void setFragmentProgram(const std::string& source);
    /// See getState.
    void setState(KyShaderState state, bool isOn);
    /// Switches blending on.
    void setBlendFunction(const KyBlendFunction& function);

    /// Uses the program and sets the switches in the current context. False when there is no context or the program
    /// does not compile.
    bool bind();
    /// Of the bound program; a name that it does not use is ignored.
    void setUniform(std::string_view name, int value);
    void setUniform(std::string_view name, float value);
    void setUniform(std::string_view name, const KyVec3f& value);
    void setUniform(std::string_view name, const KyColor& value);
    void setUniform(std::string_view name, const KyMat4f& value);
    /// The upper left 3 x 3 part.
    void setUniformRotation(std::string_view name, const KyMat4f& value);
    /// Arrays of numbers, of vectors of 3 and of 4 numbers.
    void setUniformArray(std::string_view name, int nbComponents, std::span<const float> values);

private:
    struct Uniform {
        std::string name;
        int location;
    };

    bool compile();
    unsigned compileStage(unsigned stage, const std::string& source);
    bool link(unsigned vertexStage, unsigned fragmentStage);
    void applyStates() const;
    int getLocation(std::string_view name);

    std::string mVertexProgram;
    std::string mFragmentProgram;
    std::string mErrorText;
    std::array<bool, static_cast<std::size_t>(KyShaderState::eNbShaderStates)> mStates{true, true, false, false};
    KyBlendFunction mBlendFunction;
    std::unique_ptr<KyGpuName> mProgram;
    std::vector<Uniform> mUniforms;
    bool mHasFailed = false;

    static const KyType* msType;
};
