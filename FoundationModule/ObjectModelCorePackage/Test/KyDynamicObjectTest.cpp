// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDynamicObject.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(KyDynamicObject, KeepsOneNameInTwoCategories) {
    KyDynamicObject object;
    const auto* local = object.addAttribute("x", 1, "category=Locals;");
    const auto* global = object.addAttribute("x", "one", "category=Globals;note=kept");
    ASSERT_TRUE(local && global && local != global);
    EXPECT_EQ(object.addAttribute("x", 2, "category=Locals;"), nullptr);
    EXPECT_EQ(object.getAttribute("x"), local) << "by name alone the earliest";
    EXPECT_EQ(object.findAttribute("x", "Globals"), global);
    EXPECT_EQ(global->getMetadata("note"), "kept");
    EXPECT_EQ(object.getNbAttributes(), 2u);
    object.clearCategory("Locals");
    EXPECT_EQ(object.getAttribute("x"), global);
    EXPECT_TRUE(object.removeAttribute("x", "Globals"));
    EXPECT_FALSE(object.removeAttribute("x", "Globals"));
    EXPECT_EQ(object.getAttribute("x"), nullptr);
}

TEST(KyDynamicObject, AttributesKeepTheTypeOfTheirFirstValueAndAreCloned) {
    KyDynamicObject object;
    const auto* attribute = object.addAttribute("n", 1);
    EXPECT_TRUE(attribute->setValue(object, 2.9));
    EXPECT_FALSE(attribute->setValue(object, "two"));
    KyField value;
    EXPECT_TRUE(attribute->getValue(object, value));
    EXPECT_EQ(value.toInt(), 2);
    EXPECT_EQ(object.addAttribute("", 1), nullptr);
    EXPECT_EQ(object.addAttribute("empty", KyField()), nullptr);
    const std::unique_ptr<KyObject> copy(object.clone());
    ASSERT_NE(copy->getAttribute("n"), nullptr);
    EXPECT_TRUE(copy->getAttribute("n")->getValue(*copy, value));
    EXPECT_EQ(value.toInt(), 2);
}

TEST(KyDynamicObject, BearsListenersThatRemoveTheAttributeBeingSet) {
    std::string seen;
    KyDynamicObject object;
    const auto* attribute = object.addAttribute("a-name-longer-than-any-inline-buffer", "text");
    object.modifiedSignal().connect([&](KyObject*, KyObjectModificationType kind, const std::string& name, int) {
        if (kind != eAttributeChanged)
            return;
        seen = name;
        object.removeAttribute(seen);
    });
    EXPECT_TRUE(attribute->setValue(object, "other"));
    EXPECT_EQ(seen, "a-name-longer-than-any-inline-buffer");
    EXPECT_FALSE(object.removeAttribute(seen));
}

TEST(KyDynamicObject, TellsWhatIsAddedToListenersThatMayRemoveItAtOnce) {
    KyDynamicObject object;
    EXPECT_NE(object.addAttribute("untold", 1), nullptr);
    std::vector<std::string> seen;
    bool removes = false;
    object.modifiedSignal().connect([&](KyObject*, KyObjectModificationType kind, const std::string& name, int) {
        if (kind != eElementInserted)
            return;
        seen.push_back(name);
        EXPECT_NE(object.getAttribute(name), nullptr) << "it is there when it is told";
        if (removes) {
            EXPECT_TRUE(object.removeAttribute(name, "Locals"));
        }
    });
    const auto* const global = object.addAttribute("x", 1, "category=Globals;");
    ASSERT_NE(global, nullptr);
    EXPECT_EQ(object.findAttribute("x", "Globals"), global);
    EXPECT_EQ(object.addAttribute("x", 2, "category=Globals;"), nullptr);
    EXPECT_EQ(object.addAttribute("", 2), nullptr);
    EXPECT_EQ(object.addAttribute("empty", KyField()), nullptr);
    EXPECT_EQ(seen, std::vector<std::string>{"x"}) << "what is refused is not told";
    removes = true;
    EXPECT_EQ(object.addAttribute("x", 2, "category=Locals;"), nullptr) << "not the other one of that name";
    EXPECT_EQ(seen.size(), 2u);
    EXPECT_EQ(object.getAttribute("x"), global);
    EXPECT_EQ(object.getNbAttributes(), 2u);
}

} // namespace
