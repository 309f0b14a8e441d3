// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkFixture.h"

#include <csignal>

#include <sys/resource.h>

namespace {

using KyFullDiskTest = KyNetworkTest;

/// No file of this process grows beyond the size meanwhile.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) {
        ::getrlimit(RLIMIT_FSIZE, &mFormer);
        const rlimit limit = {size, mFormer.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &mFormer);
        ::signal(SIGXFSZ, mHandler);
    }

private:
    rlimit mFormer = {};
    void (*const mHandler)(int) = ::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(KyFullDiskTest, IsReportedWhereverItIsNoticedAndLeavesThePart) {
    for (const rlim_t size : {0, 1000000}) {
        const FileSizeLimit limit(size);
        for (const char* path : {"file.bin", "late", "gzip/text.txt", "slow/file.bin"}) {
            if (size > 0 && path != std::string("file.bin"))
                break;
            const Download result = load(msServer->getUrl(path));
            EXPECT_EQ(result.error, QNetworkReply::OperationCanceledError) << path;
            EXPECT_TRUE(result.text == "File too large" || (size > 0 && !result.text.isEmpty())) << path;
        }
        EXPECT_TRUE(msServer->getContent().startsWith(read("file.bin")));
        EXPECT_LE(QFileInfo(at("file.bin")).size(), static_cast<qint64>(size));
        EXPECT_FALSE(mConnection.isDownloading());
    }
}

} // namespace
