// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <string>
#include <string_view>
#include <vector>

class KyScriptEngine;

// Types stand in the notation of the annotations that Lua editors read: "number", "KyNode?", "string[]", "string|URL".

/// One argument of a call, or of a signal.
struct KyScriptParameter {
    /// As its registration says; made up from its type where that says nothing.
    std::string name;
    /// In the notation above.
    std::string type;
    /// May be left out, with those after it.
    bool isOptional = false;
};

/// One way to call a function.
struct KyScriptCall {
    /// In the order of the call, without the object.
    std::vector<KyScriptParameter> parameters;
    /// Empty for nothing.
    std::string result;
};

/// A function with its overloads, in the order of their registration.
struct KyScriptFunction {
    /// As scripts write it, without the table.
    std::string name;
    /// What it does; empty where nothing says.
    std::string text;
    /// Called with ":" on a value.
    bool isMethod = false;
    /// The overloads.
    std::vector<KyScriptCall> calls;
    /// The text given first is the name of the class of the result, which derives from the one that the call has.
    bool namesItsResult = false;
};

/// What is read from a value, and written unless it is read-only.
struct KyScriptMember {
    /// Where it comes from.
    enum Kind { eAttribute, eContainer, eComponent, eProperty, eNbKinds };

    /// As scripts write it.
    std::string name;
    /// Containers are read and written by index.
    Kind kind = eAttribute;
    /// Of a container's elements for a container.
    std::string type;
    /// Writing is an error in the script.
    bool isReadOnly = false;
    /// What it is; empty where nothing says.
    std::string text;
};

/// A number that a class or table has under a name.
struct KyScriptConstant {
    /// As scripts write it.
    std::string name;
    /// What it stands for.
    int value = 0;
};

/// A signal that scripts connect to by its name.
struct KyScriptSignal {
    /// As scripts write it.
    std::string name;
    /// What listeners are called with.
    std::vector<KyScriptParameter> parameters;
};

/// What an operator gives for another operand; unary ones have none.
struct KyScriptOperator {
    /// As in metatables: "__add".
    std::string name;
    /// In the notation above; empty for unary ones.
    std::string operand;
    /// In the notation above.
    std::string result;
};

/// A class, or a table of functions. What its parents have is not repeated.
struct KyScriptClass {
    /// The chapters of a reference.
    enum Group { eObjects, eValues, eQt, eTables, eNbGroups };

    /// As scripts write it.
    std::string name;
    /// The chapter that it stands in.
    Group group = eObjects;
    /// Empty for none.
    std::string parent;
    /// What it is for; empty where nothing says.
    std::string text;
    /// Whether there is a global of its name.
    bool isGlobal = false;
    /// The parameters of its constructors; none when scripts cannot make one.
    std::vector<KyScriptCall> constructors;
    /// Attributes, containers, components and properties.
    std::vector<KyScriptMember> members;
    /// Methods and functions of the table.
    std::vector<KyScriptFunction> functions;
    /// Fields of the table that are numbers.
    std::vector<KyScriptConstant> constants;
    /// The signals of its objects.
    std::vector<KyScriptSignal> emitted;
    /// Arithmetic that values of it take part in.
    std::vector<KyScriptOperator> operators;
    /// Entries of metatables that are no operators with a type: "__eq", "__tostring".
    std::vector<std::string> metamethods;
};

/// The values of an enumerated attribute: read as numbers from 0, written as numbers or names.
struct KyScriptEnumeration {
    /// Of the registered type.
    std::string name;
    /// Names of 0, 1 and so on.
    std::vector<std::string> values;
};

/// A variable that every script finds.
struct KyScriptGlobal {
    /// As scripts write it.
    std::string name;
    /// In the notation above.
    std::string type;
    /// What it is; empty where nothing says.
    std::string text;
    /// Attributes and components that hold an object of a narrower class now than the variable's class declares.
    std::vector<KyScriptMember> members = {};
};

/// A second global name of a class.
struct KyScriptAlias {
    /// The second name.
    std::string name;
    /// The class's own name.
    std::string target;
};

/// Everything that scripts see, as plain data: made of the type records, of the classes and functions that are bound,
/// and of the globals of a live engine. What Lua itself has is left out. Names are in the order of the alphabet, so
/// that the same program gives the same catalogue.
///
/// ```
/// const KyScriptCatalogue catalogue = KyScriptCatalogue::make(KyScriptEngine::get());
/// KyScriptStubs::write(catalogue, "stubs", error);
/// ```
struct KYAPPLICATION_EXPORT KyScriptCatalogue {
    /// Classes and tables of functions.
    std::vector<KyScriptClass> classes;
    /// Of enumerated attributes.
    std::vector<KyScriptEnumeration> enumerations;
    /// Second names of classes.
    std::vector<KyScriptAlias> aliases;
    /// Global functions.
    std::vector<KyScriptFunction> functions;
    /// Global variables.
    std::vector<KyScriptGlobal> globals;
    /// Calls whose parameters have no names of their own, and names that fit no call: what KyCallSignatures was not
    /// told, or was told wrongly.
    std::vector<std::string> unnamed;

    /// Binds every class first. Nothing but the records on a closed state.
    static KyScriptCatalogue make(KyScriptEngine& engine);

    /// Null when there is none.
    const KyScriptClass* findClass(std::string_view name) const;
    /// A global that is there at times only; nothing when it is there already.
    void addGlobal(KyScriptGlobal global);
};
