// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyURL.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

/// Tests of model files, with a directory for them that lasts as long as the test.
class KyModelFiles : public testing::Test {
protected:
    KyModelFiles()
        : mDirectory(std::filesystem::path(testing::TempDir()) /
                     testing::UnitTest::GetInstance()->current_test_info()->name()) {
        std::filesystem::create_directories(mDirectory);
    }
    ~KyModelFiles() override { std::filesystem::remove_all(mDirectory); }

    KyURL getURL(const std::string& name) const { return KyURL((mDirectory / name).string(), KyURL::eLocalPath); }
    KyURL write(const std::string& name, const std::string& bytes) const {
        std::ofstream(mDirectory / name, std::ios::binary) << bytes;
        return getURL(name);
    }

    std::filesystem::path mDirectory;
};
