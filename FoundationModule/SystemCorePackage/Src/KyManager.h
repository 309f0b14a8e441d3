// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyException.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A registry of named objects in the order in which they came. It owns its elements or not, as
/// said at construction; an owning manager deletes the last one first when it ends. Elements may
/// remove themselves in their own destructor. For one thread.
///
///     KyManager<Page> pages(false);
///     pages.add("General", &page);
///     Page* found = pages.find("General") < 0 ? nullptr : pages.getElement(0);
template <class T>
class KyManager {
public:
    /// Whether the manager deletes what is in it.
    explicit KyManager(bool ownsElements)
        : mOwnsElements(ownsElements) {}
    KyManager(const KyManager&) = delete;
    KyManager& operator=(const KyManager&) = delete;

    /// Deletes the elements when they are owned; reports when others are left.
    ~KyManager() {
        if (!mOwnsElements && !mElements.empty())
            KyException::create("All elements registered within the manager were not correctly destroyed "
                                "before its own destruction.");
        while (mOwnsElements && !mElements.empty())
            delete takeLast();
    }

    /// Whether the manager deletes what is in it.
    [[nodiscard]] bool ownsElements() const { return mOwnsElements; }
    /// Indices count in the order of adding.
    [[nodiscard]] unsigned getNbElements() const { return static_cast<unsigned>(mElements.size()); }

    /// Index of the name, -1 when it is absent.
    [[nodiscard]] int find(std::string_view name) const {
        const auto found = std::ranges::find(mElements, name, &Element::first);
        return found == mElements.end() ? -1 : static_cast<int>(found - mElements.begin());
    }

    /// Null when the index is out of range.
    [[nodiscard]] T* getElement(unsigned index) const {
        return index < mElements.size() ? mElements[index].second : nullptr;
    }

    /// Empty when the index is out of range.
    [[nodiscard]] const std::string& getElementName(unsigned index) const {
        static const std::string cNone;
        return index < mElements.size() ? mElements[index].first : cNone;
    }

    /// False, and nothing changes, for null, for a name that exists and for an element already here.
    bool add(const std::string& name, T* element) {
        if (!element || find(name) >= 0 || findElement(element) != mElements.end())
            return false;
        mElements.emplace_back(name, element);
        return true;
    }

    /// Takes the element out without deleting it; false when it is not here.
    bool remove(T* element) {
        const auto found = findElement(element);
        if (found == mElements.end())
            return false;
        mElements.erase(found);
        return true;
    }

private:
    using Element = std::pair<std::string, T*>;

    [[nodiscard]] auto findElement(const T* element) const {
        return std::ranges::find(mElements, element, &Element::second);
    }

    // Out of the list before it is deleted, so that its destructor may call remove.
    T* takeLast() {
        T* element = mElements.back().second;
        mElements.pop_back();
        return element;
    }

    std::vector<Element> mElements;
    bool mOwnsElements;
};
