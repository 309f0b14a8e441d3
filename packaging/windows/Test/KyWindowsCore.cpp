// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"

// The library without what needs Qt: being registered is all there is to it.

bool KyApplicationLibrary::msIsInitialized = false;

void KyApplicationLibrary::initialize() {
    msIsInitialized = true;
}

void KyApplicationLibrary::finalize() {
    msIsInitialized = false;
}
