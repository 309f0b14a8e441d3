// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMainTaskManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

struct Probe : KyTask {
    Probe(std::string& target, char name, std::function<void()> then = {})
        : log(target)
        , letter(name)
        , action(std::move(then)) {}
    bool execute() override {
        log += letter;
        const auto running = action;
        if (running)
            running();
        return true;
    }
    std::string& log;
    char letter;
    std::function<void()> action;
};

TEST(KyCompositeTask, RunsPhasesInOrderAndEachInListOrder) {
    std::string log;
    KyCompositeTask root;
    Probe a(log, 'a'), b(log, 'b'), c(log, 'c'), d(log, 'd');
    EXPECT_TRUE(root.insertTask(&a, -1, 2));
    EXPECT_TRUE(root.insertTask(&b, -1, 0));
    EXPECT_TRUE(root.insertTask(&c));
    EXPECT_TRUE(root.insertTask(&d, 0, 2));
    root.update();
    EXPECT_EQ(log, "bcda");
    c.setEnabled(false);
    root.update();
    EXPECT_EQ(log, "bcdabda");
}

TEST(KyCompositeTask, RefusesWhatWouldBreakTheTree) {
    KyCompositeTask root, inner, leaf;
    EXPECT_FALSE(root.insertTask(nullptr));
    EXPECT_FALSE(root.insertTask(&root));
    EXPECT_FALSE(root.insertTask(&inner, -1, 3));
    EXPECT_TRUE(root.insertTask(&inner));
    EXPECT_FALSE(root.insertTask(&inner));
    EXPECT_TRUE(inner.insertTask(&leaf));
    EXPECT_FALSE(leaf.insertTask(&root)) << "an ancestor";
    EXPECT_TRUE(root.insertTask(&leaf)) << "it leaves its old parent";
    EXPECT_EQ(leaf.getParent(), &root);
    EXPECT_FALSE(inner.removeTask(&leaf));
}

TEST(KyCompositeTask, BearsChildrenThatComeAndGoWhileItRuns) {
    std::string log;
    KyCompositeTask root;
    Probe late(log, 'l');
    auto victim = std::make_unique<Probe>(log, 'v');
    Probe first(log, 'f', [&] {
        victim.reset();
        root.insertTask(&late, 0, 2);
    });
    root.insertTask(&first);
    root.insertTask(victim.get());
    root.update();
    EXPECT_EQ(log, "f") << "the removed one is not run any more, the new one not yet";
    first.action = [&] { root.removeTask(&first); };
    root.update();
    EXPECT_EQ(log, "ffl");
    EXPECT_EQ(root.getNbTasks(), 1u);
}

TEST(KyCompositeTask, BearsItsOwnEndWhileItRuns) {
    std::string log;
    auto root = std::make_unique<KyCompositeTask>();
    KyMainTaskManager& manager = KyMainTaskManager::get();
    Probe ender(log, 'e', [&] { root.reset(); });
    Probe after(log, 'a');
    root->insertTask(&ender);
    root->insertTask(&after);
    ASSERT_TRUE(manager.addTask(root.get(), -1, 0));
    manager.update();
    EXPECT_EQ(log, "e");
    EXPECT_EQ(after.getParent(), nullptr);
    EXPECT_EQ(manager.getNbTasks(), 0u);
}

} // namespace
