// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyOffscreenContext.h"

struct KyOffscreenContext::Native {};

std::unique_ptr<KyOffscreenContext> KyOffscreenContext::create(std::string& error, Profile, const KyOffscreenContext*) {
    error = "KyOffscreenContext::create(): not available on Windows, use the toolkit's offscreen surface.";
    return nullptr;
}

KyOffscreenContext::KyOffscreenContext(std::unique_ptr<Native> native)
    : mNative(std::move(native)) {}

KyOffscreenContext::~KyOffscreenContext() = default;

bool KyOffscreenContext::makeCurrent() {
    return false;
}

void KyOffscreenContext::doneCurrent() {}
