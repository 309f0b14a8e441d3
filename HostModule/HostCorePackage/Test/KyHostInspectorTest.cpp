// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostInspector.h"

#include "KyMeshNode.h"
#include "KyQAttributeEditor.h"
#include "KyScriptEngine.h"

#include <QApplication>
#include <QTreeView>

namespace {

/// An inspected object in a scene that a stage shows.
class KyHostInspectorTest : public KyHostSession<QApplication> {
protected:
    KyHostInspectorTest() {
        mStage.getScene().addChild(mBall);
        mBall->setColor(KyColor(1, 0, 0));
    }
    ~KyHostInspectorTest() override { KyScriptEngine::get().closeLuaState(); }

    static int publish(KyObject* object) { return KyScriptEngine::get().bindInstance(object, "ball"); }
    static KyQAttributeEditor* findEditor() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "inspector")
                return qobject_cast<KyQAttributeEditor*>(widget);
        return nullptr;
    }
    /// The value beside a name in the window.
    static QModelIndex find(const QString& name) {
        const QAbstractItemModel& model = *findEditor()->editView()->model();
        const auto found =
            model.match(model.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? QModelIndex() : found.front().siblingAtColumn(KyQAttributeModel::eValueColumn);
    }
    static bool set(const QString& name, const QVariant& value) {
        return findEditor()->editView()->model()->setData(find(name), value);
    }

    KyMeshNode* mBall = new KyMeshNode;
};

} // namespace

TEST_F(KyHostInspectorTest, AnEditChangesWhatIsShownAndUndoTakesItBack) {
    ASSERT_EQ(publish(mBall), KyScriptEngine::eBound);
    const KyHostInspector inspector("ball");
    ASSERT_TRUE(findEditor());
    EXPECT_TRUE(findEditor()->isVisible());
    EXPECT_EQ(findEditor()->windowTitle(), "ball");
    ASSERT_TRUE(set("Color", "0 1 0 1"));
    EXPECT_EQ(mBall->getColor(), KyColor(0, 1, 0));
    findEditor()->editUndoStack()->undo();
    EXPECT_EQ(mBall->getColor(), KyColor(1, 0, 0));
    mBall->setName("from elsewhere");
    EXPECT_EQ(find("Name").data(), "from elsewhere");
}

TEST_F(KyHostInspectorTest, AnObjectIsShownWhenItIsPublishedAndUntilItEnds) {
    const KyHostInspector inspector("ball");
    EXPECT_FALSE(inspector.hasFound() || findEditor()->isVisible());
    KyScriptEngine::get().bindInstance(&mStage.getCamera(), "camera");
    EXPECT_FALSE(inspector.hasFound()) << "that is another one";
    publish(mBall);
    EXPECT_TRUE(inspector.hasFound() && findEditor()->isVisible());
    EXPECT_EQ(findEditor()->getObject(), mBall);
    mBall->destroy();
    EXPECT_EQ(findEditor()->getObject(), nullptr);
    EXPECT_EQ(findEditor()->editView()->model()->rowCount(), 0);
}

TEST_F(KyHostInspectorTest, ANewRunsObjectTakesThePlaceOfTheOneBeforeButOpensNoWindowThatWasClosed) {
    publish(mBall);
    const KyHostInspector inspector("ball");
    findEditor()->close();
    KyScriptEngine::get().resetLuaState();
    EXPECT_EQ(findEditor()->getObject(), nullptr);
    auto* const other = new KyMeshNode;
    mStage.getScene().addChild(other);
    publish(other);
    EXPECT_EQ(findEditor()->getObject(), other);
    EXPECT_FALSE(findEditor()->isVisible());
}
