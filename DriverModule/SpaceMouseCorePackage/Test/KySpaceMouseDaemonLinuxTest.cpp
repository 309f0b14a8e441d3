// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDaemon_p.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

/// A daemon that takes connections and never says a word.
class SilentDaemon {
public:
    SilentDaemon() {
        const std::string path = testing::TempDir() + "ky-silent-" + std::to_string(getpid());
        mAddress.sun_family = AF_UNIX;
        path.copy(mAddress.sun_path, sizeof mAddress.sun_path - 1);
        unlink(path.c_str());
        EXPECT_EQ(bind(mSocket, getAddress(), sizeof mAddress), 0);
        EXPECT_EQ(listen(mSocket, 1), 0);
        setenv("SPNAV_SOCKET", path.c_str(), 1);
    }
    ~SilentDaemon() {
        close(mSocket);
        std::ranges::for_each(mClients, &close);
        unlink(std::getenv("SPNAV_SOCKET"));
        unsetenv("SPNAV_SOCKET");
    }

    /// Until no more connections are taken.
    void fill() {
        do
            mClients.push_back(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
        while (mClients.size() < 100 && connect(mClients.back(), getAddress(), sizeof mAddress) == 0);
    }

private:
    const sockaddr* getAddress() const { return reinterpret_cast<const sockaddr*>(&mAddress); }

    int mSocket = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un mAddress{};
    std::vector<int> mClients;
};

TEST(KySpaceMouseDaemonLinuxTest, ASilentDaemonIsAGuessAndHoldsUpNobody) {
    const SilentDaemon silent;
    KySpaceMouseDaemon daemon;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(daemon.find().empty());
    EXPECT_FALSE(daemon.guess()) << "not known yet";
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(100));
    for (int i = 0; i < 500 && !daemon.guess(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_TRUE(daemon.find().empty());
    }
    ASSERT_TRUE(daemon.guess());
    EXPECT_TRUE(daemon.guess()->isGuess);
    EXPECT_EQ(daemon.guess()->vendorId, 0);
    const auto source = daemon.open(*daemon.guess());
    ASSERT_TRUE(source);
    KySpaceMouseState state;
    EXPECT_TRUE(source->read(state));
    daemon.forget();
    EXPECT_FALSE(daemon.guess());
}

TEST(KySpaceMouseDaemonLinuxTest, ADaemonThatTakesNoMoreConnectionsIsGivenUp) {
    SilentDaemon silent;
    silent.fill();
    KySpaceMouseDaemon daemon;
    daemon.start();
    EXPECT_TRUE(daemon.find().empty());
    EXPECT_FALSE(daemon.guess());
}

} // namespace
