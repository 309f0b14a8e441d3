// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMeshNode.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"

#include <array>
#include <stdexcept>

const KyType* KyMeshNode::msType = nullptr;

namespace {

void setColorByText(KyMeshNode& node, const std::string& html) {
    KyColor color;
    if (!KyColor::fromHtml(html, color))
        throw std::invalid_argument("KyMeshNode::setColor(): \"" + html + "\" is no color.");
    node.setColor(color);
}

} // namespace

void KyMeshNode::initializeType() {
    if (msType)
        return;
    static constexpr std::array<const char*, eNbShadings> cShadings{"Smooth", "Unlit", "Grid"};
    KyFieldManager::get().registerEnumFieldType("KyShadingField", eNbShadings, cShadings.data());
    static constexpr std::array<const char*, eNbTextureAlphas> cTextureAlphas{"Ignored", "Straight", "Premultiplied"};
    KyFieldManager::get().registerEnumFieldType("KyTextureAlphaField", eNbTextureAlphas, cTextureAlphas.data());
    msType =
        KyTypeBuilder<KyMeshNode>("KyMeshNode", KyNode::getType())
            .factory()
            .attribute("Mesh", &KyMeshNode::getMesh, &KyMeshNode::setMesh)
            .attribute("Color", &KyMeshNode::getColor, &KyMeshNode::setColor)
            .attribute("Roughness", &KyMeshNode::getRoughness, &KyMeshNode::setRoughness)
            .attribute("Metalness", &KyMeshNode::getMetalness, &KyMeshNode::setMetalness)
            .enumAttribute("Shading", "KyShadingField", &KyMeshNode::getShading, &KyMeshNode::setShading)
            .enumeration({{"eSmooth", eSmooth}, {"eUnlit", eUnlit}, {"eGrid", eGrid}})
            .attribute("Texture", &KyMeshNode::getTexture, &KyMeshNode::setTexture)
            .enumAttribute("TextureAlpha", "KyTextureAlphaField", &KyMeshNode::getTextureAlpha,
                           &KyMeshNode::setTextureAlpha)
            .enumeration({{"eIgnored", eIgnored}, {"eStraight", eStraight}, {"ePremultiplied", ePremultiplied}})
            .attribute("TextureFlipped", &KyMeshNode::isTextureFlipped, &KyMeshNode::setTextureFlipped)
            .method("makeBox", &KyMeshNode::makeBox)
            .method("makeBox", [](KyMeshNode& n, double size) { n.makeBox(size, size, size); })
            .method("makeSphere", &KyMeshNode::makeSphere)
            .method("makeSphere", [](KyMeshNode& n, double radius) { n.makeSphere(radius); })
            .method("makeCylinder", &KyMeshNode::makeCylinder)
            .method("makeCylinder", [](KyMeshNode& n, double r, double h) { n.makeCylinder(r, h); })
            .method("makeCone", &KyMeshNode::makeCone)
            .method("makeCone", [](KyMeshNode& n, double r, double h) { n.makeCone(r, h); })
            .method("makeTorus", &KyMeshNode::makeTorus)
            .method("makeTorus", [](KyMeshNode& n, double r, double tube) { n.makeTorus(r, tube); })
            .method("makePlane", &KyMeshNode::makePlane)
            .method("makeGrid", &KyMeshNode::makeGrid)
            .method("loadModel",
                    [](KyMeshNode& n, const std::string& path) { return n.loadModel(KyURL(path, KyURL::eLocalPath)); })
            .method("setColor",
                    [](KyMeshNode& n, double r, double g, double b) {
                        n.setColor(KyColor(static_cast<float>(r), static_cast<float>(g), static_cast<float>(b)));
                    })
            .method("setColor", &setColorByText)
            .build();
    KyCallSignatures::add(
        "KyMeshNode", {"makeBox(width, height, depth)", "makeBox(size)", "makeSphere(radius, segments?)",
                       "makeCylinder(radius, height, segments?)", "makeCone(radius, height, segments?)",
                       "makeTorus(radius, tubeRadius, segments?)", "makePlane(width, depth)",
                       "makeGrid(size, divisions)", "loadModel(path)", "setColor(red, green, blue)", "setColor(html)"});
}

void KyMeshNode::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyMeshNode::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyMeshNode::getObjectType() const {
    return getType();
}

KyMeshNode* KyMeshNode::cast(KyObject* object) {
    return kyCast<KyMeshNode>(object);
}

KyObject* KyMeshNode::factory() {
    return new KyMeshNode;
}
