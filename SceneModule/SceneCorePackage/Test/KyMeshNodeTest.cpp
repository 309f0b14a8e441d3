// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyMeshNode.h"

#include "KyFunction.h"
#include "KyType.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace {

bool call(KyObject& object, const char* name, std::vector<KyField> arguments) {
    std::vector<const KyFunction*> overloads;
    for (const KyType* type = object.getObjectType(); type; type = type->getParent())
        for (const auto& method : type->getAllMethods())
            if (method->getName() == name)
                overloads.push_back(method.get());
    const KyFunction* function = kySelectFunction(overloads, arguments);
    KyField result;
    return function && function->invoke(&object, arguments, result);
}

TEST(KyMeshNodeTest, ScriptsMakeShapesByMethods) {
    const KyHolder<KyMeshNode> node(new KyMeshNode);
    ASSERT_TRUE(call(*node, "makeBox", {KyField(1.0), KyField(2.0), KyField(3.0)}));
    EXPECT_EQ(node->getOwnVolume().getSize(), KyVec3d(1, 2, 3));
    ASSERT_TRUE(call(*node, "setColor", {KyField("#ff0000")}));
    EXPECT_EQ(node->getColor(), KyColor(1, 0, 0));
    EXPECT_FALSE(call(*node, "makeBox", {KyField("wide")}));
}

TEST(KyMeshNodeTest, ATextThatIsNoColorIsRefusedByNameAndChangesNothing) {
    const KyHolder<KyMeshNode> node(new KyMeshNode);
    node->setColor(KyColor(1, 0, 0));
    for (const char* text : {"nocolor", "#zz", ""}) {
        std::string reason;
        try {
            call(*node, "setColor", {KyField(text)});
        } catch (const std::exception& exception) {
            reason = exception.what();
        }
        EXPECT_NE(reason.find('"' + std::string(text) + '"'), std::string::npos) << reason;
        EXPECT_EQ(node->getColor(), KyColor(1, 0, 0)) << text;
    }
}

TEST(KyMeshNodeTest, AChangedMeshChangesTheNodesThatShowIt) {
    const KyHolder<KyMesh> mesh(new KyMesh);
    KyMeshNode first, second;
    first.setMesh(mesh.get());
    second.setMesh(mesh.get());
    second.setMesh(nullptr);
    const auto revision = first.getRevision(), other = second.getRevision();
    ASSERT_TRUE(mesh->setData(KyMeshData()));
    EXPECT_NE(first.getRevision(), revision);
    EXPECT_EQ(second.getRevision(), other);
}

TEST(KyMeshNodeTest, ANewVersionOfTheTextureChangesTheNodesThatShowIt) {
    const KyHolder<KyTexture> texture(KyTexture::create());
    KyMeshNode node;
    node.setTexture(texture.get());
    const auto revision = node.getRevision();
    texture->touch();
    const auto touched = node.getRevision();
    EXPECT_NE(touched, revision);
    node.setTexture(nullptr);
    const auto plain = node.getRevision();
    texture->touch();
    EXPECT_EQ(node.getRevision(), plain);
    EXPECT_EQ(texture->getNbReferences(), 1u);
}

} // namespace
