// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyStaticLuaMaps.h"

#include "KyField.h"
#include "KyMathForward.h"
#include "KyObject.h"

#include <memory>
#include <string>
#include <typeinfo>

#include <boost/any.hpp>
#include <lua.hpp>

class KyType;
struct KyEnum;
struct KyLuaShared;

/// The foundation's value types that are Lua classes without being built-in field types.
using KyLuaFurtherValues = KyTypeList<KyRayf, KyRayd, KyWayPointf, KyWayPointd, KyIntersectionPointf,
                                      KyIntersectionPointd, KyPlanei, KyPlanef, KyPlaned>;

/// The foundation's value types.
template <class T>
concept KyLuaValue = KyBuiltInFieldValue<T> ||(KyLuaFurtherValues::indexOf<T>() < KyLuaFurtherValues::cSize);

/// Carries objects and values of the object model into a Lua state and back. A light object, made for one operation on
/// a state that it does not own; its statics hold the converters. One thread.
///
/// In Lua an object is an instance: attributes, components and methods are its fields, in this order of precedence; an
/// attribute of several values reads as a proxy whose indices start at 0. Numbers are doubles: integers beyond 2^53
/// lose digits. Reading never raises a Lua error: what is not of the wanted kind gives null, 0, false or an invalid
/// field. Pushing needs a few free slots of the Lua stack and may raise memory errors, so hosts call it inside C
/// functions.
///
/// ```
/// int distance(lua_State* state) {
///     KyLuaBinder binder(state);
///     auto* node = static_cast<Node*>(binder.checkUserType(1, *Node::getType()));
///     binder.pushNumber(node ? node->getDistance() : 0.0);
///     return 1;
/// }
/// ```
class KYAPPLICATION_EXPORT KyLuaBinder : public KyObject {
public:
    /// @{
    /// See KyStaticLuaMaps.
    using CppToLuaConverter = KyStaticLuaMaps::CppToLua;
    using LuaToCppConverter = KyStaticLuaMaps::LuaToCpp;
    /// @}

    /// The state is not owned.
    explicit KyLuaBinder(lua_State* state);
    ~KyLuaBinder() override;

    static const KyType* getType();
    static KyLuaBinder* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    /// Converters, list field types, and bind(). Needs the script engine.
    static void initializeClass();
    static void finalizeClass();
    /// Makes the table of converters.
    static void staticInitialize();
    /// Ends the table of converters.
    static void staticFinalize();
    const KyType* getObjectType() const override;

    /// Not owned.
    lua_State* editLuaState() const { return mState; }

    /// Any value: nil as an empty field, numbers as double, tables as a list of the values 1 to #table, instances as
    /// object references. A KyInvalidField for functions, threads and foreign userdata.
    KyField checkField(int index) const;
    /// An instance of the type, or nil as an empty field; else a KyInvalidField.
    KyField checkField(int index, const KyType& type) const;
    /// A value converted to the C++ type, through the converter registered for it or as KyField::convert does; else a
    /// KyInvalidField.
    KyField checkField(int index, const std::type_info& type) const;
    /// The live object of an instance of the type or a derived one, else null.
    KyObject* checkUserType(int index, const KyType& type) const;
    /// True for a live instance of the type or of a derived one.
    bool isUserType(int index, const KyType& type) const;
    /// Lua's truth: false for nil and false.
    bool checkBoolean(int index) const;
    /// True for nil and for no value at all.
    bool checkNil(int index) const;
    /// Null unless it is a string or a number, which becomes a string; valid while the value stands on the stack.
    const char* checkString(int index) const;
    /// 0 unless it is a number or a text that holds one.
    double checkNumber(int index) const;
    /// Rounded down; 0 for what is no number or out of range.
    int checkInteger(int index) const;
    /// Whether the value is a property of a luabind class.
    bool isLuabindProperty(int index) const;
    /// Pushes the class table of a luabind object; nil for other values.
    void pushLuabindClassRepresentation(int index);

    /// Pushes one value, nil for what has no Lua form.
    void pushField(const KyField& field);
    /// Pushes a new instance, binding the object's class first when it is not bound; nil when that fails, which is
    /// reported. A counted object gets a reference, which the collector gives back.
    void pushUserType(KyObject& object);
    /// @{
    /// Pushes one value.
    void pushBoolean(bool value);
    void pushInteger(int value);
    void pushNumber(double value);
    /// @}
    /// Null pushes nil.
    void pushString(const char* text);
    /// With its embedded zeros.
    void pushString(const std::string& text);
    /// Pushes one nil.
    void pushNil();

    /// @{
    /// Push one value.
    void cpp_to_lua(bool value) { pushBoolean(value); }
    void cpp_to_lua(int value) { pushInteger(value); }
    void cpp_to_lua(unsigned value) { pushNumber(value); }
    void cpp_to_lua(float value) { pushNumber(static_cast<double>(value)); }
    void cpp_to_lua(double value) { pushNumber(value); }
    void cpp_to_lua(const char* text) { pushString(text); }
    void cpp_to_lua(const std::string& text) { pushString(text); }
    /// @}
    /// The value inside, of any type that crosses otherwise; nil for others and for an empty one.
    void cpp_to_lua(const boost::any& value);
    /// Null pushes nil.
    void cpp_to_lua(KyObject* object);
    /// The foundation's value types.
    template <class T>
    requires KyLuaValue<T>
    void cpp_to_lua(const T& value) { pushField(KyField(value)); }

    /// Builds the class table and the class metatable of a type. Null functions are left out. Raises Lua errors.
    void initLibrary(const KyType& type, lua_CFunction creator, lua_CFunction destructor, lua_CFunction collector);
    /// Makes a global table of constants, in place of what has that name.
    void createEnum(const char* name, unsigned count, const KyEnum* values);
    /// Adds constants to the global table of that name, made when there is none.
    void addEnum(const char* name, unsigned count, const KyEnum* values);
    /// Takes all values off the stack.
    void cleanStack();

    /// Whether the whole name is a letter or "_", followed by letters, digits and "_", all of ASCII.
    static bool isValidLuaVariable(const std::string& name);
    /// Sets the globals "createKyObject", "deleteKyObject", "bindAllClasses", "ldb" and "tprint" of the engine's state.
    /// To be called again after a reset of the state.
    static void bind();
    /// See KyStaticLuaMaps. Nothing before initializeClass.
    static void registerCppToLuaConverter(const std::type_info& type, CppToLuaConverter converter);
    /// See registerCppToLuaConverter.
    static void registerLuaToCppConverter(const std::type_info& type, LuaToCppConverter converter);
    /// Null before initializeClass and after finalizeClass.
    static const KyStaticLuaMaps* getLuaMaps() { return msLuaMaps.get(); }

private:
    KyLuaShared& editShared();

    lua_State* mState;
    /// What the state knows of its classes; looked up on first use.
    KyLuaShared* mShared = nullptr;

    static std::unique_ptr<KyStaticLuaMaps> msLuaMaps;
    static const KyType* msType;
    static bool msIsClassInitialized;
};
