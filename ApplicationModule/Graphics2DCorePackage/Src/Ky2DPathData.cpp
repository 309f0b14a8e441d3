// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DPathData.h"

#include "KyNumberReading.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

namespace {

bool isArc(std::int32_t type) {
    return type == Ky2DPathCommand::eArcTo || type == Ky2DPathCommand::eRelativeArcTo;
}

bool isFlag(std::int32_t type, unsigned index) {
    return isArc(type) && (index == 3 || index == 4);
}

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// Whether a number that no double holds is one because it lies too close to 0, and not because it is too large.
bool isTiny(std::string_view number) {
    const std::size_t letter = std::min(number.find_first_of("eE"), number.size());
    const std::string_view digits = number.substr(0, letter);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const auto order = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(digits.find_first_of("123456789"));
    std::string_view power = number.substr(std::min(letter + 1, number.size()));
    power.remove_prefix(power.starts_with('+') ? 1 : 0);
    std::int64_t exponent = 0;
    if (std::from_chars(power.data(), power.data() + power.size(), exponent).ec == std::errc::result_out_of_range)
        return power.starts_with('-');
    return exponent < -order;
}

/// A place in the text. Reading moves it behind what was read, failing leaves it.
class Reader {
public:
    explicit Reader(std::string_view text)
        : mText(text) {}

    bool isAtEnd() const { return mAt == mText.size(); }
    std::size_t getPosition() const { return mAt; }
    char peek() const { return peek(mAt); }
    void advance() { ++mAt; }

    void skipSpaces() { mAt = std::min(mText.find_first_not_of(" \t\r\n", mAt), mText.size()); }

    /// Spaces with at most one comma among them; true when there was one.
    bool skipSeparator() {
        skipSpaces();
        if (peek() != ',')
            return false;
        advance();
        skipSpaces();
        return true;
    }

    bool isAtNumber() const { return peek() == '+' || peek() == '-' || peek() == '.' || isDigit(peek()); }

    bool readFlag(double& value) {
        if (peek() != '0' && peek() != '1')
            return false;
        value = peek() == '1' ? 1 : 0;
        advance();
        return true;
    }

    bool readNumber(double& value) {
        const std::size_t end = findNumberEnd();
        if (end == mAt)
            return false;
        const std::size_t first = peek() == '+' ? mAt + 1 : mAt;
        const std::string_view number = mText.substr(first, end - first);
        if (KyNumberReading::read(number.data(), number.data() + number.size(), value).ec != std::errc()) {
            if (!isTiny(number))
                return false;
            value = 0;
        }
        if (!std::isfinite(value))
            return false;
        mAt = end;
        return true;
    }

private:
    char peek(std::size_t at) const { return at < mText.size() ? mText[at] : '\0'; }

    std::size_t skipDigits(std::size_t at) const {
        while (isDigit(peek(at)))
            ++at;
        return at;
    }

    std::size_t skipSign(std::size_t at) const { return peek(at) == '+' || peek(at) == '-' ? at + 1 : at; }

    /// The present place when there is no number. An "e" without digits is no part of one.
    std::size_t findNumberEnd() const {
        const std::size_t first = skipSign(mAt);
        std::size_t at = skipDigits(first);
        std::size_t digits = at - first;
        if (peek(at) == '.') {
            const std::size_t end = skipDigits(at + 1);
            digits += end - at - 1;
            at = end;
        }
        if (digits == 0)
            return mAt;
        if (peek(at) != 'e' && peek(at) != 'E')
            return at;
        const std::size_t exponent = skipSign(at + 1), end = skipDigits(exponent);
        return end == exponent ? at : end;
    }

    std::string_view mText;
    std::size_t mAt = 0;
};

bool readCommand(Reader& reader, Ky2DPathCommand& command) {
    const std::int32_t type = command.getType();
    for (unsigned i = 0; i < Ky2DPathCommand::getNbNeeded(type); ++i) {
        if (i != 0)
            reader.skipSeparator();
        double value = 0;
        if (!(isFlag(type, i) ? reader.readFlag(value) : reader.readNumber(value)))
            return false;
        command.addCoordinate(value);
    }
    return true;
}

/// What follows one letter: the numbers of one or more commands.
bool readGroup(Reader& reader, std::int32_t type, std::vector<Ky2DPathCommand>& commands) {
    reader.skipSpaces();
    bool isFollowed = true;
    while (isFollowed) {
        Ky2DPathCommand command(type);
        if (!readCommand(reader, command))
            return false;
        commands.push_back(std::move(command));
        if (type == Ky2DPathCommand::eMoveTo || type == Ky2DPathCommand::eRelativeMoveTo)
            type += Ky2DPathCommand::eLineTo;
        // After a comma there must be numbers.
        isFollowed = reader.skipSeparator() || reader.isAtNumber();
    }
    return true;
}

bool readAll(Reader& reader, std::vector<Ky2DPathCommand>& commands) {
    for (reader.skipSpaces(); !reader.isAtEnd(); reader.skipSpaces()) {
        const std::int32_t type = Ky2DPathCommand::findType(reader.peek());
        if (type < 0)
            return false;
        reader.advance();
        if (type == Ky2DPathCommand::eClose)
            commands.push_back(Ky2DPathCommand(type));
        else if (!readGroup(reader, type, commands))
            return false;
    }
    return true;
}

bool isWritable(const Ky2DPathCommand& command) {
    const std::int32_t type = command.getType();
    if (!Ky2DPathCommand::isType(type) || command.getNbCoordinates() < Ky2DPathCommand::getNbNeeded(type))
        return false;
    for (unsigned i = 0; i < Ky2DPathCommand::getNbNeeded(type); ++i)
        if (!isFlag(type, i) && !std::isfinite(command.getCoordinate(i)))
            return false;
    return true;
}

void writeNumber(std::string& text, double value) {
    std::array<char, 32> buffer;
    text.append(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
}

void writeCommand(std::string& text, const Ky2DPathCommand& command) {
    const std::int32_t type = command.getType();
    text += Ky2DPathCommand::getLetter(type);
    for (unsigned i = 0; i < Ky2DPathCommand::getNbNeeded(type); ++i) {
        if (i != 0)
            text += ' ';
        const double value = command.getCoordinate(i);
        if (isFlag(type, i))
            text += Ky2DPathCommand::isSet(value) ? '1' : '0';
        else
            writeNumber(text, value);
    }
}

} // namespace

bool Ky2DPathData::parse(std::string_view text, std::vector<Ky2DPathCommand>& commands, std::size_t* errorPosition) {
    Reader reader(text);
    if (readAll(reader, commands))
        return true;
    if (errorPosition)
        *errorPosition = reader.getPosition();
    return false;
}

std::string Ky2DPathData::format(const std::vector<Ky2DPathCommand>& commands) {
    std::string text;
    for (const Ky2DPathCommand& command : commands)
        if (isWritable(command))
            writeCommand(text, command);
    return text;
}
