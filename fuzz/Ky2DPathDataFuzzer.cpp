// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DPathData.h"
#include "Ky2DUtil.h"

#include <QPainterPath>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Commands = std::vector<Ky2DPathCommand>;

void require(bool condition) {
    if (!condition)
        std::abort();
}

/// Qt is never handed what it cannot draw.
void checkDrawing(const Commands& commands) {
    QPainterPath path;
    Ky2DUtil::initializeQPainterPath(path, commands, KyVec2d(3, -4));
    for (int i = 0; i < path.elementCount(); ++i)
        require(std::isfinite(path.elementAt(i).x) && std::isfinite(path.elementAt(i).y));
}

/// What was read is written and read again alike; what stands before an error is read without it.
void checkText(std::string_view text) {
    Commands commands;
    std::size_t position = 0;
    if (!Ky2DPathData::parse(text, commands, &position))
        require(position <= text.size());
    Commands again;
    require(Ky2DPathData::parse(Ky2DPathData::format(commands), again));
    require(again == commands);
    checkDrawing(commands);
}

/// Letters of path data where the input has any bytes.
std::string makeText(const std::uint8_t* data, std::size_t size) {
    constexpr std::string_view cLetters = "MmLlHhVvCcSsQqTtAaZz0123456789012345678901..,, --+eE\n";
    std::string text;
    for (std::size_t i = 0; i < size; ++i)
        text += cLetters[data[i] % cLetters.size()];
    return text;
}

/// Commands of any type with any numbers, as a program may make them.
Commands makeCommands(const std::uint8_t* data, std::size_t size) {
    Commands commands;
    std::size_t at = 0;
    while (at < size) {
        Ky2DPathCommand command(data[at] % Ky2DPathCommand::eNbTypes);
        const unsigned count = data[at++] / Ky2DPathCommand::eNbTypes;
        for (unsigned i = 0; i < count && at + sizeof(double) <= size; ++i, at += sizeof(double)) {
            double value = 0;
            std::memcpy(&value, data + at, sizeof(value));
            command.addCoordinate(value);
        }
        commands.push_back(command);
    }
    return commands;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkText(std::string_view(reinterpret_cast<const char*>(data), size));
    checkText(makeText(data, size));
    const Commands commands = makeCommands(data, size);
    checkDrawing(commands);
    Commands again;
    require(Ky2DPathData::parse(Ky2DPathData::format(commands), again));
    require(Ky2DPathData::format(again) == Ky2DPathData::format(commands));
    return 0;
}
