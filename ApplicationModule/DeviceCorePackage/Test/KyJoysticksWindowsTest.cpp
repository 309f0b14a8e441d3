// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidDetection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iomanip>
#include <set>
#include <sstream>
#include <string>
#include <thread>

namespace {

std::set<std::string> findJoysticks() {
    std::set<std::string> found;
    for (const KyHidRecord& record : KyHidDetection::detect()) {
        std::ostringstream text;
        text << std::hex << std::uppercase << std::setfill('0') << std::setw(4) << record.vendorId << ':'
             << std::setw(4) << record.productId << ' ' << record.usagePage << '/' << record.usage;
        if (record.vendorId != 0x845E)
            found.insert(text.str());
    }
    return found;
}

} // namespace

// They are plugged in while the system starts, which goes on meanwhile.
TEST(KyHidDetection, FindsJoysticksThatArePluggedIn) {
    const std::set<std::string> joysticks = {"046D:C216 1/5", "1111:2222 1/4", "256F:C626 1/4"};
    for (int i = 0; i < 100 && findJoysticks() != joysticks; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(findJoysticks(), joysticks);
}
