// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectListModel.h"
#include "KyQmlFixture.h"

#include <QSignalSpy>

namespace {

class KyObjectListModelTest : public KyQmlFixture {
protected:
    void SetUp() override {
        KyQmlFixture::SetUp();
        publish("lamp", mLamp);
    }

    QmlTestLamp mLamp;
    KyObjectListModel mTags{mLamp, "Tags"};
    QSignalSpy mInserted{&mTags, &QAbstractItemModel::rowsInserted};
    QSignalSpy mRemoved{&mTags, &QAbstractItemModel::rowsRemoved};
    QSignalSpy mChanged{&mTags, &QAbstractItemModel::dataChanged};
    QSignalSpy mReset{&mTags, &QAbstractItemModel::modelReset};
    QSignalSpy mCounted{&mTags, &KyObjectListModel::countChanged};

    /// Numbers of rows inserted, removed, changed, of resets and of counts told since the last time.
    std::vector<int> takeCounts() {
        std::vector<int> counts;
        for (QSignalSpy* spy : {&mInserted, &mRemoved, &mChanged, &mReset, &mCounted}) {
            counts.push_back(spy->count());
            spy->clear();
        }
        return counts;
    }
    void expect(const std::vector<std::string>& tags, const std::vector<int>& counts) {
        EXPECT_EQ(mLamp.mTags, tags);
        EXPECT_EQ(mTags.rowCount(), static_cast<int>(tags.size()));
        EXPECT_EQ(takeCounts(), counts);
    }
};

TEST_F(KyObjectListModelTest, EditsTheContainerAndTellsEachRow) {
    EXPECT_TRUE(mTags.insert(1, "x"));
    EXPECT_EQ(mInserted.at(0).at(1).toInt(), 1);
    expect({"a", "x", "b", "c"}, {1, 0, 0, 0, 1});
    EXPECT_TRUE(mTags.append("end"));
    expect({"a", "x", "b", "c", "end"}, {1, 0, 0, 0, 1});
    EXPECT_TRUE(mTags.remove(1, 2));
    expect({"a", "c", "end"}, {0, 2, 0, 0, 2});
    EXPECT_TRUE(mTags.setData(mTags.index(1), "C"));
    EXPECT_EQ(mChanged.at(0).at(0).toModelIndex().row(), 1);
    expect({"a", "C", "end"}, {0, 0, 1, 0, 0});
    EXPECT_TRUE(mTags.move(0, 2));
    expect({"C", "end", "a"}, {1, 1, 0, 0, 2});
    EXPECT_TRUE(mTags.removeRows(0, 3));
    expect({}, {0, 3, 0, 0, 3});
    EXPECT_FALSE(mTags.data(mTags.index(0)).isValid());
}

TEST_F(KyObjectListModelTest, RefusesWithoutAChange) {
    EXPECT_FALSE(mTags.insert(4, "x"));
    EXPECT_FALSE(mTags.insert(-1, "x"));
    EXPECT_FALSE(mTags.insert(0, "refused"));
    EXPECT_FALSE(mTags.set(3, "x"));
    EXPECT_FALSE(mTags.set(0, QVariant()));
    EXPECT_FALSE(mTags.setData(mTags.index(0), "x", Qt::DecorationRole));
    EXPECT_FALSE(mTags.remove(2, 2));
    EXPECT_FALSE(mTags.remove(0, 0));
    EXPECT_FALSE(mTags.remove(-1, 1));
    EXPECT_FALSE(mTags.move(0, 3));
    EXPECT_FALSE(mTags.get(3).isValid());
    EXPECT_FALSE(mTags.get(-1).isValid());
    expect({"a", "b", "c"}, {0, 0, 0, 0, 0});
    mLamp.mTags[1] = "refused";
    EXPECT_FALSE(mTags.move(1, 0)) << "taken out, not taken in again";
    expect({"a", "c"}, {0, 1, 0, 0, 1});
    mLamp.mTags[1] = "last";
    EXPECT_FALSE(mTags.move(1, 0)) << "refused at the front, put back";
    expect({"a", "last"}, {1, 1, 0, 0, 2});
    KyObjectListModel targets(mLamp, "Targets");
    EXPECT_FALSE(targets.append(5));
    EXPECT_TRUE(targets.append(QVariant::fromValue(bind(mLamp))));
    EXPECT_FALSE(targets.remove(0)) << "not offered";
    EXPECT_FALSE(targets.flags(targets.index(0)).testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(mTags.flags(mTags.index(0)).testFlag(Qt::ItemIsEditable));
    EXPECT_EQ(KyObjectListModel(mLamp, "Nothing").rowCount(), 0);
}

TEST_F(KyObjectListModelTest, ResetsWhenWhatIsToldDoesNotAgree) {
    mLamp.mTags.push_back("d");
    mLamp.notifyModified(eAttributeChanged, "Tags");
    expect({"a", "b", "c", "d"}, {0, 0, 0, 1, 1});
    mLamp.mTags.insert(mLamp.mTags.end(), {"e", "f"});
    mLamp.notifyModified(eElementInserted, "Tags", 4);
    mLamp.notifyModified(eElementInserted, "Tags", 5);
    expect({"a", "b", "c", "d", "e", "f"}, {0, 0, 0, 2, 1});
    mLamp.notifyModified(eElementRemoved, "Tags", 0);
    mLamp.notifyModified(eElementChanged, "Tags", 99);
    mLamp.mTags.pop_back();
    mLamp.notifyModified(eElementRemoved, "Tags", -1);
    expect({"a", "b", "c", "d", "e"}, {0, 0, 0, 3, 1});
    mLamp.notifyModified(eElementRemoved, "Targets", 0);
    expect({"a", "b", "c", "d", "e"}, {0, 0, 0, 0, 0});
}

TEST_F(KyObjectListModelTest, IsEmptyOnceTheObjectEnds) {
    auto lamp = std::make_unique<QmlTestLamp>();
    KyObjectListModel tags(*lamp, "Tags");
    lamp.reset();
    EXPECT_EQ(tags.rowCount(), 0);
    EXPECT_FALSE(tags.get(0).isValid());
    EXPECT_FALSE(tags.append("x") || tags.set(0, "x") || tags.remove(0) || tags.move(0, 0));
}

TEST_F(KyObjectListModelTest, FeedsAnInstantiator) {
    load("QtObject { id: root; property string first: lamp.Tags.get(0); property int count: lamp.Tags.count\n"
         "  property int made: 0\n"
         "  property var list: Instantiator { model: lamp.Tags\n"
         "    delegate: QtObject { property string text: value + modelData + index; Component.onCompleted: ++root.made "
         "}\n"
         "  }\n"
         "  function texts() { var all = []; for (var i = 0; i < list.count; ++i) all.push(list.objectAt(i).text);\n"
         "    return all.join() } }");
    const auto texts = [this] {
        QVariant result;
        QMetaObject::invokeMethod(mRoot.get(), "texts", Q_RETURN_ARG(QVariant, result));
        return result.toString().toStdString();
    };
    EXPECT_EQ(texts(), "aa0,bb1,cc2");
    EXPECT_EQ(evaluate("lamp.Tags.insert(0, 'n') && lamp.Tags.remove(2) && lamp.Tags.set(1, 'A')"), "true");
    EXPECT_EQ(texts(), "nn0,AA1,cc2");
    EXPECT_EQ(property("made"), "4") << "rows that stay keep their items";
    EXPECT_EQ(property("first"), "n");
    mLamp.getAttribute("Tags")->addValue(mLamp, 3, KyField("last"));
    EXPECT_EQ(property("count"), "4");
    EXPECT_EQ(evaluate("lamp.Tags === lamp.tags"), "true");
    EXPECT_TRUE(msWarnings.empty()) << msWarnings.front();
}

TEST_F(KyObjectListModelTest, ShowsObjectsAsTheirBindings) {
    EXPECT_EQ(evaluate("lamp.Targets.append(lamp); lamp.Targets.get(0) === lamp"), "true");
    EXPECT_EQ(mLamp.mTargets, std::vector<QmlTestLamp*>{&mLamp});
    for (const char* script : {"lamp.Targets.append(lamp.Tags)", "lamp.Targets.append(5)", "lamp.Targets.append({})"})
        EXPECT_EQ(evaluate(script), "false") << script;
    EXPECT_EQ(evaluate("lamp.Targets.append(null) && lamp.Targets.get(1) === null"), "true");
}

} // namespace
