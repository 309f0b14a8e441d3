// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealTouch.h"

#include "KyRealDisplay.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace {

constexpr int cPatience = 60000;

/// What the server's inputtest driver reads and answers: records of its machine's byte order, each beginning with its
/// length in bytes and its kind.
using Header = std::array<std::uint32_t, 2>;
enum Answer : std::uint32_t { eServerVersion = 0, eSynchronised = 1 };

/// Of kind 0, version 1.1.
constexpr std::array<std::uint32_t, 3> cVersion{12, 0, 0x00010001};
constexpr Header cSynchronise{8, 1};

constexpr std::size_t cNbAxes = 64;
/// Positions are 0 to this on both axes of the screen.
constexpr double cAxisEnd = 65535.0;

struct Touch {
    Header header{sizeof(Touch), 6};
    std::uint32_t finger = 0;
    std::uint32_t kind = 0;
    std::uint32_t hasRawValues = 0;
    std::array<std::uint8_t, cNbAxes / 8> mask{0b11};
    // The driver's record has its numbers aligned to 8 bytes on all machines that it is built for.
    std::uint32_t padding = 0;
    std::array<double, cNbAxes> values{};
    std::array<double, cNbAxes> rawValues{};
};
static_assert(offsetof(Touch, values) == 32);

} // namespace

KyRealTouch::KyRealTouch(const KyRealDisplay& display) {
    mSocket.connectToServer(display.getTouchSocket());
    if (!mSocket.waitForConnected(cPatience))
        mError = "no touch screen: " + mSocket.errorString().toStdString();
    else if (!write(cVersion) || !waitFor(eServerVersion))
        mError = "the touch screen does not answer";
}

bool KyRealTouch::send(Kind kind, std::uint32_t finger, double x, double y) {
    Touch touch;
    touch.finger = finger;
    touch.kind = kind;
    touch.values[0] = x * cAxisEnd / KyRealDisplay::cWidth;
    touch.values[1] = y * cAxisEnd / KyRealDisplay::cHeight;
    return write(touch) && write(cSynchronise) && waitFor(eSynchronised);
}

template <class T>
bool KyRealTouch::write(const T& message) {
    return mSocket.write(reinterpret_cast<const char*>(&message), sizeof(message)) == qint64{sizeof(message)};
}

bool KyRealTouch::waitFor(std::uint32_t answer) {
    mSocket.flush();
    const auto read = [this](qint64 size) {
        while (mSocket.bytesAvailable() < size && mSocket.waitForReadyRead(cPatience))
            continue;
        return mSocket.read(size);
    };
    Header header{};
    const QByteArray bytes = read(sizeof(header));
    std::memcpy(header.data(), bytes.data(), static_cast<std::size_t>(bytes.size()));
    const qint64 rest = qint64{header[0]} - qint64{sizeof(header)};
    return rest >= 0 && read(rest).size() == rest && header[1] == answer;
}
