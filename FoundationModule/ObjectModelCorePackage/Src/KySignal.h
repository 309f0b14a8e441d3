// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"
#include "KyFoundationExport.h"

#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

class KyHasSlots;
class KySignalBase;

/// One connection's record, shared by the signal, the receiver and emissions under way.
struct KySlot {
    virtual ~KySlot() = default;

    /// Bytes of a pointer to member, so that the same slot is found again; all zero for other callables.
    using Key = std::array<std::byte, 32>;

    /// Null for a callable without receiver.
    KyHasSlots* receiver = nullptr;
    /// Null once the connection has ended.
    KySignalBase* signal = nullptr;
    /// Which member function it is.
    Key key{};

    /// False once the connection has ended.
    bool isConnected() const { return signal != nullptr; }
};

/// A handle on one connection, for callables without a receiver. Copies name the same connection.
class KYFOUNDATION_EXPORT KyConnection {
public:
    KyConnection() = default;
    /// Names the connection of that record.
    explicit KyConnection(std::weak_ptr<KySlot> slot)
        : mSlot(std::move(slot)) {}
    /// False once the connection has ended, and for a handle that never had one.
    bool isConnected() const;
    /// Ends the connection; nothing when it has ended already.
    void disconnect();

private:
    std::weak_ptr<KySlot> mSlot;
};

/// Base of a class with slots: its end drops all connections to it. Not copied as identity: a copy has none.
class KYFOUNDATION_EXPORT KyHasSlots {
public:
    KyHasSlots() = default;
    /// @{
    /// A copy has no connections, and assignment leaves those there are.
    KyHasSlots(const KyHasSlots&) {}
    KyHasSlots& operator=(const KyHasSlots&) { return *this; }
    /// @}
    virtual ~KyHasSlots();

    /// Ends all connections to this receiver.
    void disconnectAll();

private:
    friend class KySignalBase;
    void enter(const std::shared_ptr<KySlot>& slot);

    std::vector<std::weak_ptr<KySlot>> mConnections;
};

/// A named signal without its argument types: what can be found by name or index and listened to with fields.
class KYFOUNDATION_EXPORT KySignalBase {
public:
    /// Takes the arguments as fields.
    using GenericSlot = std::function<void(std::span<const KyField>)>;

    /// The name is what scripts and editors show.
    explicit KySignalBase(std::string name)
        : mName(std::move(name)) {}
    KySignalBase(const KySignalBase&) = delete;
    KySignalBase& operator=(const KySignalBase&) = delete;
    virtual ~KySignalBase();

    /// As scripts and editors show it.
    const std::string& getName() const { return mName; }
    /// Those alive now.
    unsigned getNbConnections() const;
    /// Number of arguments of one sending.
    virtual unsigned getNbArguments() const = 0;
    /// Listens with the arguments as fields; arguments that no field holds arrive empty.
    virtual KyConnection connectGeneric(GenericSlot slot, KyHasSlots* receiver = nullptr) = 0;
    /// Drops every connection to the receiver.
    void disconnect(const KyHasSlots* receiver);
    /// Ends all connections of the signal.
    void disconnectAll();

protected:
    friend class KyConnection;
    friend class KyHasSlots;

    /// In the order of connection.
    using Slots = std::vector<std::shared_ptr<KySlot>>;

    /// Adds the connection on both sides; a null receiver is allowed.
    KyConnection enter(std::shared_ptr<KySlot> slot, KyHasSlots* receiver);
    /// Ends one connection.
    void drop(KySlot& slot);
    /// Ends the connections of that member function to the receiver.
    void dropKey(const KyHasSlots* receiver, const KySlot::Key& key);

    /// While one lives, slots are only marked as dropped; it knows when the signal ends under it.
    class KYFOUNDATION_EXPORT Emission {
    public:
        /// Begins a sending of the signal.
        explicit Emission(KySignalBase& signal);
        ~Emission();
        Emission(const Emission&) = delete;
        Emission& operator=(const Emission&) = delete;
        /// False once the signal ended during the sending.
        bool isSignalAlive() const { return mSignal != nullptr; }

    private:
        friend class KySignalBase;
        KySignalBase* mSignal;
        Emission* mOuter;
    };

    /// The connections, those marked as dropped included.
    Slots mSlots;

private:
    void compact();

    std::string mName;
    Emission* mEmission = nullptr;
    bool mNeedsCompaction = false;
};

/// A signal of an object, sent with arguments. Slots run in the order of connection, those connected during a sending
/// from the next one on. Connections end with either side; connecting, disconnecting, and ending the receiver or the
/// signal itself are allowed while it is being sent.
///
/// ```
/// KySignal<int> changed("changed");
/// changed.connect(&listener, &Listener::onChanged);  // Listener derives from KyHasSlots
/// changed.send(7);
/// ```
template <class... Args>
class KySignal : public KySignalBase {
public:
    /// What a callable without member function is kept as.
    using Function = std::function<void(Args...)>;

    using KySignalBase::disconnect;
    /// With the signal's name.
    using KySignalBase::KySignalBase;

    /// Connects a member function; the receiver's end disconnects it.
    template <class Receiver, class Class, class Result>
    KyConnection connect(Receiver* receiver, Result (Class::*slot)(Args...)) {
        return connectMember(receiver, slot, [receiver, slot](Args... args) { (receiver->*slot)(args...); });
    }
    /// Connects a callable; with a receiver its end disconnects it.
    KyConnection connect(KyHasSlots& receiver, Function function) { return add(&receiver, std::move(function), {}); }
    KyConnection connect(Function function) { return add(nullptr, std::move(function), {}); }

    /// Ends the connections of that member function to the receiver.
    template <class Receiver, class Class, class Result>
    void disconnect(Receiver* receiver, Result (Class::*slot)(Args...)) {
        dropKey(receiver, makeKey(slot));
    }

    /// Runs the slots; the signal may end meanwhile.
    void send(Args... args) {
        if (mSlots.empty())
            return;
        Emission emission(*this);
        const std::size_t count = mSlots.size();
        for (std::size_t i = 0; i < count && emission.isSignalAlive(); ++i) {
            const std::shared_ptr<KySlot> slot = mSlots[i];
            if (slot->isConnected())
                static_cast<TypedSlot&>(*slot).function(args...);
        }
    }

    unsigned getNbArguments() const override { return sizeof...(Args); }

    KyConnection connectGeneric(GenericSlot slot, KyHasSlots* receiver = nullptr) override {
        Function function = [slot = std::move(slot)](Args... args) {
            const std::array<KyField, sizeof...(Args)> fields{toField(args)...};
            slot(fields);
        };
        return add(receiver, std::move(function), {});
    }

private:
    struct TypedSlot : KySlot {
        Function function;
    };

    template <class Arg>
    static KyField toField(const Arg& arg) {
        using Value = KyFieldValue<Arg>;
        constexpr bool cIsText = std::is_same_v<Value, std::string>;
        constexpr bool cIsObject = requires {
            arg->getLiveness();
        };
        constexpr bool cIsForeignPointer = std::is_pointer_v<Arg> && !cIsObject && !cIsText;
        if constexpr (std::is_copy_constructible_v<Value> && !cIsForeignPointer)
            return KyField(arg);
        else
            return KyField();
    }

    template <class Slot>
    static KySlot::Key makeKey(Slot slot) {
        static_assert(sizeof(slot) <= sizeof(KySlot::Key));
        KySlot::Key key{};
        std::memcpy(key.data(), &slot, sizeof(slot));
        return key;
    }

    template <class Receiver, class Slot, class Call>
    KyConnection connectMember(Receiver* receiver, Slot slot, Call call) {
        return add(receiver, std::move(call), makeKey(slot));
    }

    KyConnection add(KyHasSlots* receiver, Function function, const KySlot::Key& key) {
        auto slot = std::make_shared<TypedSlot>();
        slot->function = std::move(function);
        slot->key = key;
        return enter(std::move(slot), receiver);
    }
};
