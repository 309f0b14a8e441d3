// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPlatform.h"
#include "KyURL.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

/// A fresh directory for a test case, deleted with all it holds; the process's directory is restored.
class KyTemporaryDirectory : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        mBefore = std::filesystem::current_path();
        mRoot = std::filesystem::canonical(std::filesystem::temp_directory_path()) /
                (std::string("Ky ") + info->test_suite_name() + "." + info->name());
        std::filesystem::remove_all(mRoot);
        std::filesystem::create_directories(mRoot);
    }

    void TearDown() override {
        std::filesystem::current_path(mBefore);
        std::filesystem::remove_all(mRoot);
    }

    /// In UTF-8, as paths are in this system.
    [[nodiscard]] std::string getPath(const std::string& name) const {
        const std::u8string path = (mRoot / std::u8string(name.begin(), name.end())).generic_u8string();
        return {path.begin(), path.end()};
    }

    [[nodiscard]] KyURL getURL(const std::string& name) const { return KyURL(getPath(name), KyURL::eLocalPath); }

    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((mRoot / name).parent_path());
        std::ofstream(mRoot / name, std::ios::binary) << text;
    }

    [[nodiscard]] std::string read(const std::string& name) const {
        std::ifstream stream(mRoot / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// False where the system, or the language's library for it, makes no links.
    static bool makeLink(const std::filesystem::path& target, const std::filesystem::path& link) {
        std::error_code error;
        std::filesystem::create_directory_symlink(target, link, error);
        return !error;
    }

    static bool isWindows() { return KyPlatform::getOsType() == KyPlatform::eWindows; }

    std::filesystem::path mRoot;
    std::filesystem::path mBefore;
};
