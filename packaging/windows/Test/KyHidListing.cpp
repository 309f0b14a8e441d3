// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidDetection.h"

#include <cstdio>

// What is found, a line each.
int main() {
    std::puts("listing");
    for (const KyHidRecord& record : KyHidDetection::detect())
        std::printf("%s|%s|%s|%x:%x|%x/%x|%s\n", record.manufacturer.c_str(), record.product.c_str(),
                    record.serial.c_str(), record.vendorId, record.productId, record.usagePage, record.usage,
                    record.path.c_str());
    return 0;
}
