// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyEasing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr double cOvershoot = 1.70158;
/// Half of an InOut movement overshoots as far as a whole In movement.
constexpr double cInOutOvershoot = cOvershoot * 1.525;

double back(double t) {
    return t * t * ((cOvershoot + 1.0) * t - cOvershoot);
}

double backOfInOut(double t) {
    return t * t * ((cInOutOvershoot + 1.0) * t - cInOutOvershoot);
}

double bounce(double t) {
    struct Arc {
        double mEnd, mMiddle, mHeight;
    };
    static constexpr std::array<Arc, 4> cArcs{{{1.0 / 2.75, 0.0, 0.0},
                                               {2.0 / 2.75, 1.5 / 2.75, 0.75},
                                               {2.5 / 2.75, 2.25 / 2.75, 0.9375},
                                               {2.0, 2.625 / 2.75, 0.984375}}};
    const double reversed = 1.0 - t;
    const auto arc = std::find_if(cArcs.begin(), cArcs.end(), [reversed](const Arc& a) { return reversed < a.mEnd; });
    const double offset = reversed - arc->mMiddle;
    return 1.0 - (7.5625 * offset * offset + arc->mHeight);
}

double circ(double t) {
    return 1.0 - std::sqrt(1.0 - t * t);
}

double cubic(double t) {
    return t * t * t;
}

double elasticWithPeriod(double t, double period) {
    return -std::exp2(10.0 * (t - 1.0)) * std::sin((t - 1.0 - period / 4.0) * 2.0 * std::numbers::pi / period);
}

double elastic(double t) {
    return elasticWithPeriod(t, 0.3);
}

double elasticOfInOut(double t) {
    return elasticWithPeriod(t, 0.45);
}

double expo(double t) {
    return std::exp2(10.0 * (t - 1.0));
}

double linear(double t) {
    return t;
}

double quad(double t) {
    return t * t;
}

double quart(double t) {
    return t * t * t * t;
}

double quint(double t) {
    return t * t * t * t * t;
}

double sine(double t) {
    return 1.0 - std::cos(t * std::numbers::pi / 2.0);
}

using Curve = double (*)(double);

struct Family {
    Curve mIn;
    Curve mInOfInOut;
};

constexpr std::array<Family, 11> cFamilies{{{back, backOfInOut},
                                            {bounce, bounce},
                                            {circ, circ},
                                            {cubic, cubic},
                                            {elastic, elasticOfInOut},
                                            {expo, expo},
                                            {linear, linear},
                                            {quad, quad},
                                            {quart, quart},
                                            {quint, quint},
                                            {sine, sine}}};

constexpr std::array<const char*, KyEasing::eNbKinds> cNames{
    "BackIn",       "BackOut",    "BackInOut", "BounceIn",  "BounceOut",  "BounceInOut", "CircIn",
    "CircOut",      "CircInOut",  "CubicIn",   "CubicOut",  "CubicInOut", "ElasticIn",   "ElasticOut",
    "ElasticInOut", "ExpoIn",     "ExpoOut",   "ExpoInOut", "LinearIn",   "LinearOut",   "LinearInOut",
    "QuadIn",       "QuadOut",    "QuadInOut", "QuartIn",   "QuartOut",   "QuartInOut",  "QuintIn",
    "QuintOut",     "QuintInOut", "SineIn",    "SineOut",   "SineInOut"};

bool isKind(int kind) {
    return kind >= 0 && kind < KyEasing::eNbKinds;
}

double inOut(Curve in, double t) {
    return t < 0.5 ? in(2.0 * t) / 2.0 : 1.0 - in(2.0 - 2.0 * t) / 2.0;
}

} // namespace

double KyEasing::compute(Kind kind, double time) {
    if (!(time > 0.0))
        return 0.0;
    if (time >= 1.0)
        return 1.0;
    if (!isKind(kind))
        return time;
    const Family& family = cFamilies[static_cast<std::size_t>(kind / 3)];
    const std::array<double, 3> results{family.mIn(time), 1.0 - family.mIn(1.0 - time), inOut(family.mInOfInOut, time)};
    return results[static_cast<std::size_t>(kind % 3)];
}

const char* KyEasing::getName(Kind kind) {
    return isKind(kind) ? cNames[static_cast<std::size_t>(kind)] : "";
}
