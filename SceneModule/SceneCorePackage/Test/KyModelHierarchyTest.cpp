// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelFiles.h"

#include <bit>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Links = std::vector<std::pair<unsigned, unsigned>>;

constexpr unsigned cFirst = 100;

/// Models one below the other.
Links makeChain(unsigned levels) {
    Links links;
    for (unsigned i = 0; i < levels; ++i)
        links.emplace_back(i == 0 ? 0 : cFirst + i - 1, cFirst + i);
    return links;
}

Links operator+(Links links, const Links& more) {
    links.insert(links.end(), more.begin(), more.end());
    return links;
}

/// One triangle of 2 by 3, shown by the last model.
std::string makeFbx(unsigned nbModels, const Links& links, const std::string& separator = ",") {
    std::string text = "; FBX 7.3.0 project file\nFBXHeaderExtension: {\nFBXVersion: 7300\n}\nObjects: {\n"
                       "Geometry: 5, \"Geometry::\", \"Mesh\" {\nVertices: *9 {\na: 0,0,0,2,0,0,0,3,0\n}\n"
                       "PolygonVertexIndex: *3 {\na: 0,1,-3\n}\n}\n";
    for (unsigned i = 0; i < nbModels; ++i)
        text += "Model: " + std::to_string(cFirst + i) + ", \"Model::m\", \"Mesh\" {\nVersion: 232\n}\n";
    text += "}\nConnections: {\n";
    for (const auto& [parent, child] : links)
        text += "C: \"OO\"" + separator + std::to_string(child) + "," + std::to_string(parent) + "\n";
    return text + "C: \"OO\",5," + std::to_string(cFirst + nbModels - 1) + "\n}\n";
}

void append(std::string& bytes, std::uint64_t number, unsigned size) {
    for (unsigned i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> 8 * i & 0xffu);
}

void appendRecord(std::string& bytes, const std::string& name, unsigned nbValues, const std::string& values) {
    append(bytes, bytes.size() + 13 + name.size() + values.size(), 4);
    append(bytes, nbValues, 4);
    append(bytes, values.size(), 4);
    append(bytes, name.size(), 1);
    bytes += name + values;
}

/// Only what is looked at before the file is read.
std::string makeBinaryFbx(unsigned nbModels, const Links& links) {
    std::string bytes("Kaydara FBX Binary  \0\x1a\0", 23);
    append(bytes, 7300, 4);
    for (unsigned i = 0; i < nbModels; ++i) {
        std::string values = "L";
        append(values, cFirst + i, 8);
        appendRecord(bytes, "Model", 1, values);
    }
    for (const auto& [parent, child] : links) {
        std::string values("S\2\0\0\0OOL", 8);
        append(values, child, 8);
        values += 'L';
        append(values, parent, 8);
        appendRecord(bytes, "C", 3, values);
    }
    return bytes;
}

/// Nodes of a library, each with instances of others; the scene shows the first.
std::string makeDae(unsigned nbNodes, const Links& links) {
    std::string text = "<?xml version=\"1.0\"?><COLLADA version=\"1.4.1\"><library_nodes>";
    for (unsigned i = 0; i < nbNodes; ++i) {
        text += "<node id='n" + std::to_string(cFirst + i) + "'>";
        for (const auto& [parent, child] : links)
            if (parent == cFirst + i)
                text += "<instance_node url = \"#n" + std::to_string(child) + "\"/>";
        text += "</node>";
    }
    return text + "</library_nodes><library_visual_scenes><visual_scene id=\"s\"><node><instance_node url=\"#n100\"/>"
                  "</node></visual_scene></library_visual_scenes>"
                  "<scene><instance_visual_scene url=\"#s\"/></scene></COLLADA>";
}

/// A binary file whose frames stand inside each other.
std::string makeBinaryX(unsigned levels) {
    std::string bytes = "xof 0303bin 0032";
    for (unsigned i = 0; i < levels; ++i)
        bytes.append("\x1f\0\1\0\1\0\0\0a\x0a\0", 11);
    return bytes;
}

/// A chain as the keys of a 3DS file tell it: each object names the one above by its number.
std::string make3ds(unsigned levels) {
    const auto chunk = [](unsigned id, const std::string& body) {
        std::string bytes;
        append(bytes, id, 2);
        append(bytes, body.size() + 6, 4);
        return bytes + body;
    };
    std::string keys;
    for (unsigned i = 0; i < levels; ++i) {
        std::string number, node("t\0\0\0\0\0", 6);
        append(number, i, 2);
        append(node, i == 0 ? 0xffff : i - 1, 2);
        keys += chunk(0xb002, chunk(0xb030, number) + chunk(0xb010, node));
    }
    std::string corners("\3\0", 2);
    for (const float coordinate : {0.f, 0.f, 0.f, 2.f, 0.f, 0.f, 0.f, 3.f, 0.f})
        append(corners, std::bit_cast<std::uint32_t>(coordinate), 4);
    const std::string face("\1\0\0\0\1\0\2\0\0\0", 10);
    const std::string mesh =
        chunk(0x4000, std::string("t\0", 2) + chunk(0x4100, chunk(0x4110, corners) + chunk(0x4120, face)));
    return chunk(0x4d4d, chunk(0x3d3d, mesh) + chunk(0xb000, keys));
}

using KyModelHierarchyTest = KyModelReading;

TEST_F(KyModelHierarchyTest, ConnectedModelsAreRead) {
    expectTriangle("models.fbx", makeFbx(20, makeChain(20) + Links{{0, cFirst + 10}}));
}

TEST_F(KyModelHierarchyTest, HierarchiesThatNeverEndAreRefusedByName) {
    const Links loop = makeChain(3) + Links{{cFirst + 2, cFirst + 1}};
    const Links doubled = makeChain(40) + makeChain(40);
    const char *const deep = "nested too deeply", *const many = "too many nodes";
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"chain.fbx", makeFbx(3000, makeChain(3000)), deep},
        {"loop.fbx", makeFbx(3, loop), deep},
        {"doubled.fbx", makeFbx(40, doubled), many},
        {"hidden.fbx", makeFbx(40, doubled, ";,\n , "), many},
        {"loopInBinary.fbx", makeBinaryFbx(3, loop), deep},
        {"doubledInBinary.fbx", makeBinaryFbx(40, doubled), many},
        {"loop.dae", makeDae(3, loop), deep},
        {"doubled.dae", makeDae(40, doubled), many},
        {"frames.x", makeBinaryX(200000), deep},
        {"chain.3ds", make3ds(6000), deep},
    };
    for (const auto& [name, bytes, reason] : cases)
        expectRefused(name, bytes, reason);
}

} // namespace
