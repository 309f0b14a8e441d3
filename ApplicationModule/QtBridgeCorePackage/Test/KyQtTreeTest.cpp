// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTestFixture.h"

#include <QElapsedTimer>
#include <QTreeWidget>

#include <memory>

class KyQtTreeTest : public KyQtTestFixture {};

namespace {

/// Counts the items that live.
class CountedItem : public QTreeWidgetItem {
public:
    CountedItem() { ++msCount; }
    CountedItem(const CountedItem&) = delete;
    CountedItem& operator=(const CountedItem&) = delete;
    ~CountedItem() override { --msCount; }
    static inline int msCount = 0;
};

} // namespace

TEST_F(KyQtTreeTest, ItemsAreBuiltAndRead) {
    expectRuns("tree = QTreeWidget() root = tree:invisibleRootItem() a, b = QTreeWidgetItem(), QTreeWidgetItem() "
               "a:setText(0, 'ä') a:setText(2, 'z') a:setIcon(1, QIcon('none.png')) b:setText(0, 'b') "
               "a:addChild(b) root:addChild(a) c = QTreeWidgetItem() root:insertChild(0, c)");
    expectTexts({{"root:childCount(), root:child(1) == a, root:child(2), root:indexOfChild(a)", "2, true, nil, 1"},
                 {"a:text(0), a:text(2), a:text(1), a:columnCount(), a:child(0):text(0)", "ä, z, , 3, b"},
                 {"b:parent() == a, a:parent(), tree:currentItem(), b:indexOfChild(a), root == a",
                  "true, nil, nil, -1, false"}});
    expectRuns("root:removeChild(a)");
    expectTexts({{"root:childCount(), a:text(0), b:parent() == a, b:text(0)", "1, ä, true, b"}});
    expectRuns("root:addChild(a) a = nil collectgarbage() a = root:child(1)");
    EXPECT_EQ(eval("a:text(0), b:parent() == a"), "ä, true");
}

TEST_F(KyQtTreeTest, HandlesOfDeletedItemsAreErrors) {
    auto tree = std::make_unique<QTreeWidget>();
    auto* first = new CountedItem;
    tree->addTopLevelItem(first);
    first->addChild(new CountedItem);
    publish("tree", tree.get());
    expectRuns("root = tree:invisibleRootItem() item = root:child(0) child = item:child(0) own = QTreeWidgetItem() "
               "item:addChild(own) item:setText(0, 'x') tree2 = QTreeWidget()");
    tree->insertTopLevelItem(0, new CountedItem);
    EXPECT_EQ(eval("item:text(0), root:indexOfChild(item)"), "x, 1");
    tree->clear();
    for (const char* call : {"item:text(0)", "child:setText(0, 'y')", "own:childCount()", "item:addChild(own)",
                             "root:addChild(item)", "root:removeChild(child)"})
        expectOutput({{call, "the Qt object has been deleted"}});
    EXPECT_EQ(eval("root:childCount(), item == item"), "0, true");
    tree.reset();
    expectOutput({{"root:childCount()", "the Qt object has been deleted"}});
    EXPECT_EQ(CountedItem::msCount, 0);
}

TEST_F(KyQtTreeTest, AnItemThatLeavesItsTreeBelongsToTheScript) {
    QTreeWidget tree;
    auto* item = new CountedItem;
    item->setText(0, "host");
    item->addChild(new CountedItem);
    tree.addTopLevelItem(item);
    publish("tree", &tree);
    expectRuns("root = tree:invisibleRootItem() item = root:child(0) root:removeChild(item)");
    EXPECT_EQ(CountedItem::msCount, 0);
    EXPECT_EQ(eval("item:text(0), item:childCount(), item:parent()"), "host, 1, nil");
    expectRuns("child = item:child(0) item = nil collectgarbage() child:parent():setText(1, 'still')");
    EXPECT_EQ(eval("child:parent():text(1)"), "still");
    expectRuns("child = nil collectgarbage()");
}

TEST_F(KyQtTreeTest, HandlesFollowWhatLeavesTheTree) {
    QTreeWidget tree;
    for (const char* name : {"A", "B"}) {
        auto* item = new QTreeWidgetItem(&tree, QStringList(name));
        item->addChild(new QTreeWidgetItem(QStringList(QString(name) + "1")));
    }
    publish("tree", &tree);
    expectRuns("root = tree:invisibleRootItem() A, A2 = root:child(0), root:child(0) A1 = A:child(0) B1 = "
               "root:child(1):child(0) own, below = QTreeWidgetItem(), QTreeWidgetItem() own:setText(0, 'own') "
               "A:addChild(own) own:addChild(below)");
    tree.topLevelItem(0)->child(1)->child(0)->addChild(new QTreeWidgetItem(QStringList("host")));
    expectRuns("deep = below:child(0) root:removeChild(A)");
    expectTexts({{"A:text(0), A2:text(0), A1:text(0), own:text(0), deep:text(0)", "A, A, A1, own, host"},
                 {"A == A2, A:child(0) == A1, A:child(1) == own, own:child(0) == below, below:child(0) == deep",
                  "true, true, true, true, true"},
                 {"A:childCount(), B1:text(0), root:childCount()", "2, B1, 1"}});
    expectRuns("root:insertChild(0, A) collectgarbage()");
    EXPECT_EQ(eval("root:child(0) == A2, A1:parent() == A, deep:text(0)"), "true, true, host");
}

TEST_F(KyQtTreeTest, SignalsMayTakeItemsAway) {
    for (const char* kind : {"own", "host"}) {
        QTreeWidget tree;
        for (int i = 0; i < 4; ++i)
            tree.addTopLevelItem(new CountedItem);
        publish("tree", &tree);
        expectRuns("root = tree:invisibleRootItem()");
        if (kind == std::string("own"))
            expectRuns("for i = 1, 4 do root:removeChild(root:child(0)) root:addChild(QTreeWidgetItem()) end");
        const int nbItems = CountedItem::msCount;
        expectRuns("nbErrors = 0 function take() local item = tree:currentItem() or root:child(0) "
                   "if item and not pcall(root.removeChild, root, item) then nbErrors = nbErrors + 1 end "
                   "item = nil collectgarbage() end connect(tree, 'currentItemChanged', take) "
                   "connect(tree, 'itemChanged', take)");
        tree.setCurrentItem(tree.topLevelItem(1));
        EXPECT_EQ(eval("nbErrors > 0"), "true");
        const int nbLeft = tree.topLevelItemCount();
        EXPECT_LT(nbLeft, 4);
        tree.topLevelItem(0)->setCheckState(0, Qt::Checked);
        EXPECT_LT(tree.topLevelItemCount(), nbLeft);
        EXPECT_EQ(CountedItem::msCount, nbItems) << "the tree may still use them";
        finishDeletions();
        EXPECT_EQ(CountedItem::msCount, nbItems == 0 ? 0 : tree.topLevelItemCount());
    }
}

TEST_F(KyQtTreeTest, ItemsOfATreeThatASignalEndedAreGone) {
    auto* tree = new QTreeWidget;
    tree->addTopLevelItem(new CountedItem);
    publish("tree", tree);
    expectRuns("root = tree:invisibleRootItem() item, own = root:child(0), QTreeWidgetItem() item:addChild(own) "
               "connect(tree, 'itemChanged', function() deleteQObject(tree) log = '' "
               "for _, i in ipairs {root, item, own} do log = log .. tostring((pcall(i.text, i, 0))) end end)");
    tree->topLevelItem(0)->setText(0, "x");
    EXPECT_EQ(eval("log"), "falsefalsefalse");
    finishDeletions();
    EXPECT_EQ(CountedItem::msCount, 0);
}

TEST_F(KyQtTreeTest, LongChainsEndInTime) {
    QElapsedTimer timer;
    timer.start();
    expectRuns("top = QTreeWidgetItem() deep = top for i = 1, 50000 do local below = QTreeWidgetItem() "
               "deep:addChild(below) deep = below end top, deep = nil collectgarbage() collectgarbage()");
    finishDeletions();
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(KyQtTreeTest, WhatWouldHangTheTreeIsRefused) {
    expectRuns("tree = QTreeWidget() root = tree:invisibleRootItem() a, b = QTreeWidgetItem(), QTreeWidgetItem() "
               "a:addChild(b)");
    expectOutput({{"b:addChild(a)", "below itself"},
                  {"a:addChild(a)", "below itself"},
                  {"a:addChild(b)", "already has a parent"},
                  {"a:addChild(root)", "already has a parent"},
                  {"root:insertChild(1, a)", "index out of range"},
                  {"root:insertChild(-1, a)", "index out of range"},
                  {"a:setText(100000000, 'x')", "column out of range"},
                  {"a:text(-1)", "column out of range"},
                  {"a:setIcon(0/0, QIcon())", "column out of range"}});
}
