// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeModel.h"

#include "KyQmlTestObjects.h"
#include "KyReportsFixture.h"

#include "KyDateTime.h"
#include "KyQuat.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <QUndoStack>

namespace {

/// A model that is checked for what Qt asks of models.
class KyQAttributeModelTest : public KyReportsFixture {
protected:
    KyQAttributeModelTest() {
        mModel.setUndoStack(&mStack);
        mModel.setOptions(KyQAttributeModel::eCategories);
        mModel.setObject(&mLamp);
    }

    std::unique_ptr<QAbstractItemModelTester> makeTester() {
        return std::make_unique<QAbstractItemModelTester>(&mModel,
                                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    /// The row at a path such as "Tags/[0]", opened on the way; its name must come first in its parent.
    QModelIndex find(const QString& path) {
        QModelIndex index;
        for (const QString& name : path.split('/')) {
            if (mModel.canFetchMore(index))
                mModel.fetchMore(index);
            const int count = mModel.rowCount(index);
            int row = 0;
            while (row < count && mModel.index(row, 0, index).data().toString() != name)
                ++row;
            if (row == count)
                return {};
            index = mModel.index(row, 0, index);
        }
        return index.siblingAtColumn(1);
    }
    std::string text(const QString& path) { return find(path).data().toString().toStdString(); }
    bool set(const QString& path, const QVariant& value) { return mModel.setData(find(path), value); }
    /// Names of the rows below, with blanks between.
    std::string names(const QString& path = {}) {
        const QModelIndex parent = path.isEmpty() ? QModelIndex() : find(path).siblingAtColumn(0);
        if (mModel.canFetchMore(parent))
            mModel.fetchMore(parent);
        QStringList texts;
        for (int row = 0; row < mModel.rowCount(parent); ++row)
            texts += mModel.index(row, 0, parent).data().toString();
        return texts.join(' ').toStdString();
    }

    QmlTestLamp mLamp;
    QUndoStack mStack;
    KyQAttributeModel mModel;
    std::unique_ptr<QAbstractItemModelTester> mTester = makeTester();
};

TEST_F(KyQAttributeModelTest, ShowsEachKindAndTakesItsText) {
    struct Row {
        const char* name;
        const char* shown;
        const char* given;
        const char* after;
    };
    mLamp.mShare = 0.1f;
    mLamp.mPower = 0.1;
    mLamp.mFriends = {KyField("a;b"), KyField(2.5), KyField("back\\")};
    for (const Row& row : std::initializer_list<Row>{
             {"Power", "0.1", "1e-300", "1e-300"},
             {"Share", "0.1", " 0.2 ", "0.2"},
             {"Count", "0", "-7", "-7"},
             {"Count", "-7", "1.5", "-7"},
             {"Count", "-7", "99999999999", "-7"},
             {"Big", "5000000000", "9007199254740993", "9007199254740993"},
             {"Label", "lamp", " 5 ", " 5 "},
             {"Mode", "Dim", "Bright", "Bright"},
             {"Mode", "Bright", "Blue", "Bright"},
             {"Tint", "1 0 0 1", "#00ff0080", "0 1 0 0.5019608"},
             {"Tint", "0 1 0 0.5019608", "7 0.25 0 1", "7 0.25 0 1"},
             {"Tint", "7 0.25 0 1", "many", "7 0.25 0 1"},
             {"Source", "a/b.png", "file:///c%20d.png", "file:///c%20d.png"},
             {"Center", "1 2", "0.1 -2", "0.1 -2"},
             {"Center", "0.1 -2", "1 2 3", "0.1 -2"},
             {"Position", "1 2 3", "4 5 6", "4 5 6"},
             {"Born", "2020-02-29", "2021-02-29", "2020-02-29"},
             {"Born", "2020-02-29", "1999-12-31", "1999-12-31"},
             {"Friends", "a\\;b;2.5;back\\\\", "c\\;d;8;7;9;true", "c\\;d;8;7;9;true"},
             {"Friends", "c\\;d;8;7;9;true", "", ""},
             {"Friends", "", "1;0.5;true;word;1 2 3", "1;0.5;true;word;1 2 3"},
             {"Fixed", "42", "1", "42"},
             {"Refusing", "-7", "1", "-7"},
             {"Partner", "none", "1", "none"},
         }) {
        EXPECT_EQ(text(row.name), row.shown) << row.name;
        set(row.name, row.given);
        EXPECT_EQ(text(row.name), row.after) << row.name << " given " << row.given;
    }
    EXPECT_EQ(mLamp.mPower, 1e-300);
    EXPECT_TRUE(mLamp.mFriends[0].get<std::int64_t>() && mLamp.mFriends[1].get<double>());
    EXPECT_TRUE(mLamp.mFriends[2].get<bool>() && mLamp.mFriends[4].isText());
}

TEST_F(KyQAttributeModelTest, TellsWhatCanBeChanged) {
    for (const char* name : {"Power", "Label", "Mode", "Tint", "Born", "Friends", "Partner", "Tags/[1]"})
        EXPECT_TRUE(find(name).flags().testFlag(Qt::ItemIsEditable)) << name;
    mLamp.mFriends = {KyField(&mLamp)};
    for (const char* name : {"Fixed", "Failing", "Friends", "Tags", "bulb"}) {
        EXPECT_FALSE(find(name).flags().testFlag(Qt::ItemIsEditable)) << name;
        EXPECT_FALSE(set(name, "1")) << name;
    }
    EXPECT_TRUE(find("Fixed").data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(find("Power").data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(msReports, std::vector<std::string>{"Attribute \"Failing\": lamp is broken"}) << "once";
    mModel.setOptions(KyQAttributeModel::eReadOnly);
    EXPECT_FALSE(set("Power", 3) || find("Power").flags().testFlag(Qt::ItemIsEditable));
    EXPECT_FALSE(find("Power").data(Qt::ForegroundRole).isValid());
}

TEST_F(KyQAttributeModelTest, FollowsValuesAndContainers) {
    mTester.reset(); // it takes the numbers of elements for something that stays with them
    find("Tags/[0]");
    const QPersistentModelIndex last = find("Tags/[2]");
    QSignalSpy changed(&mModel, &QAbstractItemModel::dataChanged);
    mLamp.getAttribute("Power")->setValue(mLamp, KyField(4));
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex(), find("Power"));
    const KyAttributeInterface& tags = *mLamp.getAttribute("Tags");
    tags.addValue(mLamp, 0, KyField("first"));
    EXPECT_EQ(last.row(), 3);
    EXPECT_EQ(changed[1][0].toModelIndex(), find("Tags/[1]").siblingAtColumn(0)) << "named anew";
    EXPECT_EQ(last.data(), "c");
    EXPECT_EQ(text("Tags/[0]"), "first");
    tags.removeValue(mLamp, 1);
    tags.setValue(mLamp, KyField("C"), 2);
    EXPECT_EQ(last.row(), 2);
    EXPECT_EQ(last.data(), "C");
    mLamp.mTags = {"x"};
    mLamp.notifyModified("Tags");
    EXPECT_FALSE(last.isValid());
    EXPECT_EQ(names("Tags"), "[0]");
    EXPECT_EQ(text("Tags/[0]"), "x");
    EXPECT_TRUE(set("Tags/[0]", "typed"));
    mStack.undo();
    EXPECT_EQ(mLamp.mTags, std::vector<std::string>{"x"});
    mLamp.mTags.assign(20000, "many");
    mLamp.notifyModified("");
    EXPECT_EQ(mModel.rowCount(find("Tags").siblingAtColumn(0)), KyQAttributeModel::cMaxNbElements);
}

TEST_F(KyQAttributeModelTest, OpensComponentsAndReferencesWhenAsked) {
    auto bulb = std::make_unique<QmlTestLamp>();
    QmlTestLamp other;
    mLamp.mBulb = bulb.get();
    mLamp.mPartner = &mLamp;
    mTester.reset(); // it asks for everything
    mModel.setObject(&mLamp);
    EXPECT_EQ(bulb->modifiedSignal().getNbConnections(), 0u);
    EXPECT_EQ(text("bulb"), "QmlTestLamp");
    mTester = makeTester();
    EXPECT_EQ(text("Partner/Partner/Partner/Label"), "lamp") << "round and round";
    set("bulb/Power", 9);
    EXPECT_EQ(bulb->mPower, 9);
    other.mLabel = "other";
    mLamp.getAttribute("Partner")->setValue(mLamp, KyField(&other));
    EXPECT_EQ(text("Partner/Label"), "other");
    EXPECT_EQ(other.modifiedSignal().getNbConnections(), 1u);
    mLamp.getAttribute("Partner")->setValue(mLamp, KyField(KyObjectReference()));
    EXPECT_EQ(names("Partner"), "");
    EXPECT_EQ(other.modifiedSignal().getNbConnections(), 0u);
    bulb.reset();
    EXPECT_EQ(names("bulb"), "");
    mLamp.mBulb = nullptr;
    QCoreApplication::processEvents();
    mLamp.mBulb = &other;
    mModel.refresh();
    EXPECT_EQ(text("bulb/Label"), "other");
    mModel.setOptions(KyQAttributeModel::eHideComponents | KyQAttributeModel::eFlatReferences);
    EXPECT_FALSE(find("bulb").isValid() || find("Partner/Label").isValid());
}

TEST_F(KyQAttributeModelTest, FilesAttributesThatComeAndGoByCategory) {
    KyDynamicObject object;
    object.addAttribute("x", KyField(1), "category=Locals;");
    object.addAttribute("x", KyField("one"), "category=Globals;");
    object.addAttribute("plain", KyField(true));
    mModel.setObject(&object);
    EXPECT_EQ(names(), "plain Locals Globals");
    EXPECT_TRUE(find("Locals").data(KyQAttributeModel::eCategoryRole).toBool());
    EXPECT_TRUE(set("Globals/x", "two"));
    EXPECT_EQ(text("Globals/x") + text("Locals/x"), "two1");
    const QPersistentModelIndex kept = find("Globals/x");
    object.addAttribute("y", KyField(2), "category=Locals;");
    object.addAttribute("late", KyField(3));
    QCoreApplication::processEvents();
    EXPECT_EQ(names() + ", " + names("Locals"), "plain late Locals Globals, x y") << "one that is added is told";
    object.removeAttribute("x", "Locals");
    EXPECT_EQ(text("Locals/x"), "") << "gone already, its row goes with the event loop";
    QCoreApplication::processEvents();
    EXPECT_EQ(names() + ", " + names("Locals"), "plain late Locals Globals, y");
    EXPECT_EQ(kept.data(), "two");
    mStack.undo();
    EXPECT_EQ(kept.data(), "one");
    object.clearCategory("Globals");
    QCoreApplication::processEvents();
    EXPECT_EQ(names(), "plain late Locals");
    EXPECT_TRUE(mModel.setData(find("plain"), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(text("plain"), "false");
    mModel.setOptions(KyQAttributeModel::eNoOptions);
    EXPECT_EQ(names(), "plain y late");
}

TEST_F(KyQAttributeModelTest, UndoesEachEditAndEachSessionAtOnce) {
    set("Power", "nan");
    mStack.clear();
    EXPECT_TRUE(set("Power", "nan") && mStack.count() == 0) << "no change";
    set("Power", 2);
    set("Power", 3);
    EXPECT_FALSE(set("Refusing", 5) || set("Tint", "many"));
    EXPECT_EQ(mStack.count(), 2);
    mStack.undo();
    EXPECT_EQ(mLamp.mPower, 2);
    mStack.redo();
    EXPECT_EQ(mLamp.mPower, 3);
    mModel.setData(find("Power"), 1, KyQAttributeModel::eEditingRole);
    for (int i = 4; i < 10; ++i)
        set("Power", i);
    set("Count", 1);
    EXPECT_EQ(mStack.count(), 4) << "one session and another attribute";
    mStack.undo();
    mStack.undo();
    EXPECT_EQ(mLamp.mPower, 3);
    mModel.setData(find("Power"), 2, KyQAttributeModel::eEditingRole);
    set("Power", 7);
    mModel.setData(find("Power"), -2, KyQAttributeModel::eEditingRole);
    EXPECT_EQ(mLamp.mPower, 3);
    EXPECT_EQ(mStack.count(), 2) << "nothing is left of what was taken back";
}

TEST_F(KyQAttributeModelTest, UndoesAnElementWhereItIsNowOrNotAtAll) {
    using Tags = std::vector<std::string>;
    mTester.reset(); // it takes the numbers of elements for something that stays with them
    const KyAttributeInterface& tags = *mLamp.getAttribute("Tags");
    int session = 0;
    for (const auto& [change, undone] : std::vector<std::pair<std::function<void()>, Tags>>{
             {[&] { tags.addValue(mLamp, 0, KyField("new")); }, {"new", "a", "b", "c"}},
             {[&] { tags.removeValue(mLamp, 0); }, {"b", "c"}},
             {[&] { tags.removeValue(mLamp, 1); }, {"a", "c"}},
             {[&] { mLamp.mTags.insert(mLamp.mTags.begin(), "unseen"); }, {"unseen", "a", "B", "c"}},
             {[&] { mLamp.mTags = {"fewer"}; }, {"fewer"}},
         }) {
        for (const bool isReverted : {false, true}) {
            mLamp.mTags = {"a", "b", "c"};
            mModel.refresh();
            mModel.setData(find("Tags/[1]"), ++session, KyQAttributeModel::eEditingRole);
            set("Tags/[1]", "B");
            change();
            isReverted ? void(mModel.setData(find("Power"), -session, KyQAttributeModel::eEditingRole)) : mStack.undo();
            EXPECT_EQ(mLamp.mTags, undone) << isReverted;
        }
    }
}

TEST_F(KyQAttributeModelTest, IsEmptyWhenTheObjectEndsAndUndoesNothingOfIt) {
    auto lamp = std::make_unique<QmlTestLamp>();
    QSignalSpy ended(&mModel, &KyQAttributeModel::objectEnded);
    mModel.setObject(lamp.get());
    set("Power", 2);
    lamp.reset();
    EXPECT_EQ(ended.size(), 1);
    EXPECT_FALSE(mModel.getObject() || mModel.rowCount());
    mStack.undo();
    EXPECT_EQ(mStack.count(), 0);
}

TEST_F(KyQAttributeModelTest, CostsNothingWhileItDoesNotListen) {
    auto lamp = std::make_unique<QmlTestLamp>();
    lamp->mPartner = &mLamp;
    mModel.setObject(lamp.get());
    find("Partner/Label");
    mModel.setListening(false);
    EXPECT_EQ(lamp->modifiedSignal().getNbConnections() + mLamp.modifiedSignal().getNbConnections(), 0u);
    lamp->mPartner = nullptr;
    lamp->mTags.push_back("d");
    mModel.setListening(true);
    EXPECT_EQ(lamp->modifiedSignal().getNbConnections(), 1u);
    EXPECT_EQ(names("Partner"), "");
    EXPECT_EQ(names("Tags"), "[0] [1] [2] [3]");
    mModel.setListening(false);
    lamp.reset();
    EXPECT_EQ(text("Label"), "");
    mModel.setListening(true);
    EXPECT_EQ(mModel.rowCount(), 0);
}

} // namespace
