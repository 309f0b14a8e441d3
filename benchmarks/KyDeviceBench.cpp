// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyCompositeAxisChannel.h"
#include "KyCompositeAxisObject.h"
#include "KyDevice.h"

#include "KyCompositeTask.h"
#include "KyHolder.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <span>
#include <vector>

namespace {

constexpr std::size_t cNbReadings = 64;
constexpr unsigned cNbSources = 8;
constexpr unsigned cNbDevices = 32;
constexpr unsigned cNbAxes = 6;
constexpr unsigned cNbButtons = 12;
constexpr float cDeadZone = 0.15F;

/// A stick that goes round, a little farther than its range.
std::array<float, cNbReadings> makeReadings() {
    std::array<float, cNbReadings> readings;
    for (std::size_t i = 0; i < cNbReadings; ++i)
        readings[i] =
            1.1F * static_cast<float>(std::sin(2.0 * std::numbers::pi * static_cast<double>(i) / cNbReadings));
    return readings;
}

const std::array<float, cNbReadings> cReadings = makeReadings();

void require(bool condition) {
    if (!condition)
        std::abort();
}

/// The rules of an axis as a program writes them that has no channels.
struct AxisPeer {
    float value = 0.0F;
    float absoluteValue = 0.0F;
    float deltaValue = 0.0F;
    float minimum = -1.0F;
    float maximum = 1.0F;
    float stepFactor = 0.1F;
    float width = 0.0F;
    float deadZoneValue = 0.0F;
    bool isAbsolute = false;
    KyAxisClampMode clampMode = eClampAll;

    void take(float reading) {
        if (isAbsolute)
            takePosition(reading);
        else
            takePosition(absoluteValue + stepFactor * reading);
    }

    void takePosition(float x) {
        if (!std::isfinite(x))
            return;
        if (clampMode == eClampOutput)
            absoluteValue = x;
        if (clampMode != eClampNone) {
            x = minimum > x ? minimum : x;
            x = x > maximum ? maximum : x;
        }
        if (!isAbsolute) {
            deltaValue = stepFactor == 0.0F ? 0.0F : (x - absoluteValue) / stepFactor;
            absoluteValue = x;
            value = x;
            return;
        }
        if (clampMode != eClampOutput)
            absoluteValue = x;
        value = width > 1e-7F ? leaveDeadZone(x) : x;
    }

    float leaveDeadZone(float x) const {
        const float centre = (maximum + minimum) * 0.5F;
        if (centre - width < x && x < centre + width)
            return deadZoneValue;
        const bool isUpper = x > centre - width;
        const float bound = isUpper ? maximum : minimum, edge = isUpper ? width : -width;
        if (std::abs(edge - bound) <= 1e-7F)
            return bound;
        const float t = (deadZoneValue - bound) / (edge - bound);
        return (1.0F - t) * bound + t * x;
    }
};

/// A pad whose axes are absolute or relative, with the sides' ways to give it readings.
struct Pad : KyDevice {
    Pad() {
        setNbAxis(cNbAxes + 2);
        setNbButtons(cNbButtons);
        setEnabled(true);
    }

    void setMode(bool isAbsolute, float width) {
        for (unsigned i = 0; i < getNbAxis(); ++i) {
            editAxis(i).setAbsolute(isAbsolute);
            editAxis(i).setDeadZoneWidth(width);
        }
    }
    using KyDevice::setAxisValue;

    bool execute() override {
        const std::size_t now = mCycle++;
        for (unsigned i = 0; i < cNbAxes; ++i)
            setAxisValue(i, cReadings[(now + i) % cNbReadings]);
        for (unsigned i = 0; i < cNbButtons; ++i)
            setButtonValue(i, static_cast<std::uint8_t>((now >> i) & 1U));
        return true;
    }

private:
    std::size_t mCycle = 0;
};

struct AxisFixture {
    Pad pad;
    AxisPeer peer;
};

template <bool IsAbsolute>
KyBenchmarkSides prepareAxis() {
    const auto fixture = std::make_shared<AxisFixture>();
    fixture->pad.setMode(IsAbsolute, cDeadZone);
    fixture->peer.isAbsolute = IsAbsolute;
    fixture->peer.width = cDeadZone;
    const auto ours = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            fixture->pad.setAxisValue(0, cReadings[static_cast<std::size_t>(i) % cNbReadings]);
    };
    const auto peer = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            fixture->peer.take(cReadings[static_cast<std::size_t>(i) % cNbReadings]);
    };
    ours(5);
    peer(5);
    const float value = IsAbsolute ? fixture->peer.value : fixture->peer.deltaValue;
    require(value != 0.0F && fixture->pad.getAxis(0).getValue() == value);
    return {ours, peer, fixture};
}

struct CompositeFixture {
    Pad pad;
    KyCompositeAxisChannel ours;
    AxisPeer peer;
    std::vector<const KyDeviceAxisChannel*> sources;
    AxisPeer former;

    CompositeFixture() {
        pad.setMode(false, 0.0F);
        for (unsigned i = 0; i < cNbSources; ++i) {
            // Steps of both signs, so that the composite stays within its range.
            pad.setAxisValue(i, i % 2 == 0 ? 0.5F : -0.4F);
            ours.insertMappedAxis(pad.getAxis(i), eOperationStep);
            sources.push_back(&pad.getAxis(i));
        }
    }

    bool updatePeer() {
        for (const KyDeviceAxisChannel* source : sources)
            if (source->isEnabled())
                peer.take(source->getValue());
        const bool isChanged = peer.absoluteValue != former.absoluteValue || peer.deltaValue != former.deltaValue;
        former.absoluteValue = peer.absoluteValue;
        former.deltaValue = peer.deltaValue;
        return isChanged;
    }
};

KyBenchmarkSides prepareComposite() {
    const auto fixture = std::make_shared<CompositeFixture>();
    const auto ours = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            fixture->ours.update();
    };
    const auto peer = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            fixture->updatePeer();
    };
    require(fixture->ours.update() && fixture->updatePeer());
    require(fixture->ours.getValue() == fixture->peer.deltaValue);
    return {ours, peer, fixture};
}

/// Composites of scripts one on another, the lowest below all of them.
struct ChainFixture {
    KyHolder<KyCompositeAxisObject> bottom{new KyCompositeAxisObject};
    KyHolder<KyCompositeAxisObject> top = bottom;
    KyHolder<KyCompositeAxisObject> second;

    static void put(KyHolder<KyCompositeAxisObject>& held, const KyHolder<KyCompositeAxisObject>& source) {
        const KyHolder<KyCompositeAxisObject> made(new KyCompositeAxisObject);
        require(made->insertMappedAxis(source.get(), eOperationAdd));
        held = made;
    }
};

KyBenchmarkSides prepareChain() {
    const auto fixture = std::make_shared<ChainFixture>();
    const auto ours = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            ChainFixture::put(fixture->top, fixture->top);
    };
    const auto peer = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            ChainFixture::put(fixture->second, fixture->bottom);
    };
    ours(4);
    peer(4);
    require(!fixture->bottom->insertMappedAxis(fixture->top.get(), eOperationAdd));
    return {ours, peer, fixture};
}

/// What the manager does in a frame, against a plain loop over as many readings.
struct FrameFixture {
    struct PeerPad {
        std::array<AxisPeer, cNbAxes> axes;
        std::array<std::array<std::uint8_t, 2>, cNbButtons> buttons{};
    };

    std::array<Pad, cNbDevices> pads;
    KyCompositeTask frame;
    std::array<PeerPad, cNbDevices> peers;

    FrameFixture() {
        for (Pad& pad : pads) {
            pad.setMode(true, cDeadZone);
            frame.insertTask(&pad);
        }
        for (PeerPad& pad : peers)
            for (AxisPeer& axis : pad.axes) {
                axis.isAbsolute = true;
                axis.width = cDeadZone;
            }
    }

    void runPeer(std::size_t now) {
        for (PeerPad& pad : peers) {
            for (unsigned i = 0; i < cNbAxes; ++i)
                pad.axes[i].take(cReadings[(now + i) % cNbReadings]);
            for (unsigned i = 0; i < cNbButtons; ++i)
                pad.buttons[i] = {static_cast<std::uint8_t>((now >> i) & 1U), pad.buttons[i][0]};
        }
    }
};

KyBenchmarkSides prepareFrame() {
    const auto fixture = std::make_shared<FrameFixture>();
    const auto ours = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            fixture->frame.update();
    };
    const auto peer = [fixture](long count) {
        for (long i = 0; i < count; ++i)
            fixture->runPeer(static_cast<std::size_t>(i));
    };
    ours(4);
    peer(4);
    require(fixture->pads.back().getAxis(3).getValue() == fixture->peers.back().axes[3].value);
    return {ours, peer, fixture};
}

} // namespace

std::vector<KyBenchmark> getDeviceBenchmarks() {
    using enum KyBenchmark::Gate;
    return {
        {"absolute axis conditioned", "the arithmetic written out", 1.1, eInstructions, 20000, &prepareAxis<true>},
        {"relative axis conditioned", "the arithmetic written out", 1.1, eInstructions, 20000, &prepareAxis<false>},
        {"composite of 8 axes", "the arithmetic written out", 1.3, eInstructions, 5000, &prepareComposite},
        {"composite on top of a long chain", "one on a single composite", 1.3, eInstructions, 5000, &prepareChain},
        {"frame of 32 devices", "a loop over the same readings", 1.3, eInstructions, 500, &prepareFrame},
    };
}
