// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettingsTest.h"

#include "KyHasSettings.h"
#include "KyQSettingsEditor.h"

namespace {

class Client : public KyHasSettings {
public:
    void updateDataFromSettings() override { mZoom = getSettings()->getAttribute("View", "zoom", mZoom); }
    double mZoom = 2;
};

class Page : public KyQSettingsEditor {
public:
    using KyQSettingsEditor::KyQSettingsEditor;
    using KyQSettingsEditor::setName;
};

class KyQSettingsEditorTest : public KySettingsTest {
protected:
    static KyQSettingsEditor* find(const QString& name) {
        return KySettingsEditorManager::get()->editSettingsEditor(name);
    }
    Client mClient;
};

TEST_F(KyQSettingsEditorTest, PagesAreRegisteredWhileTheyLive) {
    {
        const Page page("Gr\u00FCn", "group", "item", &mClient);
        EXPECT_EQ(find("Gr\u00FCn"), &page);
        EXPECT_EQ(KySettingsEditorManager::get()->getSettingsEditor("Gr\u00FCn"), &page);
        EXPECT_EQ(page.getName() + page.getGroupName() + page.getItemName(), "Gr\xfcngroupitem");
        EXPECT_EQ(page.getHasSettings(), &mClient);
    }
    EXPECT_EQ(find("Gr\u00FCn"), nullptr);
}

TEST_F(KyQSettingsEditorTest, OfTwoPagesOfOneNameTheFirstStays) {
    const Page first("Page", "", "", nullptr);
    Page second("Page", "", "", nullptr);
    EXPECT_EQ(find("Page"), &first);
    EXPECT_EQ(msReports, "A settings page named \"Page\" is registered already.|");
    for (const char* name : {"Other", "Third"}) {
        second.setName(name);
        EXPECT_EQ(find(name), &second);
        EXPECT_EQ(second.objectName(), name);
    }
    EXPECT_EQ(find("Other"), nullptr);
    EXPECT_EQ(std::ranges::count(msReports, '|'), 1);
}

TEST_F(KyQSettingsEditorTest, PagesMayBeMadeAndEndWithoutAManager) {
    KySettingsEditorManager::finalizeClass();
    const Page without("Page", "", "", nullptr);
    KySettingsEditorManager::initializeClass();
    EXPECT_EQ(find("Page"), nullptr);
    {
        const Page left("Left", "", "", nullptr);
        KySettingsEditorManager::finalizeClass();
        EXPECT_EQ(msReports, "All elements registered within the manager were not correctly destroyed before its own "
                             "destruction.|");
    }
}

TEST_F(KyQSettingsEditorTest, AcceptSavesWhatIsThereAndAnswersFalse) {
    mClient.updateDataFromSettings();
    EXPECT_EQ(mClient.mZoom, 2) << "its own where the document has none";
    mClient.editSettings()->setFilePath(at("a.xml"));
    mClient.editSettings()->setAttribute("View", "zoom", 3.5);
    mClient.updateDataFromSettings();
    EXPECT_EQ(mClient.mZoom, 3.5);
    Page page("Page", "", "", &mClient);
    EXPECT_FALSE(page.accept());
    EXPECT_TRUE(read("a.xml").contains("zoom"));
    EXPECT_EQ(page.getProblem(), "");
    mClient.editSettings()->setFilePath(at("none/a.xml"));
    EXPECT_FALSE(page.accept());
    EXPECT_TRUE(page.getProblem().contains("none/a.xml"));
    mClient.editSettings()->setFilePath("");
    EXPECT_FALSE(page.accept());
    EXPECT_EQ(page.getProblem(), "") << "it has no file to be saved in";
    auto other = std::make_unique<Client>();
    Page left("Left", "", "", other.get());
    other.reset();
    EXPECT_EQ(left.editHasSettings(), nullptr);
    EXPECT_FALSE(left.accept());
}

} // namespace
