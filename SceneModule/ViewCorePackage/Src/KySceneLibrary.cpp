// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySceneLibrary.h"

#include "KySceneEntry_p.h"

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyFontFormat.h"
#include "KyFrameBuffer.h"
#include "KyGraphicsObject.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyImage.h"
#include "KyIntersected.h"
#include "KyLight.h"
#include "KyMeshNode.h"
#include "KyModelLoader.h"
#include "KyPassEventHandler.h"
#include "KyScene.h"
#include "KyScenePass.h"
#include "KyScreenPass.h"
#include "KyShader.h"
#include "KyTexture.h"

#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <algorithm>
#include <array>

namespace {

constexpr const char* cModuleName = "KyScene/KyScene";

struct Record {
    void (*initialize)();
    void (*finalize)();
};

template <class... Classes>
constexpr std::array<Record, sizeof...(Classes)> makeRecords() {
    return {{{&Classes::initializeType, &Classes::finalizeType}...}};
}

// Base classes first.
constexpr auto cRecords =
    makeRecords<KyImage, KyFontFormat, KyGraphicsObject, KyTexture, KyFrameBuffer, KyShader, KyIntersected, KyMesh,
                KyNode, KyMeshNode, KyLight, KyCamera, KyScene, KyModelLoader, KyPassEventHandler, KyBaseGraphicsPass,
                KyGraphicsPass, KyScenePass, KyScreenPass, KyGraphicsView, KyGraphicsViewMultiPass, KyCanvas>();

} // namespace

void KySceneLibrary::registerModule() {
    static constexpr std::array<const char*, 1> cPrerequisites{"KyFoundation/KyFoundation"};
    KyModuleManager::get().registerModule(cModuleName, cPrerequisites.data(), cPrerequisites.size(), &initialize,
                                          &finalize);
}

bool kyOnSceneLoad(std::intptr_t, unsigned reason, void* reserved) {
    if (reason == KyLibraryEntry::eProcessDetach && !reserved)
        KyModuleManager::get().unregisterModule(cModuleName);
    return true;
}

void KySceneLibrary::initialize() {
    std::ranges::for_each(cRecords, [](const Record& record) { record.initialize(); });
}

void KySceneLibrary::finalize() {
    std::for_each(cRecords.rbegin(), cRecords.rend(), [](const Record& record) { record.finalize(); });
}
