// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDaemon_p.h"

#include <algorithm>
#include <poll.h>
#include <spnav.h>

namespace {

/// The daemon brings every model to this range.
constexpr int cFullCount = 500;

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
        return poll(&connection, 1, 0) >= 0 && (connection.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
    }

    bool mIsAttached = true;
};

/// Daemons of the first protocol do not tell what they have.
bool describe(KySpaceMouseUnit& unit) {
    unit.name = "SpaceMouse";
    if (spnav_protocol() < 1)
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

std::vector<KySpaceMouseUnit> KySpaceMouseDaemon::find() {
    mFound.reset();
    if (spnav_open() < 0)
        return {};
    mFound = std::make_unique<DaemonSource>();
    KySpaceMouseUnit unit;
    if (describe(unit))
        return {unit};
    mFound.reset();
    return {};
}

std::unique_ptr<KySpaceMouseSource> KySpaceMouseDaemon::open(const KySpaceMouseUnit&) {
    return std::move(mFound);
}
