// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

class KyQmlPass;

/// The living QML passes, which have to let go of the engine before it ends.
class KyQmlPasses {
public:
    static void add(KyQmlPass* pass);
    static void remove(KyQmlPass* pass);
    /// Ends everything that Qt is in, of all of them.
    static void cleanUp();
};
