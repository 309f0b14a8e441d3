// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyManager.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
std::vector<std::string> gReports;
std::vector<int> gDeleted;

struct Page {
    explicit Page(int pageNumber, KyManager<Page>* pageOwner = nullptr)
        : number(pageNumber)
        , owner(pageOwner) {}
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;
    ~Page() {
        gDeleted.push_back(number);
        EXPECT_FALSE(owner && owner->remove(this));
    }

    int number;
    KyManager<Page>* owner;
};

class KyManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        gReports.clear();
        gDeleted.clear();
        KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
    }
    void TearDown() override { KyException::setReportHandler(nullptr); }
};
} // namespace

TEST_F(KyManagerTest, ElementsKeepTheOrderInWhichTheyCame) {
    Page zebra(1);
    Page ant(2);
    KyManager<Page> pages(false);
    ASSERT_TRUE(pages.add("zebra", &zebra));
    ASSERT_TRUE(pages.add("ant", &ant));
    EXPECT_EQ(pages.getNbElements(), 2U);
    EXPECT_EQ(pages.find("zebra"), 0);
    EXPECT_EQ(pages.find("ant"), 1);
    EXPECT_EQ(pages.find("Ant"), -1);
    EXPECT_EQ(pages.getElement(1), &ant);
    EXPECT_EQ(pages.getElementName(1), "ant");
    EXPECT_TRUE(pages.remove(&zebra));
    EXPECT_EQ(pages.find("ant"), 0);
    EXPECT_TRUE(pages.remove(&ant));
}

TEST_F(KyManagerTest, OutOfRangeGivesNothing) {
    const KyManager<Page> pages(false);
    EXPECT_EQ(pages.getElement(0), nullptr);
    EXPECT_EQ(pages.getElementName(7), "");
}

TEST_F(KyManagerTest, ANameOrAnElementTwiceIsRefused) {
    Page first(1);
    Page second(2);
    KyManager<Page> pages(false);
    ASSERT_TRUE(pages.add("name", &first));
    EXPECT_FALSE(pages.add("name", &second));
    EXPECT_FALSE(pages.add("other", &first));
    EXPECT_FALSE(pages.add("null", nullptr));
    EXPECT_EQ(pages.getNbElements(), 1U);
    EXPECT_FALSE(pages.remove(&second));
    EXPECT_TRUE(pages.remove(&first));
}

TEST_F(KyManagerTest, AnOwnerDeletesTheLastFirst) {
    {
        KyManager<Page> pages(true);
        pages.add("one", new Page(1));
        pages.add("two", new Page(2, &pages));
        EXPECT_TRUE(pages.ownsElements());
    }
    EXPECT_EQ(gDeleted, (std::vector<int>{2, 1}));
    EXPECT_TRUE(gReports.empty());
}

TEST_F(KyManagerTest, ARemovedElementIsNoLongerOwned) {
    Page page(1);
    {
        KyManager<Page> pages(true);
        pages.add("page", &page);
        EXPECT_TRUE(pages.remove(&page));
    }
    EXPECT_TRUE(gDeleted.empty());
}

TEST_F(KyManagerTest, ElementsLeftInAManagerThatDoesNotOwnThemAreReported) {
    Page page(1);
    {
        KyManager<Page> pages(false);
        pages.add("page", &page);
    }
    EXPECT_TRUE(gDeleted.empty());
    EXPECT_EQ(gReports,
              std::vector<std::string>{"All elements registered within the manager were not correctly destroyed "
                                       "before its own destruction."});
}
