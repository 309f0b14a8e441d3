// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DProxy.h"
#include "Ky2DScene.h"
#include "Ky2DTestNodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

/// Nodes, items, Qt scenes and scenes that come and go in any order. Everything is held weakly: others end it too.
class World {
public:
    explicit World(unsigned seed)
        : mRandom(seed) {}
    ~World() {
        while (!mNodes.empty())
            end(mNodes.size() - 1);
        for (QGraphicsItem* item : std::exchange(mItems, {}))
            delete item;
    }

    void step() {
        using Step = void (World::*)();
        static constexpr Step cSteps[] = {&World::makeNode,   &World::makeNode,      &World::makeScene, &World::insert,
                                          &World::insert,     &World::insert,        &World::insert,    &World::remove,
                                          &World::setChild,   &World::endAny,        &World::change,    &World::change,
                                          &World::deleteItem, &World::deleteQtScene, &World::copy,      &World::apply,
                                          &World::pick,       &World::setStyle};
        forgetEnded();
        (this->*cSteps[pick(std::size(cSteps))])();
        check();
    }

    unsigned nbInsertions = 0;
    unsigned nbEnded = 0;

private:
    /// An item that is nobody's but the world's, until Qt deletes it with a scene.
    class OwnItem : public QGraphicsRectItem {
    public:
        explicit OwnItem(World& world)
            : QGraphicsRectItem(0, 0, 5, 5)
            , mWorld(world) {
            mWorld.mItems.push_back(this);
        }
        ~OwnItem() override { std::erase(mWorld.mItems, this); }

    private:
        World& mWorld;
    };

    std::size_t pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(mRandom); }
    bool chance(unsigned percent) { return pick(100) < percent; }

    Ky2DNode* getAny() {
        forgetEnded();
        return mNodes.empty() ? nullptr : static_cast<Ky2DNode*>(mNodes[pick(mNodes.size())].get());
    }

    void forgetEnded() {
        std::erase_if(mNodes, [](const KyObjectReference& node) { return !node; });
    }

    void enter(Ky2DNode* node) {
        mNodes.emplace_back(node);
        if (!chance(30))
            return;
        // Listeners that act when they are told, also while the node ends.
        node->modifiedSignal().connect([this](KyObject*, KyObjectModificationType, const std::string&, int) {
            if (mDepth > 3 || !chance(20))
                return;
            ++mDepth;
            chance(30) ? endAny() : chance(50) ? insert() : change();
            --mDepth;
        });
    }

    void makeNode() {
        if (mNodes.size() > 60)
            return endAny();
        if (chance(20))
            enter(new Ky2DProxy(chance(30) && !mItems.empty() ? mItems[pick(mItems.size())] : new OwnItem(*this)));
        else if (chance(50))
            enter(new Ky2DGroup);
        else
            makeShape();
    }

    void makeShape() {
        auto* shape = new CountingNode;
        if (chance(20))
            shape->onGeometry = [this] {
                if (mDepth > 3)
                    return;
                ++mDepth;
                chance(40) ? endAny() : chance(50) ? change() : apply();
                --mDepth;
            };
        enter(shape);
    }

    void makeScene() {
        if (!chance(40))
            return;
        auto* scene = Ky2DScene::create(chance(50) ? nullptr : new QGraphicsScene(&mQtParent), chance(50));
        enter(scene);
        scene->changesPendingSignal().connect([this](Ky2DScene*) {
            if (chance(5))
                endAny();
        });
    }

    void insert() {
        Ky2DNode *parent = getAny(), *child = getAny();
        if (!parent)
            return;
        const unsigned count = parent->getNbChildren();
        nbInsertions +=
            parent->insertChild(child, chance(50) ? Ky2DNode::cAppend : static_cast<unsigned>(pick(count + 2)));
    }

    void remove() {
        Ky2DNode* node = getAny();
        if (!node)
            return;
        if (chance(50))
            node->setParent(nullptr);
        else if (chance(80))
            node->removeChildByIndex(static_cast<unsigned>(pick(node->getNbChildren() + 1)), chance(50));
        else
            node->removeAllChildren();
    }

    void setChild() {
        Ky2DNode *parent = getAny(), *child = getAny();
        if (parent)
            parent->setChild(static_cast<unsigned>(pick(parent->getNbChildren() + 1)), child);
    }

    void end(std::size_t index) {
        KyObject* node = mNodes[index].get();
        mNodes.erase(mNodes.begin() + static_cast<std::ptrdiff_t>(index));
        if (!node || node->isEnding())
            return;
        ++nbEnded;
        if (chance(50))
            node->destroy();
        else
            delete node;
    }

    void endAny() {
        if (!mNodes.empty())
            end(pick(mNodes.size()));
    }

    void change() {
        Ky2DNode* node = getAny();
        if (!node)
            return;
        node->translate(1, 2);
        if ((node = getAny()))
            node->setVisible(chance(50));
        if ((node = getAny()))
            node->geometryModified();
        if ((node = getAny()))
            node->setZValue(static_cast<int>(pick(3)));
    }

    void setStyle() {
        Ky2DNode *node = getAny(), *other = getAny();
        if (!node)
            return;
        if (Ky2DStyle* style = chance(20) ? nullptr : other->editStyle())
            chance(50) ? node->setStyle(style) : style->destroy();
    }

    void copy() {
        if (const Ky2DNode* node = getAny(); node && mNodes.size() < 40)
            enterAll(node->clone());
    }

    void enterAll(Ky2DNode* node) {
        enter(node);
        for (unsigned i = 0; i < node->getNbChildren(); ++i)
            enterAll(node->editChild(i));
    }

    void deleteItem() {
        const Ky2DNode* node = getAny();
        if (node && chance(50))
            delete node->getQGraphicsItem();
        else if (!mItems.empty())
            delete mItems[pick(mItems.size())];
    }

    void deleteQtScene() {
        const Ky2DNode* node = getAny();
        if (const Ky2DScene* scene = node ? node->getScene() : nullptr; scene && chance(30))
            delete scene->getQGraphicsScene();
    }

    void apply() { Ky2DNode::applyModification(); }

    void pick() {
        Ky2DNode* node = getAny();
        if (Ky2DScene* scene = node ? node->editScene() : nullptr)
            scene->pickNode(static_cast<double>(pick(10)), static_cast<double>(pick(10)));
        else if (node)
            node->getBound();
    }

    /// What holds whatever happened.
    void check() {
        forgetEnded();
        for (const KyObjectReference& reference : mNodes) {
            auto* node = static_cast<Ky2DNode*>(reference.get());
            if (Ky2DNode* parent = node->editParent()) {
                ASSERT_EQ(parent->editChild(static_cast<unsigned>(node->getIndex())), node);
                ASSERT_EQ(parent->getScene(), node->getScene());
            } else {
                ASSERT_EQ(node->getIndex(), -1);
            }
            // A node whose modified style was taken away is still in the list.
            const auto nbInList = std::ranges::count(Ky2DNode::getModifiedNodes(), node);
            ASSERT_TRUE(nbInList == 1 || (nbInList == 0 && !node->isModified()));
            const Ky2DScene* scene = node->getScene();
            QGraphicsItem* item = node->getQGraphicsItem();
            if (!item || scene == node)
                continue;
            const Ky2DNode* registered = scene ? scene->getNode(item) : nullptr;
            ASSERT_TRUE(!registered || registered->getQGraphicsItem() == item);
            ASSERT_TRUE(!scene || !node->getParent() || registered);
        }
    }

    std::mt19937 mRandom;
    std::vector<KyObjectReference> mNodes;
    std::vector<QGraphicsItem*> mItems;
    // Ends the borrowed Qt scenes that nobody deleted.
    QObject mQtParent;
    int mDepth = 0;
};

} // namespace

TEST(Ky2DLifetimeTest, EverythingMayEndInAnyOrder) {
    unsigned nbInsertions = 0, nbEnded = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        World world(seed);
        for (int i = 0; i < 400; ++i) {
            world.step();
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << "seed " << seed << " step " << i;
        }
        nbInsertions += world.nbInsertions;
        nbEnded += world.nbEnded;
    }
    EXPECT_GT(nbInsertions, 1000U);
    EXPECT_GT(nbEnded, 1000U);
}
