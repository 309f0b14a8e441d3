// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

/// The texts of shader programs by name and label. The library's own stand under the default label ""; hosts add theirs
/// or replace them. A label is a variant (a renderer, a platform); what a label lacks is taken from the default one.
///
/// ```
/// shader->setVertexProgram(KyProgramSourceManager::get().getSource("KyPrevious_vp.glsl"));
/// ```
class KYSCENE_EXPORT KyProgramSourceManager {
public:
    KyProgramSourceManager(const KyProgramSourceManager&) = delete;
    KyProgramSourceManager& operator=(const KyProgramSourceManager&) = delete;

    /// The one manager, never destroyed, with the library's own programs.
    static KyProgramSourceManager& get();

    /// Whether there is a text of that name under exactly that label.
    bool hasSource(const std::string& name, const std::string& label = {}) const;
    /// Empty when there is none under the label nor under the default one.
    const std::string& getSource(const std::string& name, const std::string& label = {}) const;
    /// Adds or replaces; shaders that took the old text keep it.
    void setSource(const std::string& name, const std::string& source, const std::string& label = {});
    /// False when there is none.
    bool removeSource(const std::string& name, const std::string& label = {});

private:
    using Key = std::pair<std::string, std::string>;

    KyProgramSourceManager();

    std::map<Key, std::string> mSources;
};
