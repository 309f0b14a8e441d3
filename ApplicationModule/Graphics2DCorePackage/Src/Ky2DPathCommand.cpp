// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DPathCommand.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view cLetters = "MmLlHhVvCcSsQqTtAaZ";
} // namespace

Ky2DPathCommand::Ky2DPathCommand(std::int32_t type, std::initializer_list<double> coordinates)
    : mType(type)
    , mInline{} {
    addCoordinates(coordinates);
}

Ky2DPathCommand& Ky2DPathCommand::operator=(const Ky2DPathCommand& other) {
    if (this != &other)
        *this = Ky2DPathCommand(other);
    return *this;
}

Ky2DPathCommand& Ky2DPathCommand::operator=(Ky2DPathCommand&& other) noexcept {
    if (this == &other)
        return *this;
    std::destroy_at(this);
    return *std::construct_at(this, std::move(other));
}

char Ky2DPathCommand::getLetter(std::int32_t type) {
    return isType(type) ? cLetters[static_cast<std::size_t>(type)] : '\0';
}

std::int32_t Ky2DPathCommand::findType(char letter) {
    const std::size_t at = cLetters.find(letter == 'z' ? 'Z' : letter);
    return at == std::string_view::npos ? -1 : static_cast<std::int32_t>(at);
}

void Ky2DPathCommand::setCoordinate(unsigned index, double value) {
    if (index < mCount)
        (isInline() ? mInline : mFar.data())[index] = value;
}

void Ky2DPathCommand::setPoint(unsigned index, const KyVec2d& point) {
    if (index >= getNbPoints())
        return;
    setCoordinate(2 * index, point.x);
    setCoordinate(2 * index + 1, point.y);
}

void Ky2DPathCommand::addCoordinates(std::span<const double> values) {
    for (const double value : values)
        addCoordinate(value);
}

void Ky2DPathCommand::clear() {
    *this = Ky2DPathCommand(mType);
}

bool Ky2DPathCommand::operator==(const Ky2DPathCommand& other) const {
    return mType == other.mType && std::ranges::equal(getCoordinates(), other.getCoordinates());
}

void Ky2DPathCommand::copyFar(const Ky2DPathCommand& other) {
    std::construct_at(&mFar, other.mFar);
}

void Ky2DPathCommand::moveFar(Ky2DPathCommand& other) noexcept {
    std::construct_at(&mFar, std::move(other.mFar));
    other.release();
    other.mCount = 0;
}

void Ky2DPathCommand::appendFar(double value) {
    if (isInline()) {
        std::vector<double> numbers(mInline, mInline + mCount);
        std::construct_at(&mFar, std::move(numbers));
    }
    mFar.push_back(value);
    ++mCount;
}

void Ky2DPathCommand::release() noexcept {
    std::destroy_at(&mFar);
}
