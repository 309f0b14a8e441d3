// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Lets the resource layer read what Qt compiled into programs: URLs of the scheme "qrc". A resource is read whole into
/// memory when it is opened; the buffers stay here until the resource closes.
class KyQtStreamBuffers {
public:
    static void addCreator();
    /// Buffers that are open stay open.
    static void removeCreator();
    /// Closes every resource that is still open.
    static void closeAll();
};
