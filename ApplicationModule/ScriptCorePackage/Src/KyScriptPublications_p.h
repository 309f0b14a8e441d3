// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObjectModificationType.h"
#include "KySignal.h"

#include <map>
#include <memory>
#include <string>

class KyObject;
class KyScriptEngine;

/// The objects that an engine publishes as globals, one name per object and one object per name. Not owned: an object
/// that ends is withdrawn.
class KyScriptPublications : public KyHasSlots {
public:
    explicit KyScriptPublications(KyScriptEngine& engine)
        : mEngine(engine) {}

    const std::map<KyObject*, std::string>& getAll() const { return mNames; }
    /// Null when nothing bears the name.
    KyObject* find(const std::string& name) const;

    /// See KyScriptEngine::bindInstance.
    int publish(KyObject* object, const std::string& name);
    /// See KyScriptEngine::unbindInstance.
    int withdraw(KyObject* object);
    void withdrawAll();

private:
    bool setGlobal(KyObject& object, const std::string& name);
    void removeGlobal(const std::string& name);
    void objectModifiedSlot(KyObject* object, KyObjectModificationType type, const std::string& name, int index);

    KyScriptEngine& mEngine;
    /// By pointer, so that withdrawing goes in that order.
    std::map<KyObject*, std::string> mNames;
};
