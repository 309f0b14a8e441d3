// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"
#include "KyFoundationExport.h"
#include "KyObjectModificationType.h"
#include "KyObjectReference.h"
#include "KySignal.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class KyType;

using KyModifiedSignal = KySignal<KyObject*, KyObjectModificationType, const std::string&, int>;

/// Base of all model objects: a described type, attributes and components by name, signals, a weak identity.
///
/// An object is made by `new` or by KyObject::create and ended by destroy(); counted ones (KyReferenceCounted) end with
/// their last reference. An object that ends sends its modified signal with kinds 0 and 1, once each, while it is
/// whole. Costs two words until somebody listens or refers to it.
///
/// ```
/// KyObject* box = KyObject::create("KyMeshNode");
/// box->getAttribute("Visible")->setValue(*box, false);
/// box->destroy();
/// ```
class KYFOUNDATION_EXPORT KyObject {
public:
    KyObject();
    /// A copy is a new identity: no listeners, no references, no attributes of its own.
    KyObject(const KyObject& other);
    /// Copies no identity: listeners, references and own attributes stay those of this object.
    KyObject& operator=(const KyObject& other);
    virtual ~KyObject();

    /// Null for an unknown or abstract type; the reference count of a counted object is 0.
    static KyObject* create(std::string_view typeName);
    static const KyType* getType();
    static KyObject* cast(KyObject* object) { return object; }
    static void initializeType();
    static void finalizeType();

    /// The dynamic type.
    virtual const KyType* getObjectType() const;
    /// A new object of the same class: made by the factory, then given every writable single value. Null for a class
    /// without a factory.
    virtual KyObject* clone() const;
    /// Ends the object: sends kinds 0 and 1, then deletes it. Of a counted object use removeReference instead.
    virtual void destroy();

    /// The base has no name: it reads as empty and setting does nothing.
    virtual const std::string& getName() const;
    virtual void setName(const std::string& name);
    /// True for classes whose name can be set.
    virtual bool hasNameAttribute() const;

    /// Attribute of that name, inherited and own ones included; null when there is none. One hash probe.
    const KyAttributeInterface* getAttribute(std::string_view name) const;
    /// Inherited and own ones.
    unsigned getNbAttributes() const;
    /// Attribute by index, base class first; null when out of range.
    const KyAttributeInterface* getAttribute(unsigned index) const;
    /// True for objects that carry attributes beside those of their type.
    bool hasOwnAttributes() const { return mHasOwnAttributes; }
    /// Null when there is no component of that name.
    virtual KyObject* getComponentByName(std::string_view name) const;

    /// Those of the class, and of the base classes when `inherited`.
    virtual unsigned getNbSignals(bool inherited = true) const;
    /// Null when out of range; the base has one signal, "modifiedSignal".
    virtual KySignalBase* editSignal(unsigned index);
    /// Empty when out of range.
    virtual const std::string& getSignalName(unsigned index) const;
    /// Null when there is no signal of that name.
    KySignalBase* editSignal(std::string_view name);
    /// How others may use the signal of that index; the base says 2, listen and send, for every one.
    virtual int getSignalAccess(unsigned index) const;

    /// Sent with (object, kind, attribute name, index; index -1 where none applies).
    KyModifiedSignal& modifiedSignal();
    /// @{
    /// As connect and disconnect of the modification signal.
    template <class Receiver, class Slot>
    void connectModified(Receiver* receiver, Slot slot) {
        modifiedSignal().connect(receiver, slot);
    }
    template <class Receiver, class Slot>
    void disconnectModified(Receiver* receiver, Slot slot) {
        if (mIsWatched)
            modifiedSignal().disconnect(receiver, slot);
    }
    /// @}
    /// Tells listeners that an attribute changed. Setters of C++ classes call it; an attribute set by name tells once,
    /// whether its setter called it or not.
    void notifyModified(KyObjectModificationType kind, const std::string& name, int index = -1);
    void notifyModified(std::string_view name) { notifyModified(eAttributeChanged, std::string(name)); }

    /// False while nobody ever asked for the modification signal: a cheap question before telling a change.
    bool isWatched() const { return mIsWatched; }

    /// The record that tells others whether the object still lives; made on first use.
    KyLiveness* getLiveness() const;
    /// True once the end has been announced.
    bool isEnding() const { return mIsEnding; }

protected:
    /// Sends kinds 0 and 1 unless that has been done. Classes that end in ways of their own call it first.
    void notifyEnd();

    /// Attributes that the object carries beside those of its type; null when there is none of that name or index.
    virtual const KyAttributeInterface* getOwnAttribute(std::string_view name) const;
    /// Attributes that the object carries beside those of its type.
    virtual unsigned getNbOwnAttributes() const;
    /// Null when out of range.
    virtual const KyAttributeInterface* getOwnAttribute(unsigned index) const;

    /// Set by classes whose objects carry attributes of their own.
    bool mHasOwnAttributes = false;

private:
    struct Links;
    Links& editLinks() const;

    mutable std::unique_ptr<Links> mLinks;
    bool mIsEnding = false;
    bool mIsWatched = false;

    static const KyType* msType;
};

/// The object as a T, null when it is none. Needs no run-time type information when T has a type record.
template <class T>
T* kyCast(KyObject* object);
