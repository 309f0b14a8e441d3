// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyButtonAction.h"
#include "KyButtonCondition.h"
#include "KyChannelReference.h"
#include "KyDeviceButtonChannel.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

/// What the composite channels share: a list of sources, worked through in order at each update(), and a list of button
/// conditions without which nothing is computed.
///
/// A source is an operation, a kind and an index into the sources of that kind. Insertions append the operation and the
/// kind; only the index goes where the position says. So an insertion elsewhere than at the end pairs the indices with
/// other kinds and operations: give -1 where that is not wanted. A source whose channel is gone or disabled is skipped,
/// as is one whose index is beyond its kind's list.
class KYAPPLICATION_EXPORT KyCompositeChannel {
public:
    /// Which list a source's index counts in.
    enum SourceKind : std::uint32_t { eSourceAxis, eSourceButton, eSourceOrientation, eSourceConstant, eNbSourceKinds };

    virtual ~KyCompositeChannel();

    /// All conditions must hold; that of a button that is gone does not.
    void insertCondition(const KyDeviceButtonChannel& button, KyButtonCondition condition, std::uint8_t expected);
    /// True when every condition holds, and without conditions.
    bool isConditionChecked() const { return mConditions.empty() || areConditionsFulfilled(); }
    /// The index alone, without an operation and a kind. Positions outside of the list are its end.
    void insertChannel(unsigned index, int position = -1);

protected:
    /// One entry of the composition: which channel or constant, and how it is combined with those before.
    struct Source {
        /// The list that the index counts in.
        SourceKind kind;
        /// A number of the operations of the channel's class.
        std::uint32_t operation;
        /// Position in the list of its kind.
        std::uint32_t index;
    };

    /// A number that is 0 in what was moved from, as the lists there are empty.
    struct Count {
        Count() = default;
        Count(const Count&) = default;
        Count& operator=(const Count&) = default;
        /// Leaves 0 behind.
        Count(Count&& other) noexcept
            : value(std::exchange(other.value, 0)) {}
        /// Leaves 0 behind.
        Count& operator=(Count&& other) noexcept {
            value = other.value;
            other.value = 0;
            return *this;
        }

        /// The number itself.
        std::size_t value = 0;
    };

    KyCompositeChannel() = default;
    KyCompositeChannel(const KyCompositeChannel&) = default;
    KyCompositeChannel& operator=(const KyCompositeChannel&) = default;
    KyCompositeChannel(KyCompositeChannel&&) noexcept = default;
    KyCompositeChannel& operator=(KyCompositeChannel&&) noexcept = default;

    /// The end of every insertion; kinds that the channel cannot use are reported at its updates.
    void insertSource(SourceKind kind, std::uint32_t operation, unsigned index, int position);
    /// Grows with every insertion.
    std::size_t getNbIndices() const { return mNbIndices.value; }
    /// Those that have an operation, a kind and an index.
    std::span<const Source> getSources() const {
        return {mSources.data(), std::min(mNbWholeSources.value, mSources.size())};
    }

    /// An enabled button whose action takes place; null for all others.
    static const KyDeviceButtonChannel* getFiring(const KyChannelReference<const KyDeviceButtonChannel>& button,
                                                  KyButtonAction action);

private:
    struct Condition {
        KyChannelReference<const KyDeviceButtonChannel> button;
        KyButtonCondition kind;
        std::uint8_t expected;
    };

    bool areConditionsFulfilled() const;

    std::vector<Condition> mConditions;
    std::vector<Source> mSources;
    Count mNbIndices;
    Count mNbWholeSources;
};
