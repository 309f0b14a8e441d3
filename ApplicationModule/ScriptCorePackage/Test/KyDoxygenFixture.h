// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyException.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// A folder for documentation files, and what was reported.
class KyDoxygenFixture : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(mFolder.isValid());
        msReports.clear();
        mHandler = KyException::setReportHandler([](const std::string& text) { msReports.push_back(text); });
    }
    void TearDown() override { KyException::setReportHandler(mHandler); }

    std::string folder() const { return mFolder.path().toStdString(); }

    /// Returns the path.
    std::string write(const std::string& name, const std::string& content) const {
        const std::filesystem::path path = std::filesystem::path(folder()) / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }

    /// An index of classes whose files are named after them.
    void writeIndex(const std::vector<std::string>& classes) const {
        std::string entries;
        for (const std::string& name : classes)
            entries += "<compound refid=\"class" + name + "\" kind=\"class\"><name>" + name + "</name></compound>\n";
        write("index.xml", "<doxygenindex>\n" + entries + "</doxygenindex>");
    }

    void writeClass(const std::string& name, const std::string& parts) const {
        write("class" + name + ".xml", "<doxygen><compounddef kind=\"class\"><compoundname>" + name +
                                           "</compoundname>" + parts + "</compounddef></doxygen>");
    }

    static std::string function(const std::string& type, const std::string& name, const std::string& arguments,
                                const std::string& brief) {
        return "<sectiondef><memberdef kind=\"function\" prot=\"public\"><type>" + type + "</type><name>" + name +
               "</name><argsstring>" + arguments + "</argsstring><briefdescription><para>" + brief +
               "</para></briefdescription></memberdef></sectiondef>";
    }

    static inline std::vector<std::string> msReports;

private:
    QTemporaryDir mFolder;
    KyException::ReportHandler mHandler = nullptr;
};
