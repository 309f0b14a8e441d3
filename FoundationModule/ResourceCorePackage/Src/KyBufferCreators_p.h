// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyResource.h"

#include "KyMutex.h"

#include <map>
#include <string>
#include <string_view>

/// Who makes the stream buffers of each scheme; local files are there from the beginning.
class KyBufferCreators {
public:
    struct Entry {
        /// The creator's buffer; null, with a report, when it throws.
        [[nodiscard]] std::streambuf* create(KyResource& resource, int mode) const;

        KyResource::Creator creator = nullptr;
        KyResource::Destructor destructor = nullptr;
    };

    static KyBufferCreators& get();

    void add(const std::string& scheme, Entry entry);
    void remove(const std::string& scheme);
    /// Without functions when the scheme is unknown.
    Entry find(std::string_view scheme);

private:
    KyBufferCreators();

    KyMutex mMutex;
    std::map<std::string, Entry, std::less<>> mEntries;
};
