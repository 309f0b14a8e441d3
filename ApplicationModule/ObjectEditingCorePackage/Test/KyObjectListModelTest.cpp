// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectListModel.h"
#include "KyQmlFixture.h"

#include <QPointer>
#include <QSignalSpy>
#include <QSortFilterProxyModel>

namespace {

class KyObjectListModelTest : public KyQmlFixture {
protected:
    QmlTestLamp mLamp;
    KyObjectListModel mTags{mLamp, "Tags"};
    QSignalSpy mInserted{&mTags, &QAbstractItemModel::rowsInserted};
    QSignalSpy mRemoved{&mTags, &QAbstractItemModel::rowsRemoved};
    QSignalSpy mChanged{&mTags, &QAbstractItemModel::dataChanged};
    QSignalSpy mReset{&mTags, &QAbstractItemModel::modelReset};
    QSignalSpy mCounted{&mTags, &KyObjectListModel::countChanged};

    /// The numbers of rows inserted, removed, changed, of resets and of counts told since the last time.
    void expect(const std::vector<std::string>& tags, const std::vector<int>& counts) {
        EXPECT_EQ(mLamp.mTags, tags);
        EXPECT_EQ(mTags.rowCount(), static_cast<int>(tags.size()));
        std::vector<int> told;
        for (QSignalSpy* spy : {&mInserted, &mRemoved, &mChanged, &mReset, &mCounted}) {
            told.push_back(spy->count());
            spy->clear();
        }
        EXPECT_EQ(told, counts);
    }
};

TEST_F(KyObjectListModelTest, EditsTheContainerAndTellsEachRow) {
    EXPECT_TRUE(mTags.insert(1, "x"));
    EXPECT_EQ(mInserted.at(0).at(1).toInt(), 1);
    expect({"a", "x", "b", "c"}, {1, 0, 0, 0, 1});
    EXPECT_TRUE(mTags.remove(1, 2));
    expect({"a", "c"}, {0, 2, 0, 0, 2});
    EXPECT_TRUE(mTags.setData(mTags.index(1), "C"));
    EXPECT_EQ(mChanged.at(0).at(0).toModelIndex().row(), 1);
    expect({"a", "C"}, {0, 0, 1, 0, 0});
    EXPECT_TRUE(mTags.move(0, 1));
    expect({"C", "a"}, {1, 1, 0, 0, 2});
    EXPECT_TRUE(mTags.removeRows(0, 2));
    expect({}, {0, 2, 0, 0, 2});
    EXPECT_FALSE(mTags.data(mTags.index(0)).isValid());
}

TEST_F(KyObjectListModelTest, RefusesWithoutAChange) {
    EXPECT_FALSE(mTags.insert(4, "x"));
    EXPECT_FALSE(mTags.insert(-1, "x"));
    EXPECT_FALSE(mTags.insert(0, "refused"));
    EXPECT_FALSE(mTags.set(0, QVariant()));
    EXPECT_FALSE(mTags.remove(2, 2));
    EXPECT_FALSE(mTags.remove(-1, 1));
    EXPECT_FALSE(mTags.move(0, 3));
    EXPECT_FALSE(mTags.get(3).isValid());
    expect({"a", "b", "c"}, {0, 0, 0, 0, 0});
    mLamp.mTags[1] = "refused";
    EXPECT_FALSE(mTags.move(1, 0)) << "taken out, not taken in again";
    expect({"a", "c"}, {0, 1, 0, 0, 1});
    mLamp.mTags[1] = "last";
    EXPECT_FALSE(mTags.move(1, 0)) << "refused at the front, put back";
    expect({"a", "last"}, {1, 1, 0, 0, 2});
    KyObjectListModel targets(mLamp, "Targets");
    EXPECT_FALSE(targets.append(5) || targets.append(QVariant::fromValue<QObject*>(&mTags)));
    EXPECT_TRUE(targets.append(QVariant::fromValue(bind(mLamp))));
    EXPECT_EQ(targets.get(0).value<QObject*>(), bind(mLamp));
    EXPECT_FALSE(targets.remove(0)) << "not offered";
    EXPECT_FALSE(targets.flags(targets.index(0)).testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(mTags.flags(mTags.index(0)).testFlag(Qt::ItemIsEditable));
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
}

/// Lets the handler hear one of the model's signals, by number.
template <class Handler>
void connectTo(KyObjectListModel& model, std::size_t signal, Handler handler) {
    using M = QAbstractItemModel;
    auto choose = [&, i = std::size_t{0}](auto... heard) mutable {
        ((i++ == signal ? void(QObject::connect(&model, heard, &model, [handler] { handler(); })) : void()), ...);
    };
    choose(&M::rowsInserted, &M::rowsRemoved, &M::dataChanged, &M::modelReset, &KyObjectListModel::countChanged,
           &M::modelAboutToBeReset, &M::rowsAboutToBeInserted, &M::rowsAboutToBeRemoved);
}

constexpr std::size_t cNbSignals = 8;
/// Within the last two Qt itself still needs the model.
constexpr std::size_t cNbDeletingSignals = 6;

/// Checks after each change: the next may put right what this one left wrong.
template <class Check>
void changeEverything(QmlTestLamp& lamp, Check check) {
    const KyAttributeInterface& tags = *lamp.getAttribute("Tags");
    check(tags.addValue(lamp, 1, KyField("x")));
    check(tags.setValue(lamp, KyField("X"), 1));
    check(tags.removeValue(lamp, 0));
    lamp.notifyModified("");
    check(true);
}

TEST_F(KyObjectListModelTest, CountsRightWhenItsHandlersChangeTheContainer) {
    for (std::size_t signal = 0; signal < cNbSignals; ++signal) {
        for (const bool isGrowing : {true, false}) {
            QmlTestLamp lamp;
            KyObjectListModel tags(lamp, "Tags");
            QSortFilterProxyModel view;
            view.setSourceModel(&tags);
            int nbChanges = 0;
            connectTo(tags, signal, [&] {
                if (nbChanges++ < 2)
                    isGrowing ? tags.append("nested") : tags.remove(0);
            });
            changeEverything(lamp, [&](bool) {
                EXPECT_EQ(tags.getCount(), static_cast<int>(lamp.mTags.size())) << signal;
                EXPECT_EQ(view.rowCount(), tags.getCount()) << signal;
            });
            EXPECT_GT(nbChanges, 0) << signal;
        }
    }
}

TEST_F(KyObjectListModelTest, MayBeDeletedByItsHandlers) {
    for (std::size_t signal = 0; signal < cNbDeletingSignals; ++signal) {
        QmlTestLamp lamp;
        QPointer<KyObjectListModel> tags = new KyObjectListModel(lamp, "Tags");
        connectTo(*tags, signal, [tags] { delete tags.data(); });
        changeEverything(lamp, [](bool isDone) { EXPECT_TRUE(isDone); });
        EXPECT_FALSE(tags) << signal;
        EXPECT_EQ(lamp.mTags, (std::vector<std::string>{"X", "b", "c"}));
    }
}

TEST_F(KyObjectListModelTest, IsEmptyWhenAHandlerEndsTheObject) {
    auto lamp = std::make_unique<QmlTestLamp>();
    KyObjectListModel tags(*lamp, "Tags");
    QObject::connect(&tags, &QAbstractItemModel::rowsAboutToBeInserted, [&] { lamp.reset(); });
    tags.append("x");
    EXPECT_EQ(tags.getCount(), 0);
    EXPECT_FALSE(tags.append("x") || tags.set(0, "x") || tags.remove(0) || tags.move(0, 0));
}

TEST_F(KyObjectListModelTest, FeedsAnInstantiator) {
    publish("lamp", mLamp);
    load("QtObject { id: root; property int count: lamp.Tags.count; property int made: 0\n"
         "  property var list: Instantiator { model: lamp.Tags; delegate: QtObject {\n"
         "    property string text: value + modelData; Component.onCompleted: ++root.made } }\n"
         "  property string texts: list.count + [0, 1, 2].map(function(i) { return list.objectAt(i).text }).join() }");
    EXPECT_EQ(property("texts"), "3aa,bb,cc");
    EXPECT_EQ(evaluate("lamp.Tags.remove(1) && lamp.Tags.set(0, 'A') && lamp.Tags.insert(0, 'n')"), "true");
    EXPECT_EQ(property("texts"), "3nn,AA,cc");
    EXPECT_EQ(property("made"), "4") << "rows that stay keep their items";
    mLamp.getAttribute("Tags")->addValue(mLamp, 3, KyField("last"));
    EXPECT_EQ(property("count"), "4");
}

} // namespace
