// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDaemon_p.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <poll.h>
#include <pthread.h>
#include <spnav.h>
#include <system_error>
#include <thread>

namespace {

/// The daemon brings every model to this range.
constexpr int cFullCount = 500;

/// A daemon that is well answers in less by far.
constexpr std::chrono::milliseconds cPatience{100};
constexpr std::chrono::milliseconds cNoPatience{0};
/// More than it takes to give a silent one up.
constexpr std::chrono::seconds cLastPatience{1};

/// Whether the thread can be cancelled.
class Cancellation {
public:
    explicit Cancellation(bool isEnabled) {
        pthread_setcancelstate(isEnabled ? PTHREAD_CANCEL_ENABLE : PTHREAD_CANCEL_DISABLE, &mBefore);
    }
    Cancellation(const Cancellation&) = delete;
    Cancellation& operator=(const Cancellation&) = delete;
    ~Cancellation() { pthread_setcancelstate(mBefore, nullptr); }

private:
    int mBefore = PTHREAD_CANCEL_ENABLE;
};

/// The calls that may wait for ever are all that is cancelled: in a destructor it would end the program.
auto callDaemon(auto&& function) {
    const Cancellation whileWaiting(true);
    return function();
}

/// The daemon counts x to the right, y up and z away from the user.
void applyMotion(const spnav_event_motion& motion, KySpaceMouseState& state) {
    state.setAxes(KySpaceMouseState::eX, {motion.x, motion.y, -motion.z}, cFullCount);
    state.setAxes(KySpaceMouseState::eRX, {motion.rx, motion.ry, -motion.rz}, cFullCount);
}

void applyButton(const spnav_event_button& button, KySpaceMouseState& state) {
    if (button.bnum >= 0)
        state.setButton(static_cast<unsigned>(button.bnum), button.press != 0);
}

class DaemonSource : public KySpaceMouseSource {
public:
    ~DaemonSource() override { spnav_close(); }

    bool read(KySpaceMouseState& state) override {
        spnav_event event;
        for (int i = 0; i < cNbEventsAtOnce && spnav_poll_event(&event) != 0; ++i)
            apply(event, state);
        return mIsAttached && isDaemonThere();
    }

private:
    static constexpr int cNbEventsAtOnce = 256;

    void apply(const spnav_event& event, KySpaceMouseState& state) {
        switch (event.type) {
        case SPNAV_EVENT_MOTION:
            return applyMotion(event.motion, state);
        case SPNAV_EVENT_BUTTON:
            return applyButton(event.button, state);
        case SPNAV_EVENT_DEV:
            mIsAttached = event.dev.op != SPNAV_DEV_RM;
            return;
        default:
            return;
        }
    }

    /// No event and no daemon look the same to spnav_poll_event.
    static bool isDaemonThere() {
        pollfd connection{spnav_fd(), POLLIN, 0};
        return connection.fd >= 0 && poll(&connection, 1, 0) >= 0 &&
               (connection.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
    }

    bool mIsAttached = true;
};

/// Daemons of the first protocol do not tell what they have.
bool describe(KySpaceMouseUnit& unit) {
    unit.name = "SpaceMouse";
    unit.isGuess = spnav_protocol() < 1;
    if (unit.isGuess)
        return true;
    char name[256] = "";
    if (spnav_dev_name(name, sizeof name) < 0)
        return false;
    unit.name = name;
    unsigned vendor = 0;
    unsigned product = 0;
    if (spnav_dev_usbid(&vendor, &product) == 0) {
        unit.vendorId = static_cast<std::uint16_t>(vendor);
        unit.productId = static_cast<std::uint16_t>(product);
    }
    unit.nbButtons =
        static_cast<unsigned>(std::clamp(spnav_dev_buttons(), 0, static_cast<int>(KySpaceMouseState::cNbButtons)));
    return true;
}

} // namespace

/// The thread that connects.
class KySpaceMouseDaemon::Connector {
public:
    Connector() = default;
    Connector(const Connector&) = delete;
    Connector& operator=(const Connector&) = delete;
    ~Connector() {
        // A daemon that takes no more connections would be waited for without end.
        if (isAsking() && !waitFor(cLastPatience))
            pthread_cancel(mThread.native_handle());
        if (mThread.joinable())
            mThread.join();
    }

    /// Nothing while a question is open. While the thread runs, the connection is its own.
    void ask();
    bool waitFor(std::chrono::milliseconds time) const {
        return isAsking() && mAnswer.wait_for(time) == std::future_status::ready;
    }
    /// Once waitFor() is true.
    Answer takeAnswer() { return mAnswer.get(); }

private:
    static Answer connect();
    bool isAsking() const { return mAnswer.valid(); }

    std::thread mThread;
    /// Valid from the question on until its answer is taken.
    std::future<Answer> mAnswer;
};

KySpaceMouseDaemon::Answer KySpaceMouseDaemon::Connector::connect() {
    const Cancellation notWhileClosing(false);
    if (callDaemon(&spnav_open) < 0)
        return {};
    Answer answer{std::make_unique<DaemonSource>(), {}};
    return callDaemon([&answer] { return describe(answer.unit); }) ? std::move(answer) : Answer{};
}

void KySpaceMouseDaemon::Connector::ask() {
    if (isAsking() || spnav_fd() >= 0)
        return;
    if (mThread.joinable())
        mThread.join();
    std::packaged_task<Answer()> task(&connect);
    std::future<Answer> answer = task.get_future();
    try {
        mThread = std::thread(std::move(task));
        mAnswer = std::move(answer);
    } catch (const std::system_error&) {
        // No thread to be had: the next time, perhaps.
    }
}

KySpaceMouseDaemon::KySpaceMouseDaemon()
    : mConnector(std::make_unique<Connector>()) {}

KySpaceMouseDaemon::~KySpaceMouseDaemon() = default;

void KySpaceMouseDaemon::start() {
    forget(); // an answer of long ago
    mConnector->ask();
    mConnector->waitFor(cPatience);
}

std::vector<KySpaceMouseUnit> KySpaceMouseDaemon::find() {
    if (mConnector->waitFor(cNoPatience))
        mFound = mConnector->takeAnswer();
    mConnector->ask();
    if (!mFound.source || mFound.unit.isGuess)
        return {};
    return {mFound.unit};
}

std::optional<KySpaceMouseUnit> KySpaceMouseDaemon::guess() {
    return mFound.source ? std::optional(mFound.unit) : std::nullopt;
}

std::unique_ptr<KySpaceMouseSource> KySpaceMouseDaemon::open(const KySpaceMouseUnit&) {
    return std::move(mFound.source);
}

void KySpaceMouseDaemon::forget() {
    if (mConnector->waitFor(cNoPatience))
        mConnector->takeAnswer();
    mFound = {};
}
