// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPass.h"
#include "KyQtPass.h"
#include "KyWindowTesting.h"

#include "Ky2DScene.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsStateScope.h"
#include "KyOffscreenContext.h"
#include "KyRendererContext.h"

#include <QApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QLabel>
#include <QTemporaryDir>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>

namespace {

GLuint make(void (*generate)(GLsizei, GLuint*)) {
    GLuint name = 0;
    generate(1, &name);
    return name;
}

GLuint makeProgram() {
    const GLuint program = glCreateProgram();
    for (const auto& [type, text] : {std::pair(GL_VERTEX_SHADER, "void main() { gl_Position = vec4(0.0); }"),
                                     std::pair(GL_FRAGMENT_SHADER, "void main() { discard; }")}) {
        const GLuint shader = glCreateShader(static_cast<GLenum>(type));
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
    }
    glLinkProgram(program);
    return program;
}

/// A value of the GL state, and what makes it unlike the one that a context begins with.
struct Value {
    const char* name;
    GLenum query;
    unsigned count;
    void (*change)();
};

/// Another row sets what has none here.
constexpr auto cAlready = [] {};

const Value cValues[] = {
    {"draw frame buffer", GL_DRAW_FRAMEBUFFER_BINDING, 1,
     [] { glBindFramebuffer(GL_DRAW_FRAMEBUFFER, make(glGenFramebuffers)); }},
    {"read frame buffer", GL_READ_FRAMEBUFFER_BINDING, 1,
     [] { glBindFramebuffer(GL_READ_FRAMEBUFFER, make(glGenFramebuffers)); }},
    {"render buffer", GL_RENDERBUFFER_BINDING, 1,
     [] { glBindRenderbuffer(GL_RENDERBUFFER, make(glGenRenderbuffers)); }},
    {"program", GL_CURRENT_PROGRAM, 1, [] { glUseProgram(makeProgram()); }},
    {"vertex array", GL_VERTEX_ARRAY_BINDING, 1, [] { glBindVertexArray(make(glGenVertexArrays)); }},
    {"array buffer", GL_ARRAY_BUFFER_BINDING, 1, [] { glBindBuffer(GL_ARRAY_BUFFER, make(glGenBuffers)); }},
    {"element buffer", GL_ELEMENT_ARRAY_BUFFER_BINDING, 1,
     [] { glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, make(glGenBuffers)); }},
    {"uniform buffer", GL_UNIFORM_BUFFER_BINDING, 1, [] { glBindBuffer(GL_UNIFORM_BUFFER, make(glGenBuffers)); }},
    {"pack buffer", GL_PIXEL_PACK_BUFFER_BINDING, 1, [] { glBindBuffer(GL_PIXEL_PACK_BUFFER, make(glGenBuffers)); }},
    {"unpack buffer", GL_PIXEL_UNPACK_BUFFER_BINDING, 1,
     [] { glBindBuffer(GL_PIXEL_UNPACK_BUFFER, make(glGenBuffers)); }},
    {"pack alignment", GL_PACK_ALIGNMENT, 1, [] { glPixelStorei(GL_PACK_ALIGNMENT, 2); }},
    {"pack row length", GL_PACK_ROW_LENGTH, 1, [] { glPixelStorei(GL_PACK_ROW_LENGTH, 7); }},
    {"pack skipped rows", GL_PACK_SKIP_ROWS, 1, [] { glPixelStorei(GL_PACK_SKIP_ROWS, 1); }},
    {"pack skipped pixels", GL_PACK_SKIP_PIXELS, 1, [] { glPixelStorei(GL_PACK_SKIP_PIXELS, 1); }},
    {"unpack alignment", GL_UNPACK_ALIGNMENT, 1, [] { glPixelStorei(GL_UNPACK_ALIGNMENT, 2); }},
    {"unpack row length", GL_UNPACK_ROW_LENGTH, 1, [] { glPixelStorei(GL_UNPACK_ROW_LENGTH, 7); }},
    {"unpack skipped rows", GL_UNPACK_SKIP_ROWS, 1, [] { glPixelStorei(GL_UNPACK_SKIP_ROWS, 1); }},
    {"unpack skipped pixels", GL_UNPACK_SKIP_PIXELS, 1, [] { glPixelStorei(GL_UNPACK_SKIP_PIXELS, 1); }},
    {"viewport", GL_VIEWPORT, 4, [] { glViewport(5, 6, 7, 8); }},
    {"scissor test", GL_SCISSOR_TEST, 1, [] { glEnable(GL_SCISSOR_TEST); }},
    {"scissor box", GL_SCISSOR_BOX, 4, [] { glScissor(1, 2, 3, 4); }},
    {"clear colour", GL_COLOR_CLEAR_VALUE, 4, [] { glClearColor(0.1f, 0.2f, 0.3f, 0.4f); }},
    {"clear depth", GL_DEPTH_CLEAR_VALUE, 1, [] { glClearDepth(0.25); }},
    {"clear stencil", GL_STENCIL_CLEAR_VALUE, 1, [] { glClearStencil(3); }},
    {"colour mask", GL_COLOR_WRITEMASK, 4, [] { glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_FALSE); }},
    {"blend", GL_BLEND, 1, [] { glEnable(GL_BLEND); }},
    {"blend source", GL_BLEND_SRC_RGB, 1, [] { glBlendFuncSeparate(GL_DST_COLOR, GL_ONE, GL_ZERO, GL_SRC_ALPHA); }},
    {"blend destination", GL_BLEND_DST_RGB, 1, cAlready},
    {"blend source alpha", GL_BLEND_SRC_ALPHA, 1, cAlready},
    {"blend destination alpha", GL_BLEND_DST_ALPHA, 1, cAlready},
    {"blend equation", GL_BLEND_EQUATION_RGB, 1, [] { glBlendEquationSeparate(GL_MIN, GL_MAX); }},
    {"blend equation alpha", GL_BLEND_EQUATION_ALPHA, 1, cAlready},
    {"blend colour", GL_BLEND_COLOR, 4, [] { glBlendColor(0.4f, 0.3f, 0.2f, 0.1f); }},
    {"depth test", GL_DEPTH_TEST, 1, [] { glEnable(GL_DEPTH_TEST); }},
    {"depth mask", GL_DEPTH_WRITEMASK, 1, [] { glDepthMask(GL_FALSE); }},
    {"depth function", GL_DEPTH_FUNC, 1, [] { glDepthFunc(GL_NOTEQUAL); }},
    {"depth range", GL_DEPTH_RANGE, 2, [] { glDepthRange(0.25, 0.75); }},
    {"cull face", GL_CULL_FACE, 1, [] { glEnable(GL_CULL_FACE); }},
    {"culled face", GL_CULL_FACE_MODE, 1, [] { glCullFace(GL_FRONT); }},
    {"front face", GL_FRONT_FACE, 1, [] { glFrontFace(GL_CW); }},
    {"stencil test", GL_STENCIL_TEST, 1, [] { glEnable(GL_STENCIL_TEST); }},
    {"stencil function", GL_STENCIL_FUNC, 1, [] { glStencilFunc(GL_EQUAL, 1, 0x0f); }},
    {"stencil value mask", GL_STENCIL_VALUE_MASK, 1, cAlready},
    {"stencil mask", GL_STENCIL_WRITEMASK, 1, [] { glStencilMask(0x3c); }},
    {"stencil fail", GL_STENCIL_FAIL, 1, [] { glStencilOp(GL_ZERO, GL_INCR, GL_DECR); }},
    {"stencil depth fail", GL_STENCIL_PASS_DEPTH_FAIL, 1, cAlready},
    {"stencil depth pass", GL_STENCIL_PASS_DEPTH_PASS, 1, cAlready},
    {"polygon mode", GL_POLYGON_MODE, 1, [] { glPolygonMode(GL_FRONT_AND_BACK, GL_LINE); }},
    {"polygon offset", GL_POLYGON_OFFSET_FILL, 1, [] { glEnable(GL_POLYGON_OFFSET_FILL); }},
    {"polygon offset factor", GL_POLYGON_OFFSET_FACTOR, 1, [] { glPolygonOffset(2.0f, 3.0f); }},
    {"polygon offset units", GL_POLYGON_OFFSET_UNITS, 1, cAlready},
    {"multisampling", GL_MULTISAMPLE, 1, [] { glDisable(GL_MULTISAMPLE); }},
    {"alpha to coverage", GL_SAMPLE_ALPHA_TO_COVERAGE, 1, [] { glEnable(GL_SAMPLE_ALPHA_TO_COVERAGE); }},
    {"dithering", GL_DITHER, 1, [] { glDisable(GL_DITHER); }},
    {"sRGB", GL_FRAMEBUFFER_SRGB, 1, [] { glEnable(GL_FRAMEBUFFER_SRGB); }},
    {"active texture", GL_ACTIVE_TEXTURE, 1, [] { glActiveTexture(GL_TEXTURE3); }},
};

/// Those that a pass of this program binds textures to, and more.
constexpr GLenum cNbUnits = 8;

class State {
public:
    State();

    static void change();
    void expectEqual(const State& before) const;
    void expectAllDiffer(const State& before) const;

private:
    using Values = std::array<double, 4>;

    std::array<Values, std::size(cValues)> mValues{};
    std::array<Values, cNbUnits> mUnits{};
};

State::State() {
    for (std::size_t i = 0; i < mValues.size(); ++i) {
        glGetDoublev(cValues[i].query, mValues[i].data());
        std::fill(mValues[i].begin() + cValues[i].count, mValues[i].end(), 0.0);
    }
    GLint active = 0;
    glGetIntegerv(GL_ACTIVE_TEXTURE, &active);
    for (GLenum unit = 0; unit < cNbUnits; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        glGetDoublev(GL_TEXTURE_BINDING_2D, &mUnits[unit][0]);
        glGetDoublev(GL_TEXTURE_BINDING_CUBE_MAP, &mUnits[unit][1]);
        glGetDoublev(GL_SAMPLER_BINDING, &mUnits[unit][2]);
    }
    glActiveTexture(static_cast<GLenum>(active));
}

void State::change() {
    for (GLenum unit = 0; unit < cNbUnits; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        glBindTexture(GL_TEXTURE_2D, make(glGenTextures));
        glBindTexture(GL_TEXTURE_CUBE_MAP, make(glGenTextures));
        const GLuint sampler = make(glGenSamplers);
        // The one a texture begins with shows nothing of a picture in one size.
        glSamplerParameteri(sampler, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glBindSampler(unit, sampler);
    }
    for (const Value& value : cValues)
        value.change();
}

void State::expectEqual(const State& before) const {
    // Qt's platform without a screen resets it whenever a context becomes current.
    static const bool sLosesViewport = QGuiApplication::platformName() == "offscreen";
    for (std::size_t i = 0; i < mValues.size(); ++i)
        if (!sLosesViewport || cValues[i].query != GL_VIEWPORT) {
            EXPECT_EQ(mValues[i], before.mValues[i]) << cValues[i].name;
        }
    for (std::size_t unit = 0; unit < mUnits.size(); ++unit)
        EXPECT_EQ(mUnits[unit], before.mUnits[unit]) << "texture unit " << unit;
}

void State::expectAllDiffer(const State& before) const {
    for (std::size_t i = 0; i < mValues.size(); ++i)
        EXPECT_NE(mValues[i], before.mValues[i]) << cValues[i].name;
    for (std::size_t unit = 0; unit < mUnits.size(); ++unit)
        EXPECT_NE(mUnits[unit], before.mUnits[unit]) << "texture unit " << unit;
}

/// An overlay whose pass shows nothing but red, with a text at its top left.
struct Kind {
    const char* name;
    KyGraphicsViewMultiPass* (*make)(KyGraphicsViewMultiPass* parent, const QString& qml);
    /// Whether the host's context is not Qt's.
    bool isForeign = false;

    friend void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }
};

template <KyQtPass::PaintMethod Method>
KyGraphicsViewMultiPass* makeScene(KyGraphicsViewMultiPass* parent, const QString&) {
    auto* const overlay = KyQtPass::createQtPassOverlayView(parent, true, true);
    KyQtPass& pass = *KyQtPass::cast(overlay->getMainPass());
    pass.setPaintMethod(Method);
    pass.editQGraphicsScene()->addRect(-500, -500, 1000, 1000, {}, Qt::red);
    pass.editQGraphicsScene()->addText("A text")->setPos(-250, -250);
    return overlay;
}

template <KyQtPass::PaintMethod Method>
KyGraphicsViewMultiPass* makeWidget(KyGraphicsViewMultiPass* parent, const QString& qml) {
    auto* const overlay = makeScene<Method>(parent, qml);
    auto* const label = new QLabel("A text");
    label->setStyleSheet("background: red");
    label->setAlignment(Qt::AlignTop);
    KyQtPass::cast(overlay->getMainPass())->setQWidget(label, true);
    return overlay;
}

KyGraphicsViewMultiPass* makeQml(KyGraphicsViewMultiPass* parent, const QString& qml) {
    auto* const overlay = KyQmlPass::createQmlPassOverlayView(parent, true, true);
    KyQmlPass::cast(overlay->getMainPass())->setQml(qml);
    return overlay;
}

constexpr const char* cBackend = "QT_QUICK_BACKEND";

std::vector<Kind> getKinds() {
    std::vector<Kind> kinds{{"Scene", &makeScene<KyQtPass::eFrameBuffer>},
                            {"Widget", &makeWidget<KyQtPass::eFrameBuffer>},
                            {"SceneOnImage", &makeScene<KyQtPass::eImage>},
                            {"WidgetOnImage", &makeWidget<KyQtPass::eImage>},
                            {"SceneInForeignContext", &makeScene<KyQtPass::eAutomatic>, true},
                            {"WidgetInForeignContext", &makeWidget<KyQtPass::eAutomatic>, true},
                            {"Qml", &makeQml}};
    // Needs the software renderer, which a process has from its first pass on or never.
    if (qEnvironmentVariableIsSet(cBackend))
        kinds.push_back({"QmlInForeignContext", &makeQml, true});
    return kinds;
}

std::unique_ptr<KyGraphicsDevice> makeDevice(bool isForeign, std::string& error) {
    if (isForeign)
        return KyOffscreenContext::create(error);
    return KyQGraphicsDevice::createOffscreen(error, KyWindow::getDefaultFormat());
}

class KyPassGlStateTest : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override {
        ASSERT_TRUE(mDevice && mDevice->makeCurrent()) << mError;
        QFile file(mFolder.filePath("red.qml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("import QtQuick 2.15\nRectangle { color: 'red'; Text { text: 'A text' } }");
        mCanvas->insertView(mBack.get());
        mOverlay.reset(GetParam().make(mBack.get(), file.fileName()));
        setSize(160, 120);
        const State fresh;
        State::change();
        State().expectAllDiffer(fresh);
    }

    void setSize(int width, int height) {
        mCanvas->setSize(width, height);
        mTarget->setSize(width, height);
    }
    KyBaseGraphicsPass& getPass() { return *mOverlay->getMainPass(); }
    /// Changes with each painting.
    std::uint64_t getVersion() { return getPass().getFrameBuffer()->getColorTexture()->getVersion(); }
    KyColor readPixel(const KyVec2f& pixel) {
        if (KyQtPass* const pass = KyQtPass::cast(&getPass()))
            return pass->getPixelColor(pixel, mOverlay.get());
        return KyQmlPass::cast(&getPass())->getPixelColor(pixel, mOverlay.get());
    }

    /// Draws a first frame, more until nothing waits, an idle one, and one in another size.
    void expectStateKeptBy(const std::function<void(KyRendererContext&)>& draw) {
        const auto drawFrame = [&](const char* name) {
            SCOPED_TRACE(name);
            ASSERT_TRUE(mDevice->makeCurrent());
            KyRendererContext context(mDevice.get());
            context.setTarget(mTarget.get());
            const std::uint64_t version = getVersion();
            draw(context);
            mHasPainted = getVersion() != version;
            EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        };
        drawFrame("first");
        EXPECT_TRUE(mHasPainted);
        for (int i = 0; i < 20 && mHasPainted; ++i) {
            QApplication::processEvents();
            drawFrame("settling");
        }
        drawFrame("idle");
        EXPECT_FALSE(mHasPainted);
        setSize(171, 93);
        drawFrame("resized");
        EXPECT_TRUE(mHasPainted);
    }

    std::string mError;
    std::unique_ptr<KyGraphicsDevice> mDevice = makeDevice(GetParam().isForeign, mError);
    QTemporaryDir mFolder;
    KyHolder<KyCanvas> mCanvas{new KyCanvas};
    KyHolder<KyFrameBuffer> mTarget{KyFrameBuffer::create()};
    KyHolder<KyGraphicsViewMultiPass> mBack{KyGraphicsViewMultiPass::create()};
    KyHolder<KyGraphicsViewMultiPass> mOverlay;
    bool mHasPainted = false;
};

TEST_P(KyPassGlStateTest, TheHostFindsItsStateAfterAFrame) {
    const State before;
    expectStateKeptBy([&](KyRendererContext& context) {
        ASSERT_TRUE(mCanvas->render(context));
        State().expectEqual(before);
    });
    {
        const KyGraphicsStateScope scope;
        const QImage picture = kyToImage(KyHolder<KyImage>(mTarget->readPixels()).get());
        EXPECT_EQ(picture.pixelColor(160, 80), QColor(Qt::red));
    }
    EXPECT_EQ(readPixel({160.0f, 80.0f}), KyColor(1.0f, 0.0f, 0.0f));
    State().expectEqual(before);
    if (const KyQtPass* const pass = KyQtPass::cast(&getPass())) {
        EXPECT_EQ(pass->isPaintedByFrameBuffer(), pass->getPaintMethod() == KyQtPass::eFrameBuffer);
    }
}

TEST_P(KyPassGlStateTest, OtherPassesFindTheirStateAfterIt) {
    expectStateKeptBy([this](KyRendererContext& context) {
        // What a canvas does before its passes.
        const KyGraphicsStateScope scope;
        // What uploads pixels says this itself.
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        const State before;
        getPass().adaptView(*mOverlay);
        getPass().preRender(context);
        getPass().doRender(context, *mOverlay);
        getPass().postRender(context);
        State().expectEqual(before);
    });
}

INSTANTIATE_TEST_SUITE_P(, KyPassGlStateTest, testing::ValuesIn(getKinds()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(KyPassGlStateProcessTest, HoldsForSoftwareQmlAndOnAScreen) {
    EXPECT_EQ(kyRunProcess("*KyPassGlStateTest.*Qml*", cBackend, "software"), 0);
    if (qEnvironmentVariableIsSet("DISPLAY")) {
        EXPECT_EQ(kyRunProcess("*KyPassGlStateTest.*", "QT_QPA_PLATFORM", "xcb"), 0);
    }
}

} // namespace
