// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAttributeTarget_p.h"

#include "KyFieldText_p.h"

#include "KyException.h"
#include "KyType.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace {

template <class Callable>
bool guard(const KyAttributeTarget& target, Callable&& callable) {
    const std::string name = target.name;
    try {
        return callable();
    } catch (const std::exception& exception) {
        KyException::create("Attribute \"" + name + "\": " + exception.what());
    } catch (...) {
        KyException::create("Attribute \"" + name + "\": unknown C++ exception");
    }
    return false;
}

} // namespace

const KyAttributeInterface* KyAttributeTarget::find() const {
    const KyObject* owner = object.get();
    if (!owner)
        return nullptr;
    const KyAttributeInterface* attribute = owner->getAttribute(name);
    if (!attribute || attribute->getMetadata("category") == category)
        return attribute;
    for (unsigned i = 0; i < owner->getNbAttributes(); ++i) {
        const KyAttributeInterface* other = owner->getAttribute(i);
        if (other->getName() == name && other->getMetadata("category") == category)
            return other;
    }
    return nullptr;
}

bool KyAttributeTarget::read(KyField& value) const {
    const KyAttributeInterface* attribute = find();
    const auto at = static_cast<unsigned>(std::max(index, 0));
    return attribute && guard(*this, [&] { return attribute->getValue(*object.get(), value, at); });
}

bool KyAttributeTarget::write(const KyField& value) const {
    const KyAttributeInterface* attribute = find();
    const auto at = static_cast<unsigned>(std::max(index, 0));
    return attribute && guard(*this, [&] { return attribute->setValue(*object.get(), value, at); });
}

bool KyAttributeTarget::isStill(const KyField& value) const {
    KyField present;
    return index < 0 || (read(present) && KyFieldText::areSame(present, value));
}

int KyAttributeTarget::countValues() const {
    const KyAttributeInterface* attribute = find();
    unsigned count = 0;
    if (!attribute || !guard(*this, [&] { return attribute->getNbValues(*object.get(), count); }))
        return 0;
    return static_cast<int>(std::min<unsigned>(count, std::numeric_limits<int>::max()));
}
