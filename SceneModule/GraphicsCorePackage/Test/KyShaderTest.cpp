// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGlTest.h"

#include "KyProgramSourceManager.h"
#include "KyShader.h"

#include "KyException.h"

#include <epoxy/gl.h>

#include <array>

namespace {

int gNbReports = 0;

class KyShaderTest : public KyGlTest {
protected:
    KyShaderTest()
        : mFormer(KyException::setReportHandler([](const std::string&) { ++gNbReports; })) {
        gNbReports = 0;
    }
    ~KyShaderTest() override { KyException::setReportHandler(mFormer); }

    static void usePrograms(KyShader& shader, const char* vertex, const char* fragment) {
        shader.setVertexProgram(KyProgramSourceManager::get().getSource(vertex));
        shader.setFragmentProgram(KyProgramSourceManager::get().getSource(fragment));
    }

    KyException::ReportHandler mFormer;
};

TEST_F(KyShaderTest, AllShippedProgramsCompileInCoreAndCompatibilityContexts) {
    constexpr std::array<std::array<const char*, 2>, 4> cPairs{{{"KyPrevious_vp.glsl", "KyPrevious_fp.glsl"},
                                                                {"KyBackground_vp.glsl", "KyBackground_fp.glsl"},
                                                                {"KyScene_vp.glsl", "KyScene_fp.glsl"},
                                                                {"KyScene_vp.glsl", "KyGrid_fp.glsl"}}};
    for (const auto profile : {KyOffscreenContext::eCore, KyOffscreenContext::eCompatibility}) {
        std::string error;
        const auto context = KyOffscreenContext::create(error, profile);
        ASSERT_TRUE(context) << error;
        for (const auto& pair : cPairs) {
            KyShader shader;
            usePrograms(shader, pair[0], pair[1]);
            EXPECT_TRUE(shader.bind()) << pair[1] << ": " << shader.getErrorText();
        }
    }
}

TEST_F(KyShaderTest, ABrokenProgramIsReportedOnceAndNeverBinds) {
    KyShader shader;
    usePrograms(shader, "KyPrevious_vp.glsl", "KyPrevious_fp.glsl");
    shader.setFragmentProgram("#version 150\nvoid main() { nonsense }\n");
    EXPECT_FALSE(shader.bind());
    EXPECT_FALSE(shader.bind());
    EXPECT_EQ(gNbReports, 1);
    EXPECT_FALSE(shader.getErrorText().empty());
    usePrograms(shader, "KyPrevious_vp.glsl", "KyPrevious_fp.glsl");
    EXPECT_TRUE(shader.bind());
    EXPECT_EQ(shader.getErrorText(), "");
}

} // namespace
