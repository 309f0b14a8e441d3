// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DPathData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

using Command = Ky2DPathCommand;
using Commands = std::vector<Command>;

struct Reading {
    const char* text;
    const char* normal;
};

constexpr Reading cReadings[] = {
    {"", ""},
    {" \t\r\n", ""},
    {"M1 2", "M1 2"},
    {" m1,2 \n", "m1 2"},
    {"M1 2 3 4,5 6", "M1 2L3 4L5 6"},
    {"m1 2-3-4", "m1 2l-3 -4"},
    {"M.5.5-1.5.5", "M0.5 0.5L-1.5 0.5"},
    {"M+1+2", "M1 2"},
    {"M1.5e2 1E-2", "M150 0.01"},
    {"M1.e1.5e+1", "M10 5"},
    {"M0 0h1 2,3v-1-2H5V6", "M0 0h1h2h3v-1v-2H5V6"},
    {"M0,0L1,1zM2 2ZZ", "M0 0L1 1ZM2 2ZZ"},
    {"M0 0a1 2 3 01.5.5", "M0 0a1 2 3 0 1 0.5 0.5"},
    {"M0 0A1,2,3,1,0,4,5 6 7 8 0010 11", "M0 0A1 2 3 1 0 4 5A6 7 8 0 0 10 11"},
    {"M0 0a25,25 -30 1150,-25", "M0 0a25 25 -30 1 1 50 -25"},
    {"M0 0C1 2 3 4 5 6s1 2 3 4 5 6 7 8", "M0 0C1 2 3 4 5 6s1 2 3 4s5 6 7 8"},
    {"M0 0Q1 2 3 4t5 6 7 8T9 9q1 1 2 2S1 2 3 4c1 2 3 4 5 6", "M0 0Q1 2 3 4t5 6t7 8T9 9q1 1 2 2S1 2 3 4c1 2 3 4 5 6"},
    {"L1 1 2 2", "L1 1L2 2"},
    {"M1e308 5e-324", "M1e+308 5e-324"},
    {"M1e-400 5-1e-99999999999999999999 0e9999", "M0 5L0 0"},
};

struct Error {
    const char* text;
    std::size_t position;
    const char* kept;
};

constexpr Error cErrors[] = {
    {"M1 1 L", 6, "M1 1"},
    {"M1 1 L2", 7, "M1 1"},
    {"M1 1 L2 2 3", 11, "M1 1L2 2"},
    {"M1 1,", 5, "M1 1"},
    {"M1 1,L2 2", 5, "M1 1"},
    {"M,1 1", 1, ""},
    {"M1,,1", 3, ""},
    {"M1 1 L2 2e", 9, "M1 1L2 2"},
    {"M1 1 L2 2px", 9, "M1 1L2 2"},
    {"M1 1Z2 2", 5, "M1 1Z"},
    {"1 1", 0, ""},
    {"M1 .", 3, ""},
    {"M1 --1", 3, ""},
    {"Mnan inf", 1, ""},
    {"M0x10 1", 2, ""},
    {"M1e999 1", 1, ""},
    {"M1 -1e99999999999999999999", 3, ""},
    {"M0 0A1 1 0 2 0 5 5", 11, "M0 0"},
    {"M0 0A1 1 0 0 -1 5 5", 13, "M0 0"},
};

/// Any bit pattern that is a number.
double makeNumber(std::mt19937_64& engine) {
    const std::uint64_t bits = engine();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return std::isfinite(value) ? value : 0.5;
}

} // namespace

TEST(Ky2DPathDataTest, ReadsTheWholeGrammar) {
    for (const Reading& reading : cReadings) {
        Commands commands;
        EXPECT_TRUE(Ky2DPathData::parse(reading.text, commands)) << reading.text;
        EXPECT_EQ(Ky2DPathData::format(commands), reading.normal) << reading.text;
    }
}

TEST(Ky2DPathDataTest, ALongNumberCountsByItsValue) {
    const std::string zeros(400, '0');
    const auto read = [](const std::string& text) {
        Commands commands;
        return Ky2DPathData::parse("H" + text, commands) ? Ky2DPathData::format(commands) : "none";
    };
    EXPECT_EQ(read("0." + zeros + "1e50"), "H0");
    EXPECT_EQ(read("0." + zeros + "1e401"), "H1");
    EXPECT_EQ(read("1" + zeros + "e-50"), "none");
    EXPECT_EQ(read("1" + zeros + "e-400"), "H1");
}

TEST(Ky2DPathDataTest, KeepsWhatStandsBeforeAnError) {
    for (const Error& error : cErrors) {
        Commands commands;
        std::size_t position = 99;
        EXPECT_FALSE(Ky2DPathData::parse(error.text, commands, &position)) << error.text;
        EXPECT_EQ(position, error.position) << error.text;
        EXPECT_EQ(Ky2DPathData::format(commands), error.kept) << error.text;
    }
    Commands commands;
    EXPECT_FALSE(Ky2DPathData::parse(std::string_view("M1 1\0L2 2", 9), commands));
}

TEST(Ky2DPathDataTest, EveryNumberComesBackExactly) {
    std::mt19937_64 engine(11);
    Commands commands;
    for (int i = 0; i < 5000; ++i) {
        Command command(static_cast<std::int32_t>(engine() % Command::eNbTypes));
        for (unsigned n = 0; n < Command::getNbNeeded(command.getType()); ++n) {
            const bool isFlag = command.getType() / 2 == Command::eArcTo / 2 && (n == 3 || n == 4);
            command.addCoordinate(isFlag ? static_cast<double>(engine() % 2) : makeNumber(engine));
        }
        commands.push_back(command);
    }
    Commands again;
    ASSERT_TRUE(Ky2DPathData::parse(Ky2DPathData::format(commands), again));
    EXPECT_EQ(again, commands);
}

TEST(Ky2DPathDataTest, LeavesOutWhatNoTextCanSay) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Ky2DPathData::format({Command(Command::eMoveTo, {1}), Command(-1, {1, 2}), Command(19),
                                    Command(Command::eLineTo, {infinity, 1}), Command(Command::eLineTo, {1, 2, 3}),
                                    Command(Command::eArcTo, {1, 2, 3, std::nan(""), -7, 4, 5})}),
              "L1 2A1 2 3 0 1 4 5");
}

TEST(Ky2DPathCommandTest, HoldsMoreNumbersThanItsTypeNeeds) {
    Command command(Command::eLineTo);
    for (int i = 0; i < 20; ++i)
        command.addCoordinate(i);
    Command copy(command), moved(std::move(command)), assigned(Command::eClose, {5});
    EXPECT_EQ(command.getNbCoordinates(), 0U); // NOLINT(bugprone-use-after-move): it is as good as new.
    assigned = copy;
    copy.setPoint(9, KyVec2d(1, 2));
    copy.setPoint(10, KyVec2d(1, 2));
    copy.setCoordinate(20, 1);
    EXPECT_EQ(assigned, moved);
    EXPECT_FALSE(copy == moved);
    EXPECT_EQ(copy.getPoint(9), KyVec2d(1, 2));
    EXPECT_EQ(moved.getPoint(9), KyVec2d(18, 19));
    EXPECT_EQ(moved.getNbPoints(), 10U);
    moved.clear();
    EXPECT_EQ(moved, Command(Command::eLineTo));
    moved.addPoint(KyVec2d(3, 4));
    assigned = std::move(moved);
    EXPECT_EQ(assigned, Command(Command::eLineTo, {3, 4}));
    EXPECT_EQ(sizeof(Command), 64U);
}

TEST(Ky2DPathCommandTest, TypesAndLettersNameEachOther) {
    for (std::int32_t type = 0; type < Command::eNbTypes; ++type)
        EXPECT_EQ(Command::findType(Command::getLetter(type)), type);
    EXPECT_EQ(Command::findType('z'), Command::eClose);
    EXPECT_EQ(Command::findType('x'), -1);
    EXPECT_EQ(Command::getLetter(19), '\0');
}
