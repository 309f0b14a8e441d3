// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGpuName_p.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

struct Pending {
    KyGpuName::Kind kind;
    unsigned name;
    KyGpuContext context;
};

struct Registry {
    std::vector<KyGpuContext> contexts;
    std::vector<Pending> pending;
    /// How many contexts of a handle have ended.
    std::unordered_map<void*, unsigned> lives;
    unsigned lastGroup = 0;
};

// Never destroyed: objects of the device may end after static destructors have begun.
Registry& getRegistry() {
    static auto* registry = new Registry;
    return *registry;
}

struct KindOperations {
    unsigned (*make)();
    void (*remove)(unsigned name);
    bool isShared;
};

constexpr std::array<KindOperations, 5> cOperations{{
    {[] {
         GLuint name = 0;
         glGenTextures(1, &name);
         return name;
     },
     [](unsigned name) { glDeleteTextures(1, &name); }, true},
    {[] {
         GLuint name = 0;
         glGenBuffers(1, &name);
         return name;
     },
     [](unsigned name) { glDeleteBuffers(1, &name); }, true},
    {[] { return glCreateProgram(); }, [](unsigned name) { glDeleteProgram(name); }, true},
    {[] {
         GLuint name = 0;
         glGenRenderbuffers(1, &name);
         return name;
     },
     [](unsigned name) { glDeleteRenderbuffers(1, &name); }, true},
    {[] {
         GLuint name = 0;
         glGenFramebuffers(1, &name);
         return name;
     },
     [](unsigned name) { glDeleteFramebuffers(1, &name); }, false},
}};

const KindOperations& getOperations(KyGpuName::Kind kind) {
    return cOperations[static_cast<std::size_t>(kind)];
}

bool isKnownIn(KyGpuName::Kind kind, const KyGpuContext& owner, const KyGpuContext& current) {
    if (!current.handle || owner.group != current.group)
        return false;
    return getOperations(kind).isShared || owner == current;
}

unsigned getLife(void* handle) {
    const auto& lives = getRegistry().lives;
    const auto found = lives.find(handle);
    return found == lives.end() ? 0 : found->second;
}

/// Its context has ended, and nobody else knows the name.
bool isLost(const Pending& pending) {
    return !getOperations(pending.kind).isShared && pending.context.group == 0 &&
           pending.context.life != getLife(pending.context.handle);
}

} // namespace

KyGpuContext kyGetCurrentGpuContext() {
    void* handle = kyGetCurrentGpuHandle();
    if (!handle)
        return {};
    const auto& contexts = getRegistry().contexts;
    const auto found = std::ranges::find(contexts, handle, &KyGpuContext::handle);
    return found == contexts.end() ? KyGpuContext{handle, 0, getLife(handle)} : *found;
}

void kyEndCurrentGpuContext() {
    KyGpuName::deletePending();
    if (void* handle = kyGetCurrentGpuHandle())
        ++getRegistry().lives[handle];
}

unsigned kyMakeGpuGroup() {
    return ++getRegistry().lastGroup;
}

void kyRegisterGpuContext(const KyGpuContext& context) {
    getRegistry().contexts.push_back(context);
}

void kyUnregisterGpuContext(void* handle) {
    Registry& registry = getRegistry();
    const auto found = std::ranges::find(registry.contexts, handle, &KyGpuContext::handle);
    if (found == registry.contexts.end())
        return;
    const unsigned group = found->group;
    registry.contexts.erase(found);
    const bool isLast = std::ranges::find(registry.contexts, group, &KyGpuContext::group) == registry.contexts.end();
    std::erase_if(registry.pending, [=](const Pending& pending) {
        return pending.context.handle == handle ? !getOperations(pending.kind).isShared || isLast
                                                : isLast && pending.context.group == group;
    });
}

bool KyGpuName::isUsable() const {
    return mName != 0 && isKnownIn(mKind, mContext, kyGetCurrentGpuContext());
}

unsigned KyGpuName::create() {
    reset();
    mContext = kyGetCurrentGpuContext();
    if (mContext.handle)
        mName = getOperations(mKind).make();
    return mName;
}

void KyGpuName::reset() {
    if (mName == 0)
        return;
    getRegistry().pending.push_back({mKind, std::exchange(mName, 0u), mContext});
    deletePending();
}

void KyGpuName::deletePending() {
    auto& pending = getRegistry().pending;
    if (pending.empty())
        return;
    const KyGpuContext current = kyGetCurrentGpuContext();
    std::erase_if(pending, [&current](const Pending& entry) {
        if (isLost(entry))
            return true;
        if (!isKnownIn(entry.kind, entry.context, current))
            return false;
        getOperations(entry.kind).remove(entry.name);
        return true;
    });
}

std::size_t KyGpuName::getNbPending() {
    return getRegistry().pending.size();
}
