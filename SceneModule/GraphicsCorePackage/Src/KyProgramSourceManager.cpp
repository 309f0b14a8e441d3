// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProgramSourceManager.h"

#include "KyProgramSources_p.h"

KyProgramSourceManager& KyProgramSourceManager::get() {
    static auto* manager = new KyProgramSourceManager;
    return *manager;
}

KyProgramSourceManager::KyProgramSourceManager() {
    for (const KyProgramSource& source : kyGetProgramSources())
        setSource(std::string(source.name), std::string(source.text));
}

bool KyProgramSourceManager::hasSource(const std::string& name, const std::string& label) const {
    return mSources.contains(Key(name, label));
}

const std::string& KyProgramSourceManager::getSource(const std::string& name, const std::string& label) const {
    static const std::string none;
    for (const std::string& candidate : {label, std::string()})
        if (const auto found = mSources.find(Key(name, candidate)); found != mSources.end())
            return found->second;
    return none;
}

void KyProgramSourceManager::setSource(const std::string& name, const std::string& source, const std::string& label) {
    mSources[Key(name, label)] = source;
}

bool KyProgramSourceManager::removeSource(const std::string& name, const std::string& label) {
    return mSources.erase(Key(name, label)) > 0;
}
