// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Identity of a GL context. Contexts of one group share textures, buffers and programs; all contexts that nobody
/// registered are taken as one group, because the application makes its own share. A later context may get the handle
/// of one that ended: their lives differ.
struct KyGpuContext {
    void* handle = nullptr;
    unsigned group = 0;
    unsigned life = 0;

    bool operator==(const KyGpuContext&) const = default;
};

/// The context current on this thread; a null handle when there is none.
KyGpuContext kyGetCurrentGpuContext();
/// A group of its own, never used before.
unsigned kyMakeGpuGroup();
void kyRegisterGpuContext(const KyGpuContext& context);
/// Forgets the context; with the last of its group the names that wait for deletion there are dropped.
void kyUnregisterGpuContext(void* handle);

/// The current context, which nobody registered, is about to end: its own names are given up.
void kyEndCurrentGpuContext();

/// Implemented per platform: the current context's handle, whatever made it.
void* kyGetCurrentGpuHandle();

/// The name of a thing on the device, owned. It belongs to the context in which it was made.
class KyGpuName {
public:
    enum class Kind { eTexture, eBuffer, eProgram, eRenderBuffer, eFrameBuffer };

    explicit KyGpuName(Kind kind)
        : mKind(kind) {}
    KyGpuName(const KyGpuName&) = delete;
    KyGpuName& operator=(const KyGpuName&) = delete;
    ~KyGpuName() { reset(); }

    unsigned get() const { return mName; }
    /// Whether the current context knows the name.
    bool isUsable() const;
    /// Gives the old name up and makes a new one; a context must be current.
    unsigned create();
    /// Deletes the name now when its context, or one that shares with it, is current, else later.
    void reset();

    /// Deletes the names that can be deleted in the current context.
    static void deletePending();
    static std::size_t getNbPending();

private:
    Kind mKind;
    unsigned mName = 0;
    KyGpuContext mContext;
};
