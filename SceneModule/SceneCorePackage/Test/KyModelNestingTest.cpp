// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelFiles.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace {

constexpr unsigned cHostile = 20000;

std::string repeat(const std::string& text, unsigned count) {
    std::string result;
    for (unsigned i = 0; i < count; ++i)
        result += text;
    return result;
}

/// One triangle of 2 by 3, shown by the node of the highest index.
std::string makeGltf(const std::string& nodes, const std::string& extras = "0") {
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"extras":)" + extras + R"(,"nodes":[)" +
           nodes +
           R"(],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],"accessors":[{"bufferView":0,)"
           R"("componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[2,3,0]}],)"
           R"("bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,"uri":)"
           R"("data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAAAAQAAAAAAAAAAAAAAAAAAAQEAAAAAA"}]})";
}

/// Each node below the one before; `key` is how the list of a node's children is called.
std::string makeNodes(unsigned levels, const std::string& key = "children") {
    std::string nodes;
    for (unsigned i = 0; i < levels; ++i)
        nodes += "{\"" + key + "\":[" + std::to_string(i + 1) + "]},";
    return nodes + R"({"mesh":0})";
}

std::string makeFirstGltf(unsigned levels) {
    std::string nodes;
    for (unsigned i = 0; i < levels; ++i)
        nodes += "\"n" + std::to_string(i) + R"(":{"children":["n)" + std::to_string(i + 1) + "\"]},";
    return R"({"asset":{"version":"1.0"},"scene":"s","scenes":{"s":{"nodes":["n0"]}},"nodes":{)" + nodes + "\"n" +
           std::to_string(levels) + "\":{}}}";
}

void append(std::string& bytes, std::uint32_t number) {
    for (unsigned i = 0; i < 4; ++i)
        bytes += static_cast<char>(number >> 8 * i & 0xffu);
}

/// The text and, as the buffer that the text then does not hold itself, the triangle's corners.
std::string makeGlb(std::string json) {
    if (const std::size_t uri = json.find(",\"uri\""); uri != std::string::npos)
        json.erase(uri, json.find('}', uri) - uri);
    json.resize((json.size() + 3) / 4 * 4, ' ');
    constexpr std::array<float, 9> cCorners{0, 0, 0, 2, 0, 0, 0, 3, 0};
    std::string bytes = "glTF";
    append(bytes, 2);
    append(bytes, static_cast<std::uint32_t>(json.size() + 28 + sizeof(cCorners)));
    append(bytes, static_cast<std::uint32_t>(json.size()));
    bytes += "JSON" + json;
    append(bytes, sizeof(cCorners));
    bytes.append("BIN\0", 4);
    return bytes.append(reinterpret_cast<const char*>(cCorners.data()), sizeof(cCorners));
}

std::string makeDae(unsigned levels, const std::string& before = {}) {
    return "<?xml version=\"1.0\"?><!-- <a> -->" + before +
           R"(<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset/>)"
           R"(<library_geometries><geometry id="g"><mesh><source id="p"><float_array id="f" count="9">)"
           R"(0 0 0 2 0 0 0 3 0</float_array><technique_common><accessor source="#f" count="3" stride="3">)"
           R"(<param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/></accessor>)"
           R"(</technique_common></source><vertices id="v"><input semantic="POSITION" source="#p"/></vertices>)"
           R"(<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles></mesh>)"
           R"(</geometry></library_geometries><library_visual_scenes><visual_scene id="s">)" +
           repeat("<node name=\"a>\">", levels) + R"(<instance_geometry url="#g"/>)" + repeat("</node>", levels) +
           R"(</visual_scene></library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>)";
}

std::string makeX(unsigned levels, const std::string& name = "a") {
    return "xof 0303txt 0032\n" + repeat("Frame " + name + " {\n", levels) +
           "Mesh {\n3;\n0;0;0;,\n2;0;0;,\n0;3;0;;\n1;\n3;0,1,2;;\n}\n" + repeat("}\n", levels);
}

std::string makeTextFbx(unsigned levels) {
    return "; FBX 7.3.0 project file\n" + repeat("A: {\n", levels) + repeat("}\n", levels);
}

std::string makeBinaryFbx(unsigned levels) {
    std::string bytes("Kaydara FBX Binary  \0\x1a\0", 23);
    append(bytes, 7300);
    constexpr unsigned cRecord = 14, cEmpty = 13;
    const auto end = static_cast<std::uint32_t>(bytes.size()) + levels * (cRecord + cEmpty);
    for (unsigned i = 0; i < levels; ++i) {
        append(bytes, end - i * cEmpty);
        append(bytes, 0);
        append(bytes, 0);
        bytes += "\1A";
    }
    return bytes + std::string(levels * cEmpty, '\0');
}

using KyModelNestingTest = KyModelReading;

TEST_F(KyModelNestingTest, FilesThatNestLikeOthersAreRead) {
    const std::pair<const char*, std::string> cases[] = {
        {"tree.gltf", makeGltf(makeNodes(300))},
        {"texts.gltf", makeGltf(makeNodes(1), "\"" + repeat("[{\\\"", 500) + "\"")},
        {"tree.glb", makeGlb(makeGltf(makeNodes(300)))},
        {"tree.dae", makeDae(300)},
        {"tree.x", makeX(300)},
    };
    for (const auto& [name, bytes] : cases)
        expectTriangle(name, bytes);
}

TEST_F(KyModelNestingTest, FilesThatNestTooDeeplyAreRefusedByName) {
    const std::pair<const char*, std::string> cases[] = {
        {"brackets.glb", makeGlb(repeat("[", 200000))},
        {"extras.gltf", makeGltf(makeNodes(1), repeat("[", 200) + repeat("]", 200))},
        {"chain.gltf", makeGltf(makeNodes(cHostile))},
        {"escapes.gltf", makeGltf(makeNodes(cHostile, "\\u0063hildren"))},
        {"meshBeyond.gltf", makeGltf(makeNodes(KyNode::cMaxDepth))},
        {"loop.gltf", makeGltf(R"({"mesh":0},{"children":[2]},{"children":[1]})")},
        {"first.gltf", makeFirstGltf(cHostile)},
        {"elements.dae", makeDae(cHostile)},
        {"frames.x", makeX(cHostile)},
        {"quotes.x", makeX(cHostile, "a\"")},
        {"scopes.fbx", makeTextFbx(cHostile)},
        {"records.fbx", makeBinaryFbx(cHostile)},
    };
    for (const auto& [name, bytes] : cases)
        expectRefused(name, bytes, "nested too deeply");
}

TEST_F(KyModelNestingTest, WhatWouldHideOrMultiplyTheNestingIsRefused) {
    const std::pair<const char*, std::string> cases[] = {
        {"shared.gltf", makeGltf(R"({"children":[1,2]},{"children":[3]},{"children":[3]},{"mesh":0})")},
        {"declared.dae", makeDae(1, "<!DOCTYPE a>")},
        {"broken.fbx", makeBinaryFbx(3).substr(0, 80)},
        {"short.glb", makeGlb(makeGltf(makeNodes(0))).substr(0, 100)},
    };
    for (const auto& [name, bytes] : cases)
        expectRefused(name, bytes);
}

} // namespace
