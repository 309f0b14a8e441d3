// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHolder.h"
#include "KyModelLoader.h"
#include "KyNode.h"

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

    /// The error names the file and tells the reason.
    void expectRefused(const std::string& name, const std::string& bytes, const std::string& reason = "") const {
        std::string error;
        EXPECT_EQ(KyModelLoader::load(write(name, bytes), error), nullptr) << name;
        EXPECT_NE(error.find(name), std::string::npos) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
        EXPECT_TRUE(error.ends_with('.') && !error.ends_with("..") && !error.ends_with(" .")) << error;
    }

    /// One triangle of 2 by 3, however deep in the file, becomes a node that nobody holds yet.
    void expectTriangle(const std::string& name, const std::string& bytes) const {
        std::string error;
        KyNode* const model = KyModelLoader::load(write(name, bytes), error);
        ASSERT_TRUE(model) << error;
        EXPECT_EQ(model->getNbReferences(), 0u);
        const KyHolder<KyNode> holder(model);
        EXPECT_DOUBLE_EQ(model->getBoundingVolume().getSize().length(), KyVec3d(2, 3, 0).length()) << name;
    }

    std::filesystem::path mDirectory;
};

/// Of builds that can read model files.
class KyModelReading : public KyModelFiles {
protected:
    void SetUp() override {
        if (KyModelLoader::getExtensions().empty())
            GTEST_SKIP() << "built without a reader of model files";
    }
};
