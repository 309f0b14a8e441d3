// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFieldArgument.h"
#include "KyFunction.h"

#include <functional>
#include <memory>
#include <tuple>
#include <utility>

/// @cond

/// Parameter types, result and class of a callable.
template <class F>
struct KyCallableTraits : KyCallableTraits<decltype(&F::operator())> {
    using Class = void;
};
template <class R, class... A>
struct KyCallableTraits<R (*)(A...)> {
    using Result = R;
    using Class = void;
    using Arguments = std::tuple<A...>;
};
template <class R, class... A>
struct KyCallableTraits<R (*)(A...) noexcept> : KyCallableTraits<R (*)(A...)> {};
template <class R, class C, class... A>
struct KyCallableTraits<R (C::*)(A...)> {
    using Result = R;
    using Class = C;
    using Arguments = std::tuple<A...>;
};
template <class R, class C, class... A>
struct KyCallableTraits<R (C::*)(A...) const> : KyCallableTraits<R (C::*)(A...)> {};
template <class R, class C, class... A>
struct KyCallableTraits<R (C::*)(A...) noexcept> : KyCallableTraits<R (C::*)(A...)> {};
template <class R, class C, class... A>
struct KyCallableTraits<R (C::*)(A...) const noexcept> : KyCallableTraits<R (C::*)(A...)> {};

/// @endcond

/// What a callable gives when it is called as a method of T, or alone with T void.
template <class T, class Callable, class... A>
struct KyCallResult {
    using type = std::invoke_result_t<const Callable&, T&, A...>;
};
template <class Callable, class... A>
struct KyCallResult<void, Callable, A...> {
    using type = std::invoke_result_t<const Callable&, A...>;
};

/// What a parameter of type Arg takes.
template <class Arg>
KyParameter kyMakeParameter() {
    using Argument = KyFieldArgument<Arg>;
    KyParameter parameter;
    parameter.kind = Argument::getKind();
    parameter.isAny = Argument::cIsAny;
    if constexpr (Argument::cIsObject)
        parameter.objectType = &Argument::Target::getType;
    return parameter;
}

/// What a callable with that result gives, see kyToField.
template <class Result>
KyParameter kyMakeResult() {
    using Plain = std::remove_cvref_t<Result>;
    if constexpr (std::is_void_v<Result>)
        return KyParameter();
    else if constexpr (KyFieldDetail::cIsPointerList<Plain>) {
        KyParameter list = kyMakeParameter<typename Plain::value_type>();
        list.kind = KyFieldManager::getKind<std::vector<KyField>>();
        return list;
    } else
        return kyMakeParameter<Result>();
}

/// A KyFunction over any callable. With a class T the callable is a method: a member function of T or a callable whose
/// first parameter is a T&; with T void it takes its arguments only.
template <class T, class Callable, class... A>
class KyBoundFunction final : public KyFunction {
public:
    /// The callable is copied.
    KyBoundFunction(std::string name, Role role, Callable callable)
        : KyFunction(std::move(name), role, {kyMakeParameter<A>()...})
        , mCallable(std::move(callable)) {
        mResult = kyMakeResult<Result>();
        if constexpr (cHasNumberCall)
            mNumberCall = &callWithNumbers;
    }

    bool invoke(KyObject* object, std::span<const KyField> arguments, KyField& result) const override {
        if (arguments.size() != sizeof...(A))
            return false;
        return invokeWith(object, arguments, result, std::index_sequence_for<A...>());
    }

private:
    using Result = typename KyCallResult<T, Callable, A...>::type;

    // Wider integers would lose digits, booleans their type.
    static constexpr bool cIsNumberResult = std::is_void_v<Result> || std::is_floating_point_v<Result> ||
                                            std::is_same_v<Result, std::int32_t> ||
                                            std::is_same_v<Result, std::uint32_t>;
    static constexpr bool cHasNumberCall = cIsNumberResult && sizeof...(A) <= cMaxNumberParameters &&
                                           (std::is_floating_point_v<std::remove_cvref_t<A>> && ...) &&
                                           !(std::is_lvalue_reference_v<A> || ...);

    static int callWithNumbers(const KyFunction& function, KyObject* object, const double* arguments, double& result) {
        return callSpread(static_cast<const KyBoundFunction&>(function), object, arguments, result,
                          std::index_sequence_for<A...>());
    }

    template <std::size_t... I>
    static int callSpread(const KyBoundFunction& self, KyObject* object, [[maybe_unused]] const double* arguments,
                          double& result, std::index_sequence<I...>) {
        const auto call = [&](auto&... target) {
            if constexpr (std::is_void_v<Result>) {
                std::invoke(self.mCallable, target..., static_cast<A>(arguments[I])...);
                return 0;
            } else {
                result = static_cast<double>(std::invoke(self.mCallable, target..., static_cast<A>(arguments[I])...));
                return 1;
            }
        };
        if constexpr (std::is_void_v<T>) {
            return call();
        } else {
            T* target = kyCast<T>(object);
            return target ? call(*target) : -1;
        }
    }

    template <std::size_t... I>
    bool invokeWith(KyObject* object, [[maybe_unused]] std::span<const KyField> arguments, KyField& result,
                    std::index_sequence<I...>) const {
        std::tuple<typename KyFieldArgument<A>::Storage...> storage;
        if (!(KyFieldArgument<A>::read(arguments[I], std::get<I>(storage)) && ...))
            return false;
        if constexpr (std::is_void_v<T>) {
            store(result, mCallable, KyFieldArgument<A>::pass(std::get<I>(storage))...);
        } else {
            T* self = kyCast<T>(object);
            if (!self)
                return false;
            store(result, mCallable, *self, KyFieldArgument<A>::pass(std::get<I>(storage))...);
        }
        return true;
    }

    template <class... Passed>
    static void store(KyField& result, const Callable& callable, Passed&&... passed) {
        if constexpr (std::is_void_v<std::invoke_result_t<const Callable&, Passed...>>) {
            std::invoke(callable, std::forward<Passed>(passed)...);
            result.clear();
        } else {
            result = kyToField(std::invoke(callable, std::forward<Passed>(passed)...));
        }
    }

    Callable mCallable;
};

namespace KyFunctionDetail {

template <class T, class Callable, class... A>
std::unique_ptr<const KyFunction> make(std::string name, KyFunction::Role role, Callable callable, std::tuple<A...>*) {
    return std::make_unique<KyBoundFunction<T, Callable, A...>>(std::move(name), role, std::move(callable));
}

template <class T, class Callable, class Self, class... A>
std::unique_ptr<const KyFunction> makeWithSelf(std::string name, Callable callable, std::tuple<Self, A...>*) {
    return std::make_unique<KyBoundFunction<T, Callable, A...>>(std::move(name), KyFunction::Role::eMethod,
                                                                std::move(callable));
}

} // namespace KyFunctionDetail

/// A function for KyScriptEngine::bindFunction and the like.
///
/// ```
/// engine.bindFunction("add", kyMakeFunction("add", [](double a, double b) { return a + b; }).release());
/// ```
template <class Callable>
std::unique_ptr<KyFunction> kyMakeFunction(std::string name, Callable callable) {
    using Arguments = typename KyCallableTraits<Callable>::Arguments;
    auto made = KyFunctionDetail::make<void>(std::move(name), KyFunction::Role::eStatic, std::move(callable),
                                             static_cast<Arguments*>(nullptr));
    return std::unique_ptr<KyFunction>(const_cast<KyFunction*>(made.release()));
}

/// A method of T: a member function, or a callable whose first parameter is a T&.
template <class T, class Callable>
std::unique_ptr<const KyFunction> kyMakeMethod(std::string name, Callable callable) {
    using Traits = KyCallableTraits<Callable>;
    using Arguments = typename Traits::Arguments;
    if constexpr (std::is_member_function_pointer_v<Callable>)
        return KyFunctionDetail::make<T>(std::move(name), KyFunction::Role::eMethod, callable,
                                         static_cast<Arguments*>(nullptr));
    else
        return KyFunctionDetail::makeWithSelf<T>(std::move(name), std::move(callable),
                                                 static_cast<Arguments*>(nullptr));
}
