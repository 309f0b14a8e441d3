// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaValueClass_p.h"

#include "KyLuaState_p.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <concepts>
#include <cstdint>
#include <memory>
#include <type_traits>

class QDir;
class QIcon;
class QUrl;
class QWidget;

/// What the Qt classes of scripts have in common. A class is put together like this:
///
/// ```
/// auto labelClass = kyQtClass<QLabel, QWidget>("QLabel");
/// kyQtWidgetConstructors<QLabel>(labelClass);
/// labelClass.def("text", kyQt<&QLabel::text>)
///     .def("setText", kyQtCall([](QLabel& label, const QString& text) { label.setText(text); }));
/// ```
///
/// - Scripts hold handles, never the objects: whoever owns an object may delete it, and using its handle is an error of
///   the script then. The collector deletes handles only.
/// - `T&` as parameter takes an object of the class, `T*` also nil. Results `T*` become handles of the nearest class
///   that scripts have, null nil.
/// - `const QString&` takes a text of Lua or a `QString`; results `QString` become texts of Lua, in UTF-8 both.
/// - Numbers are `double`; kyQt gives Qt's own functions the integers, limited to their range.
/// - Functions fail by throwing a KyScriptError.

/// One Qt class as scripts know it.
struct KyQtClass {
    const char* name;
    luabind::detail::class_id id;
    const QMetaObject* meta;
};

/// Enters the class, once in the process, and gives its index.
std::uint16_t kyAddQtClass(const KyQtClass& qtClass);

/// What stands in a Lua object of a Qt class.
class KyQtHandle final : public luabind::detail::instance_holder {
public:
    KyQtHandle(QObject* object, std::uint16_t classIndex);

    /// The handle itself for its own class, nothing for all others.
    std::pair<void*, int> get(const luabind::detail::cast_graph& casts,
                              luabind::detail::class_id target) const override;
    void release() override {}

    /// Null when the object is gone.
    QObject* find() const;
    /// Throws when the object is gone.
    QObject& check() const;
    /// Number of steps from the object's class up to the wanted one, -1 when it is none of those. Of an object that is
    /// gone the class is known that it had for scripts.
    int getDistance(const QMetaObject& wanted) const;
    const char* getClassName() const;

private:
    std::uint16_t mClassIndex;
    QPointer<QObject> mObject;
};

/// Null when the value at the index is no Qt object.
KyQtHandle* kyFindQtHandle(lua_State* state, int index);
/// Pushes a handle of the object's nearest class; nil for null and for an object that is ending.
void kyPushQtObject(lua_State* state, QObject* object);
/// Gives an object of Lua that is being constructed its handle, and scripts the Qt object. Throws, and deletes the
/// latter, when it cannot.
void kyInitQtHandle(const luabind::argument& self, std::uint16_t classIndex, std::unique_ptr<QObject> object);
/// Throws unless widgets may be made here and now.
void kyCheckQtGui();
/// The text at the index, or that of a `QString`; false for all else. Never raises.
bool kyReadQtText(lua_State* state, int index, QString* text);
void kyPushQtText(lua_State* state, const QString& text);

/// A text of scripts as an object: the class `QString`.
struct KyQtText {
    QString text;

    bool operator==(const KyQtText&) const = default;
};
template <>
inline constexpr bool cIsLuaValue<KyQtText> = true;
template <>
inline constexpr bool cIsLuaValue<QUrl> = true;
template <>
inline constexpr bool cIsLuaValue<QIcon> = true;
template <>
inline constexpr bool cIsLuaValue<QDir> = true;

template <class T>
concept KyQtObjectClass = requires {
    T::staticMetaObject;
}
&&std::is_base_of_v<QObject, T>;

namespace luabind {

template <KyQtObjectClass T>
struct default_converter<T&, void> {
    using type = default_converter;
    using is_native = boost::mpl::true_;

    int consumed_args() const { return 1; }

    template <class By>
    int match(lua_State* state, By, int index) {
        const KyQtHandle* handle = kyFindQtHandle(state, index);
        return handle ? handle->getDistance(T::staticMetaObject) : -1;
    }

    template <class By>
    T& apply(lua_State* state, By, int index) {
        return static_cast<T&>(kyFindQtHandle(state, index)->check());
    }

    template <class By>
    void converter_postcall(lua_State*, By, int) {}
};

template <KyQtObjectClass T>
struct default_converter<T*, void> : default_converter<T&> {
    using type = default_converter;

    template <class By>
    int match(lua_State* state, By by, int index) {
        return lua_isnil(state, index) ? 0 : default_converter<T&>::match(state, by, index);
    }

    template <class By>
    T* apply(lua_State* state, By by, int index) {
        return lua_isnil(state, index) ? nullptr : &default_converter<T&>::apply(state, by, index);
    }

    void apply(lua_State* state, T* object) { kyPushQtObject(state, object); }
};

template <>
struct default_converter<QString> : native_converter_base<QString> {
    int compute_score(lua_State* state, int index) { return kyReadQtText(state, index, nullptr) ? 0 : -1; }

    QString from(lua_State* state, int index) {
        QString text;
        kyReadQtText(state, index, &text);
        return text;
    }

    void to(lua_State* state, const QString& text) { kyPushQtText(state, text); }
};
template <>
struct default_converter<const QString&> : default_converter<QString> {};

/// Results only: a table from 1.
template <>
struct default_converter<QStringList> : native_converter_base<QStringList> {
    void to(lua_State* state, const QStringList& texts);
};
template <>
struct default_converter<QObjectList> : native_converter_base<QObjectList> {
    void to(lua_State* state, const QObjectList& objects);
};
template <>
struct default_converter<QVariant> : native_converter_base<QVariant> {
    void to(lua_State* state, const QVariant& value);
};

/// Candidates in errors show what scripts may give.
template <>
struct detail::type_to_string<const QString&> {
    static void get(lua_State* state) { lua_pushliteral(state, "text"); }
};

} // namespace luabind

namespace KyQtDetail {

template <class T>
struct Argument {
    using Lua = T;
    static T from(T value) { return static_cast<T>(value); }
};

template <class T>
requires std::is_arithmetic_v<T> &&(!std::same_as<T, bool>)struct Argument<T> {
    using Lua = double;
    static T from(double value) { return kyToLuaElement<T>(value); }
};

template <class Function, Function cFunction>
struct Guard;

template <class R, class Self, class... A, R (*cFunction)(Self, A...)>
struct Guard<R (*)(Self, A...), cFunction> {
    static R call(lua_State* state, Self self, typename Argument<A>::Lua... arguments) {
        const KyLuaRunning running(state);
        return cFunction(self, Argument<A>::from(arguments)...);
    }
};

template <class R, class Self, class... A, R (Self::*cMethod)(A...)>
struct Guard<R (Self::*)(A...), cMethod> {
    static R call(lua_State* state, Self& self, typename Argument<A>::Lua... arguments) {
        const KyLuaRunning running(state);
        return (self.*cMethod)(Argument<A>::from(arguments)...);
    }
};

template <class R, class Self, class... A, R (Self::*cMethod)(A...) const>
struct Guard<R (Self::*)(A...) const, cMethod> {
    static R call(lua_State* state, Self& self, typename Argument<A>::Lua... arguments) {
        const KyLuaRunning running(state);
        return (self.*cMethod)(Argument<A>::from(arguments)...);
    }
};

template <class R, class Self, class... A, R (Self::*cMethod)(A...) noexcept>
struct Guard<R (Self::*)(A...) noexcept, cMethod> {
    static R call(lua_State* state, Self& self, typename Argument<A>::Lua... arguments) {
        const KyLuaRunning running(state);
        return (self.*cMethod)(Argument<A>::from(arguments)...);
    }
};

template <class Callable, class Signature>
struct CallGuard;

template <class Callable, class R, class Self, class... A>
struct CallGuard<Callable, R (*)(Self, A...)> {
    static R call(lua_State* state, Self self, typename Argument<A>::Lua... arguments) {
        const KyLuaRunning running(state);
        return Callable()(self, Argument<A>::from(arguments)...);
    }
};

template <class... A>
struct Constructor {
    QObject* (*make)(A...);
    std::uint16_t classIndex;

    void operator()(const luabind::argument& self, A... arguments) const {
        kyCheckQtGui();
        kyInitQtHandle(self, classIndex, std::unique_ptr<QObject>(make(arguments...)));
    }
};

} // namespace KyQtDetail

/// A method of Qt, or a function on an object, as scripts call it: what it sends on the way may run scripts in turn.
template <auto cFunction>
inline constexpr auto kyQt = &KyQtDetail::Guard<decltype(cFunction), cFunction>::call;
/// As kyQt, from a lambda expression without captures.
template <class Callable>
constexpr auto kyQtCall(Callable callable) {
    return &KyQtDetail::CallGuard<Callable, decltype(+callable)>::call;
}

/// A Qt class that objects are found by: by its name, which is that of `meta` unless objects of the class are made
/// elsewhere.
template <KyQtObjectClass T, class Base>
luabind::class_<T, Base> kyQtClass(const char* name, const QMetaObject& meta = T::staticMetaObject) {
    kyAddQtClass({name, luabind::detail::registered_class<T>::id, &meta});
    return luabind::class_<T, Base>(name);
}

/// A constructor to be bound as "__init", from a function that makes the object, for a class that is entered.
template <class T, class... A>
auto kyQtConstructor(QObject* (*make)(A...)) {
    const std::uint16_t classIndex = kyAddQtClass({nullptr, luabind::detail::registered_class<T>::id, nullptr});
    return luabind::tag_function<void(const luabind::argument&, A...)>(KyQtDetail::Constructor<A...>{make, classIndex});
}

/// The constructors of every widget: with the parent, nil or nothing.
template <class T, class Class>
void kyQtWidgetConstructors(Class& widgetClass) {
    widgetClass.def("__init", kyQtConstructor<T>(+[]() -> QObject* { return new T(nullptr); }))
        .def("__init", kyQtConstructor<T>(+[](QWidget* parent) -> QObject* { return new T(parent); }));
}

/// The constructors of a widget that shows a text: with it, and with the parent or nil.
template <class T, class Class>
void kyQtTextConstructors(Class& widgetClass) {
    kyQtWidgetConstructors<T>(widgetClass);
    widgetClass.def("__init", kyQtConstructor<T>(+[](const QString& text) -> QObject* { return new T(text); }))
        .def("__init",
             kyQtConstructor<T>(+[](const QString& text, QWidget* parent) -> QObject* { return new T(text, parent); }));
}

/// Value, minimum and maximum of what shows a number in a range.
template <class T, class Class>
void kyQtRange(Class& rangeClass) {
    rangeClass.def("value", kyQtCall([](T& range) { return range.value(); }))
        .def("setValue", kyQtCall([](T& range, int value) { range.setValue(value); }))
        .def("minimum", kyQtCall([](T& range) { return range.minimum(); }))
        .def("setMinimum", kyQtCall([](T& range, int minimum) { range.setMinimum(minimum); }))
        .def("maximum", kyQtCall([](T& range) { return range.maximum(); }))
        .def("setMaximum", kyQtCall([](T& range, int maximum) { range.setMaximum(maximum); }));
}

/// Throws when the object must stay where it is: an inner part of a widget.
void kyCheckQtMovable(const QObject& object);
/// As kyCheckQtMovable; throws also when putting the object below the parent would make it its own parent.
void kyCheckQtParent(const QObject& object, const QObject& parent);
