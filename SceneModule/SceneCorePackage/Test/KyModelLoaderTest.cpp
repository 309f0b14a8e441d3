// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMeshNode.h"
#include "KyModelFiles.h"

#include "KyException.h"
#include "KyProgress.h"
#include "KyTracker.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace {

const std::string cObj = "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n";

const std::string cPly =
    "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
    "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
    "0 0 0\n2 0 0\n0 3 0\n3 0 1 2\n";

const std::string cTextStl = "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 2 0 0\nvertex 0 3 0\n"
                             "endloop\nendfacet\nendsolid a\n";

std::string makeBinaryStl(std::uint32_t claimed, std::size_t facets) {
    std::string bytes(80, ' ');
    bytes.append(reinterpret_cast<const char*>(&claimed), sizeof(claimed));
    const float numbers[12] = {0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0};
    for (std::size_t i = 0; i < facets; ++i) {
        bytes.append(reinterpret_cast<const char*>(numbers), sizeof(numbers));
        bytes.append(2, '\0');
    }
    return bytes;
}

std::string makeGarbage() {
    std::string bytes;
    for (unsigned i = 0, state = 12345; i < 5000; ++i) {
        state = state * 1664525u + 1013904223u;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

class KyModelLoaderTest : public KyModelFiles {};

TEST_F(KyModelReading, WholeFilesBecomeNodesThatNobodyHoldsYet) {
    const std::pair<const char*, std::string> cases[] = {
        {"a.obj", cObj}, {"a.ply", cPly}, {"text.stl", cTextStl}, {"binary.stl", makeBinaryStl(1, 1)}};
    for (const auto& [name, bytes] : cases)
        expectTriangle(name, bytes);
}

TEST_F(KyModelLoaderTest, WhatIsNoWholeModelIsRefusedWithATextThatNamesTheFile) {
    const std::pair<const char*, std::string> cases[] = {
        {"empty.obj", ""},
        {"cut.obj", cObj.substr(0, cObj.size() - 5)},
        {"beyondHuge.obj", "v 0 0 0\nv 1 0 0\nf 1 2 2147483647\n"},
        {"cut.ply", cPly.substr(0, cPly.find("2 0 0"))},
        {"huge.ply", "ply\nformat ascii 1.0\nelement vertex 4294967295\nproperty float x\nproperty float y\n"
                     "property float z\nend_header\n0 0 0\n"},
        {"overflow.ply", "ply\nformat binary_little_endian 1.0\nelement vertex 18446744073709551615\n"
                         "property float x\nproperty float y\nproperty float z\nend_header\n" +
                             std::string(100, '\0')},
        {"cutBinary.stl", makeBinaryStl(3, 2)},
        {"garbage.obj", makeGarbage()},
        {"garbage.stl", makeGarbage()},
        {"garbage.glb", "glTF" + makeGarbage()},
        {"garbage.fbx", makeGarbage()},
        {"noextension", cObj},
    };
    for (const auto& [name, bytes] : cases)
        expectRefused(name, bytes);
}

TEST_F(KyModelReading, EveryExtensionHasAReaderOfItsOwn) {
    const std::map<std::string, std::string> files = {{"obj", cObj},         {"ply", cPly},
                                                      {"stl", cTextStl},     {"gltf", R"({"asset":{"version":"2.0"}})"},
                                                      {"dae", "<COLLADA/>"}, {"x", "xof 0303txt 0032"}};
    for (const std::string& extension : KyModelLoader::getExtensions()) {
        const std::string bytes = files.contains(extension) ? files.at(extension) : "nothing of the kind\n";
        std::string error;
        const KyHolder<KyNode> model(KyModelLoader::load(write("model." + extension, bytes), error));
        EXPECT_TRUE(model || !error.empty()) << extension;
        EXPECT_EQ(error.find("No suitable reader"), std::string::npos) << error;
    }
}

TEST_F(KyModelLoaderTest, WhatIsNoFileIsRefused) {
    std::string error;
    EXPECT_EQ(KyModelLoader::load(getURL("missing.obj"), error), nullptr);
    std::filesystem::create_directory(mDirectory / "folder.obj");
    EXPECT_EQ(KyModelLoader::load(getURL("folder.obj"), error), nullptr);
    EXPECT_EQ(KyModelLoader::load(KyURL("http://host/a.obj"), error), nullptr);
    EXPECT_NE(error.find("http://host/a.obj"), std::string::npos);
}

TEST_F(KyModelLoaderTest, AMeshNodeReportsAModelThatItCannotLoad) {
    static std::string report;
    const auto former = KyException::setReportHandler([](const std::string& text) { report = text; });
    KyMeshNode node;
    EXPECT_FALSE(node.loadModel(getURL("missing.obj")));
    KyException::setReportHandler(former);
    EXPECT_NE(report.find("missing.obj"), std::string::npos);
    EXPECT_EQ(node.getNbChildren(), 0u);
}

/// So large that reading it takes a while: a grid of triangles.
std::string makeLargeObj(int side = 200) {
    std::string text;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            text += "v " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(x * y % 7) + "\n";
    for (int i = 1; i + side < side * side; ++i)
        text += "f " + std::to_string(i) + " " + std::to_string(i + 1) + " " + std::to_string(i + side) + "\n";
    return text;
}

TEST_F(KyModelReading, ATrackerIsToldHowFarTheFileIsReadAndMayCancelIt) {
    const KyURL url = write("large.obj", makeLargeObj());
    std::string error;
    std::vector<double> told;
    KyTracker tracker;
    tracker.setNbSteps(2);
    tracker.setListener([&told](double share) { told.push_back(share); });
    KyHolder<KyNode> model(KyModelLoader::load(url, error, &tracker));
    ASSERT_TRUE(model) << error;
    EXPECT_DOUBLE_EQ(told.back(), 0.5) << "the file is one of two steps";
    EXPECT_GE(told.size(), 3u);
    EXPECT_LT(told.front(), 0.2);
    tracker.setListener([&tracker](double) { tracker.cancel(); });
    model.reset(KyModelLoader::load(url, error, &tracker));
    EXPECT_FALSE(model);
    EXPECT_NE(error.find("large.obj\" cannot be loaded: it was cancelled."), std::string::npos) << error;
    KyModelLoader::finalizeType();
}

TEST_F(KyModelReading, ACancelledReadingComesToItsEndSoonerThanTheFile) {
    using Clock = std::chrono::steady_clock;
    const KyURL url = write("larger.obj", makeLargeObj(400));
    const auto measure = [&url](double lastShare) {
        std::string error;
        KyTracker tracker;
        tracker.setNbSteps(1);
        tracker.setListener([&](double share) { share > lastShare ? tracker.cancel() : void(); });
        const Clock::time_point begin = Clock::now();
        EXPECT_EQ(bool(KyHolder<KyNode>(KyModelLoader::load(url, error, &tracker))), lastShare >= 1.0) << error;
        KyModelLoader::finalizeType(); // waits for what goes on
        return Clock::now() - begin;
    };
    const auto whole = measure(1.0);
    EXPECT_LT(measure(0.5), whole * 4 / 5) << "most of the time comes after smoothing";
}

TEST_F(KyModelReading, ACancelledLoadLeavesTheNodeAsItWas) {
    KyProgress& progress = KyProgress::get();
    KyHasSlots slots;
    std::string title;
    progress.open();
    progress.setQuietTime(0);
    progress.changedSignal().connect(slots, [&](const std::string& text, double) {
        title = text;
        progress.cancel();
    });
    KyMeshNode node;
    static std::string report;
    const auto former = KyException::setReportHandler([](const std::string& text) { report = text; });
    EXPECT_FALSE(node.loadModel(write("large.obj", makeLargeObj())));
    KyException::setReportHandler(former);
    progress.close();
    progress.setQuietTime(100);
    KyModelLoader::finalizeType();
    EXPECT_EQ(title, "Loading large.obj");
    EXPECT_NE(report.find("cancelled"), std::string::npos) << report;
    EXPECT_EQ(node.getNbChildren(), 0u);
}

} // namespace
