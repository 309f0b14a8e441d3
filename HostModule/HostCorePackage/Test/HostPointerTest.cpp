// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProgram.h"
#include "KyTouchyNode.h"

#include "KyModuleManager.h"

#include <QtGlobal>

#include <gtest/gtest.h>

/// The tests, or what they start where the program alone is not enough: the program with a class of nodes more.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsSet(KyTouchyNode::cVariable)) {
        constexpr const char* cNeeded[] = {"KyApplication/KyApplication"};
        KyModuleManager::get().registerModule("Test/KyTouchyNode", cNeeded, 1, &KyTouchyNode::initializeType,
                                              &KyTouchyNode::finalizeType);
        return KyHostProgram::run(argc, argv);
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
