// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyObject.h"

#include <string>
#include <vector>

class KyNode;
class KyTracker;
class KyURL;

/// Reads model files into nodes. Files come from anywhere: what is missing, no file, truncated, garbage or too large is
/// refused as a whole, with a text that names the file and the reason.
///
/// ```
/// std::string error;
/// if (KyNode* model = KyModelLoader::load(KyURL("engine.obj", KyURL::eLocalPath), error))
///     scene->addChild(model);
/// ```
class KYSCENE_EXPORT KyModelLoader : public KyObject {
public:
    static const KyType* getType();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The extensions that can be read, without dot, lower case; empty when the library is built without a reader.
    static const std::vector<std::string>& getExtensions();
    /// A node with the file's tree of nodes and meshes below it, reference count 0; null, and the reason, when refused.
    /// With a tracker, one for the calling thread, the file is read on another one meanwhile, and a cancelled load is
    /// refused at once. Without one it is long work of KyProgress.
    static KyNode* load(const KyURL& url, std::string& error, KyTracker* tracker = nullptr);
    /// As above; the reason is reported.
    static KyNode* load(const KyURL& url);

private:
    static const KyType* msType;
};
