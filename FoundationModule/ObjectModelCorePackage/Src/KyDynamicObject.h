// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObject.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// An object whose attributes are made at run time, each with its own value. One name may stand in several categories;
/// by name alone the earliest of them is found. Adding, clearing and removing tell the listeners with the attribute's
/// name.
///
/// ```
/// KyDynamicObject settings;
/// settings.addAttribute("Speed", KyField(2.5), "category=Motion;");
/// settings.getAttribute("Speed")->setValue(settings, 3);
/// ```
class KYFOUNDATION_EXPORT KyDynamicObject : public KyObject {
public:
    KyDynamicObject();
    ~KyDynamicObject() override;

    static const KyType* getType();
    static KyDynamicObject* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;
    /// A copy with the same attributes and values.
    KyObject* clone() const override;

    /// Adds an attribute that keeps the type of its first value. Metadata is "key=value;" pairs, of which "category" is
    /// part of the identity. Null when the name is empty, the value is of no type, or name and category exist already.
    const KyAttributeInterface* addAttribute(const std::string& name, const KyField& value,
                                             const std::string& metadata = {});
    /// False when there is none.
    bool removeAttribute(std::string_view name, std::string_view category = {});
    /// Null when there is none.
    const KyAttributeInterface* findAttribute(std::string_view name, std::string_view category) const;
    /// Removes all attributes of that category.
    void clearCategory(std::string_view category);

protected:
    const KyAttributeInterface* getOwnAttribute(std::string_view name) const override;
    unsigned getNbOwnAttributes() const override;
    const KyAttributeInterface* getOwnAttribute(unsigned index) const override;

private:
    class ValueAttribute;

    std::vector<std::unique_ptr<ValueAttribute>> mAttributes;

    static const KyType* msType;
};
