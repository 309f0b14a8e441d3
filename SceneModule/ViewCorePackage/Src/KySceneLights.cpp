// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySceneLights_p.h"

#include "KyCamera.h"
#include "KyLight.h"
#include "KyScene.h"
#include "KyShader.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

std::array<float, 3> toFloats(const KyVec3d& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

float toLinear(float value) {
    return std::pow(std::max(value, 0.0f), 2.2f);
}

std::array<float, 3> toLinear(const KyColor& c) {
    return {toLinear(c.red), toLinear(c.green), toLinear(c.blue)};
}

KyVec3f toVector(const std::array<float, 3>& numbers) {
    return KyVec3f(numbers[0], numbers[1], numbers[2]);
}

void append(std::vector<float>& values, const std::array<float, 3>& numbers) {
    values.insert(values.end(), numbers.begin(), numbers.end());
}

} // namespace

KySceneLights::KySceneLights(const KyScene& scene, const KyCamera& camera)
    : mUp(toFloats(camera.getViewMatrix().transformVector(KyVec3d(0, 1, 0))))
    , mSky(toLinear(scene.getSkyColor()))
    , mGround(toLinear(scene.getGroundColor())) {
    const std::vector<KyLight*> lights = scene.getLights();
    for (const KyLight* light : std::span(lights).first(std::min(lights.size(), cMaxLights)))
        add(*light, camera);
    if (lights.empty())
        addKeyLight();
}

void KySceneLights::add(const KyLight& light, const KyCamera& camera) {
    const KyMat4d view = camera.getViewMatrix();
    const bool isPoint = light.getKind() == KyLight::ePoint;
    append(mPositions, toFloats(isPoint ? view.transformPoint(light.getWorldPosition())
                                        : view.transformVector(-light.getWorldDirection())));
    mPositions.push_back(isPoint ? 1.0f : 0.0f);
    std::array<float, 3> color = toLinear(light.getColor());
    std::ranges::for_each(color, [&light](float& value) { value *= static_cast<float>(light.getIntensity()); });
    append(mColors, color);
    mRanges.push_back(isPoint ? static_cast<float>(light.getRange()) : 0.0f);
}

void KySceneLights::addKeyLight() {
    // Over the left shoulder, a little warm; a weak cool one from the right keeps the other side from going flat.
    struct Default {
        KyVec3d direction;
        std::array<float, 3> color;
    };
    static const std::array<Default, 2> cDefaults{
        {{KyVec3d(-0.50, 0.75, 0.62), {1.02f, 0.97f, 0.90f}}, {KyVec3d(0.85, 0.10, 0.25), {0.10f, 0.13f, 0.18f}}}};
    for (const Default& light : cDefaults) {
        KyVec3d direction = light.direction;
        direction.normalize();
        append(mPositions, toFloats(direction));
        mPositions.push_back(0.0f);
        append(mColors, light.color);
        mRanges.push_back(0.0f);
    }
}

void KySceneLights::apply(KyShader& shader) const {
    shader.setUniform("kyUp", toVector(mUp));
    shader.setUniform("kySky", toVector(mSky));
    shader.setUniform("kyGround", toVector(mGround));
    shader.setUniform("kyNbLights", static_cast<int>(mRanges.size()));
    shader.setUniformArray("kyLightPosition", 4, mPositions);
    shader.setUniformArray("kyLightColor", 3, mColors);
    shader.setUniformArray("kyLightRange", 1, mRanges);
}
