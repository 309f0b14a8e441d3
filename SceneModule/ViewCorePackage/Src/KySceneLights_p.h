// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

class KyCamera;
class KyLight;
class KyScene;
class KyShader;

/// The lights of one frame in the camera's frame, as the shader takes them.
class KySceneLights {
public:
    KySceneLights(const KyScene& scene, const KyCamera& camera);

    void apply(KyShader& shader) const;

private:
    static constexpr std::size_t cMaxLights = 8;

    void add(const KyLight& light, const KyCamera& camera);
    void addKeyLight();

    std::vector<float> mPositions;
    std::vector<float> mColors;
    std::vector<float> mRanges;
    std::array<float, 3> mUp{};
    std::array<float, 3> mSky{};
    std::array<float, 3> mGround{};
};
