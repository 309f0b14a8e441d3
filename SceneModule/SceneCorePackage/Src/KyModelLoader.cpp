// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelLoader.h"

#include "KyDeepStack_p.h"
#include "KyMeshNode.h"
#include "KyModelReader_p.h"

#include "KyCallSignatures.h"
#include "KyException.h"
#include "KyLongWork.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"

#include <fmt/format.h>

#ifdef KY_WITH_ASSIMP
#include <assimp/scene.h>
#endif

#include <algorithm>
#include <array>
#include <cctype>
#include <exception>
#include <memory>
#include <span>
#include <stdexcept>
#include <utility>

const KyType* KyModelLoader::msType = nullptr;

void KyModelLoader::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyModelLoader>("KyModelLoader", KyObject::getType())
                 .staticMethod("load", [](const std::string& path) { return load(KyURL(path, KyURL::eLocalPath)); })
                 .build();
    KyCallSignatures::add("KyModelLoader", {"load(path)"});
}

void KyModelLoader::finalizeType() {
    KyModelReader::waitForAll();
    KyType::remove(msType);
}

const KyType* KyModelLoader::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyModelLoader::getObjectType() const {
    return getType();
}

KyNode* KyModelLoader::load(const KyURL& url) {
    std::string error;
    KyNode* model = load(url, error);
    if (!model)
        KyException::create(error);
    return model;
}

#ifdef KY_WITH_ASSIMP

namespace {

/// Names and reasons may hold anything; a report is one readable line.
std::string makeReadable(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < 0x20 || c == 0x7f; }, ' ');
    return text.substr(0, 400);
}

/// The importers end their reasons each in its own way; the report has a full stop of its own.
std::string dropEnd(std::string reason) {
    reason.erase(reason.find_last_not_of(". \r\n") + 1);
    return reason;
}

std::string getLowerExtension(const KyURL& url) {
    std::string extension = url.getExtension();
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
    return extension;
}

std::array<float, 3> toFloats(const aiVector3D& v) {
    return {v.x, v.y, v.z};
}

std::uint8_t toByte(float value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0f, 1.0f) * 255.0f + 0.5f);
}

KyVertex toVertex(const aiMesh& mesh, unsigned index) {
    KyVertex vertex;
    vertex.position = toFloats(mesh.mVertices[index]);
    if (mesh.HasNormals())
        vertex.normal = toFloats(mesh.mNormals[index]);
    if (mesh.HasTextureCoords(0))
        vertex.texCoord = {mesh.mTextureCoords[0][index].x, mesh.mTextureCoords[0][index].y};
    if (mesh.HasVertexColors(0)) {
        const aiColor4D& c = mesh.mColors[0][index];
        vertex.color = {toByte(c.r), toByte(c.g), toByte(c.b), toByte(c.a)};
    }
    return vertex;
}

KyPrimitive toPrimitive(const aiMesh& mesh) {
    if (mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE)
        return KyPrimitive::eTriangles;
    return mesh.mPrimitiveTypes & aiPrimitiveType_LINE ? KyPrimitive::eLines : KyPrimitive::ePoints;
}

KyMeshData toMeshData(const aiMesh& mesh) {
    KyMeshData data;
    data.primitive = toPrimitive(mesh);
    data.vertices.reserve(mesh.mNumVertices);
    for (unsigned i = 0; i < mesh.mNumVertices; ++i)
        data.vertices.push_back(toVertex(mesh, i));
    const unsigned size = kyGetPrimitiveSize(data.primitive);
    for (const aiFace& face : std::span(mesh.mFaces, mesh.mNumFaces))
        if (face.mNumIndices == size)
            data.indices.insert(data.indices.end(), face.mIndices, face.mIndices + size);
    return data;
}

KyMat4d toMatrix(const aiMatrix4x4& m) {
    std::array<double, 16> rows{};
    for (unsigned i = 0; i < 16; ++i)
        rows[i] = static_cast<double>(m[i / 4][i % 4]);
    return KyMat4d::fromRows(rows);
}

void applyMaterial(const aiScene& scene, const aiMesh& mesh, KyMeshNode& node) {
    if (mesh.mMaterialIndex >= scene.mNumMaterials)
        return;
    const aiMaterial& material = *scene.mMaterials[mesh.mMaterialIndex];
    aiColor4D color;
    float opacity = 1.0f, value = 0.0f;
    material.Get(AI_MATKEY_OPACITY, opacity);
    if (material.Get(AI_MATKEY_BASE_COLOR, color) == AI_SUCCESS ||
        material.Get(AI_MATKEY_COLOR_DIFFUSE, color) == AI_SUCCESS)
        node.setColor(KyColor(color.r, color.g, color.b, color.a * opacity));
    if (material.Get(AI_MATKEY_ROUGHNESS_FACTOR, value) == AI_SUCCESS)
        node.setRoughness(static_cast<double>(value));
    if (material.Get(AI_MATKEY_METALLIC_FACTOR, value) == AI_SUCCESS)
        node.setMetalness(static_cast<double>(value));
}

constexpr const char* cTooDeep = "its nodes are nested too deeply";

/// Turns what was imported into nodes; its meshes are shared by the nodes that show them.
class KyModelConversion {
public:
    explicit KyModelConversion(const aiScene& scene)
        : mScene(scene) {
        for (const aiMesh* mesh : std::span(scene.mMeshes, scene.mNumMeshes)) {
            mMeshes.emplace_back(new KyMesh);
            if (!mMeshes.back()->setData(toMeshData(*mesh)))
                mIsConsistent = false;
            else if (!mesh->HasNormals())
                mMeshes.back()->computeNormals();
        }
    }

    bool isConsistent() const { return mIsConsistent; }

    /// Throws when the nodes are nested too deeply.
    std::unique_ptr<KyNode> convert(const aiNode& node, unsigned depth = 0) const {
        if (depth > KyNode::cMaxDepth)
            throw std::length_error(cTooDeep);
        auto result = std::make_unique<KyNode>();
        result->setName(node.mName.C_Str());
        result->setLocalFrame(toMatrix(node.mTransformation));
        for (const unsigned index : std::span(node.mMeshes, node.mNumMeshes))
            addMesh(index, *result);
        for (const aiNode* child : std::span(node.mChildren, node.mNumChildren))
            join(*result, convert(*child, depth + 1));
        return result;
    }

private:
    static void join(KyNode& parent, std::unique_ptr<KyNode> child) {
        if (!parent.addChild(child.get()))
            throw std::length_error(cTooDeep);
        child.release();
    }

    void addMesh(unsigned index, KyNode& parent) const {
        if (index >= mMeshes.size() || mMeshes[index]->getNbPrimitives() == 0)
            return;
        auto node = std::make_unique<KyMeshNode>();
        node->setMesh(mMeshes[index].get());
        node->setName(mScene.mMeshes[index]->mName.C_Str());
        if (mMeshes[index]->getData().primitive != KyPrimitive::eTriangles)
            node->setShading(KyMeshNode::eUnlit);
        applyMaterial(mScene, *mScene.mMeshes[index], *node);
        join(parent, std::move(node));
    }

    const aiScene& mScene;
    std::vector<KyHolder<KyMesh>> mMeshes;
    bool mIsConsistent = true;
};

std::unique_ptr<KyNode> makeNodes(const aiScene& scene, std::string& reason) {
    const KyModelConversion conversion(scene);
    std::unique_ptr<KyNode> node;
    if (conversion.isConsistent())
        node = conversion.convert(*scene.mRootNode);
    if (node && node->getBoundingVolume().isFinite())
        return node;
    reason = "it holds no valid geometry";
    return {};
}

/// All that is done is one step of the task around.
class OneStep {
public:
    explicit OneStep(KyTracker* tracker)
        : mTracker(tracker) {
        if (mTracker)
            mTracker->beginSubTask();
    }
    ~OneStep() {
        if (mTracker)
            mTracker->endSubTask();
    }
    OneStep(const OneStep&) = delete;
    OneStep& operator=(const OneStep&) = delete;

private:
    KyTracker* const mTracker;
};

/// Throws what the conversion throws.
std::unique_ptr<KyNode> read(const KyURL& url, const std::string& path, KyTracker* tracker, std::string& reason) {
    const auto reading = std::make_shared<KyModelReader>(path, getLowerExtension(url));
    const OneStep step(tracker);
    if (tracker)
        KyModelReader::readBeside(reading, *tracker);
    else
        reading->read();
    if (tracker && tracker->isCanceled()) {
        reason = "it was cancelled";
        return {};
    }
    reason = reading->getReason();
    std::unique_ptr<KyNode> node;
    // Nodes are made while the caller waits: others of its scene might be changed at the same time.
    if (const aiScene* const scene = reading->getScene())
        kyRunOnDeepStack([&] { node = makeNodes(*scene, reason); });
    return node;
}

} // namespace

const std::vector<std::string>& KyModelLoader::getExtensions() {
    static const std::vector<std::string> extensions{"obj", "ply", "stl", "gltf", "glb",  "dae", "fbx",
                                                     "3ds", "off", "x",   "lwo",  "ms3d", "dxf"};
    return extensions;
}

KyNode* KyModelLoader::load(const KyURL& url, std::string& error, KyTracker* tracker) {
    std::string path, reason;
    std::unique_ptr<KyNode> node;
    if (!url.getLocalPath(path)) {
        reason = "it is no local file";
    } else {
        KyLongWork work(fmt::format("Loading {}", makeReadable(url.getFileName())), tracker);
        try {
            node = read(url, path, work.isTold() ? &work.editTracker() : tracker, reason);
        } catch (const std::exception& exception) {
            reason = exception.what();
        } catch (...) {
            reason = "the reader failed";
        }
    }
    if (!node) {
        reason = dropEnd(reason);
        const std::string name = path.empty() ? url.toString() : path;
        error = makeReadable(fmt::format("KyModelLoader::load(): \"{}\" cannot be loaded: {}.", name,
                                         reason.empty() ? "unknown reason" : reason));
        return nullptr;
    }
    return node.release();
}

#else

const std::vector<std::string>& KyModelLoader::getExtensions() {
    static const std::vector<std::string> extensions;
    return extensions;
}

KyNode* KyModelLoader::load(const KyURL& url, std::string& error, KyTracker*) {
    error = fmt::format("KyModelLoader::load(): \"{}\" cannot be loaded: this library reads no model files.",
                        url.toString());
    return nullptr;
}

#endif
