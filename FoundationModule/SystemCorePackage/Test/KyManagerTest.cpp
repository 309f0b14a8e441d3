// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyManager.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
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
} // namespace

TEST(KyManagerTest, ANameOrAnElementTwiceIsRefusedAndWhatIsLeftUnownedReported) {
    static std::vector<std::string> reports;
    KyException::setReportHandler([](const std::string& text) { reports.push_back(text); });
    Page zebra(1), ant(2);
    {
        KyManager<Page> pages(false);
        ASSERT_TRUE(pages.add("zebra", &zebra));
        EXPECT_FALSE(pages.add("zebra", &ant));
        EXPECT_FALSE(pages.add("other", &zebra));
        EXPECT_FALSE(pages.add("null", nullptr));
        ASSERT_TRUE(pages.add("ant", &ant));
        EXPECT_EQ(pages.find("ant"), 1) << "in the order they came in";
        EXPECT_TRUE(pages.remove(&zebra));
        EXPECT_EQ(pages.getElement(1), nullptr);
    }
    KyException::setReportHandler(nullptr);
    EXPECT_TRUE(gDeleted.empty());
    EXPECT_EQ(reports,
              std::vector<std::string>{"All elements registered within the manager were not correctly destroyed "
                                       "before its own destruction."});
}

TEST(KyManagerTest, AnOwnerDeletesTheLastFirstAndNothingThatWasRemoved) {
    Page kept(3);
    gDeleted.clear();
    {
        KyManager<Page> pages(true);
        pages.add("one", new Page(1));
        pages.add("two", new Page(2, &pages));
        pages.add("kept", &kept);
        EXPECT_TRUE(pages.remove(&kept));
    }
    EXPECT_EQ(gDeleted, (std::vector<int>{2, 1}));
}
