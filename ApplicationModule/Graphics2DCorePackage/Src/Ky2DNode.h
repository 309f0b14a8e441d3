// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DItem.h"
#include "KyApplicationExport.h"

#include "KyObject.h"
#include "KyRect.h"
#include "KyVec2.h"

#include <QGraphicsItem>
#include <QTransform>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class Ky2DGroup;
class Ky2DScene;
class Ky2DStyle;

/// A place in a tree of 2D shapes: a transform, a style, and the Qt item that shows it. Itself it has no item and takes
/// no children; shapes, groups and proxies derive from it.
///
/// Nothing touches Qt when a property changes: the node marks itself and enters the list of modified nodes, once;
/// applyModification brings all items up to date, and runs by itself before bounds are asked, before picking and before
/// painting. Setting an equal value marks as well. Setters tell the listeners of the attribute. Numbers may be
/// anything; a transform that is not finite is kept, and the item stays where it was.
///
/// Not reference counted: a node belongs to the group that holds it, else to who made it; destroy() ends it at any
/// time. The node owns its style and its item (a proxy does not); when Qt deletes the item the node lives on without.
/// All of it belongs to the thread of the Qt scene. A class of its own has a copy constructor and clone(), see
/// Ky2DItem: without them its copies are plain nodes.
///
/// ```
/// auto* dial = Ky2DEllipse::create();
/// scene->insertChild(dial, Ky2DNode::cAppend);
/// dial->editStyle()->setFillColor(KyColor(1, 0, 0, 1));
/// dial->setTranslation(40, 30);
/// ```
class KYAPPLICATION_EXPORT Ky2DNode : public KyObject {
public:
    static const KyType* getType();
    static Ky2DNode* cast(KyObject* object);
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    static Ky2DNode* create() { return new Ky2DNode; }
    const KyType* getObjectType() const override;

    /// How many levels a tree of nodes has at most below its top: what walks down a tree relies on it.
    static constexpr unsigned cMaxDepth = 1000;
    /// As an index: after the last child.
    static constexpr unsigned cAppend = ~0U;

    /// Has a default style.
    Ky2DNode();
    /// Leaves the parent and the scene; the item ends with it.
    ~Ky2DNode() override;
    Ky2DNode& operator=(const Ky2DNode&) = delete;
    /// A copy without parent, with a style and an item of its own (a proxy's has none). It does not take the transform
    /// origin point over: a rotated or scaled copy of a node that has one moves at its first update.
    Ky2DNode* clone() const override;

    const std::string& getName() const override { return mName; }
    void setName(const std::string& name) override;
    bool hasNameAttribute() const override { return true; }

protected:
    /// Groups keep it up to date.
    virtual void setIndex(std::int32_t index) { mIndex = index; }

public:
    /// Position among the parent's children; -1 without parent.
    virtual std::int32_t getIndex() const { return mIndex; }

protected:
    /// What a group calls for a child that enters (or, with null, leaves): scene and Qt item follow, lists of children
    /// are not touched.
    virtual void internalSetParent(Ky2DNode* parent);

public:
    /// Leaves the former parent and becomes the last child of the new one. Null only leaves. What insertChild refuses
    /// is refused here after the node left: it then belongs to the caller.
    virtual void setParent(Ky2DNode* parent);
    /// Null at the top.
    virtual const Ky2DNode* getParent() const { return mParent; }
    virtual Ky2DNode* editParent() { return mParent; }
    /// Groups call it; the item leaves the Qt scene of the former one. An ending node enters none, and none enters an
    /// ending scene.
    virtual void setScene(Ky2DScene* scene);
    /// The scene that the node belongs to, null for none.
    virtual const Ky2DScene* getScene() const { return mScene; }
    virtual Ky2DScene* editScene() { return mScene; }
    /// As removeChildByIndex for a child of this node; null, and nothing happens, for any other node.
    virtual Ky2DNode* removeChild(Ky2DNode* child, bool destroy);
    /// Destroys all children.
    virtual void removeAllChildren() {}
    /// Brings the item up to date now: position, style, geometry, each when modified.
    virtual void update();
    /// True while anything waits for the next update.
    virtual bool isModified() const;

protected:
    /// Gives the item its geometry; setters of this node are not for use in here.
    virtual void updateQGraphicsItemGeometry() {}
    /// Gives the item its pen, brush and font.
    virtual void updateQGraphicsItemStyle() {}
    /// Gives the item its transform, z-value and visibility.
    virtual void updateQGraphicsItemPosition();
    /// Makes the local transform from the five values.
    virtual void composeTransform();

public:
    /// Own children, those below them not counted; 0 for all but groups.
    virtual unsigned getNbChildren() const { return 0; }
    /// Destroys the child and puts another one in its place. False, and nothing changed, when out of range or when the
    /// node cannot be inserted here.
    virtual bool setChild(unsigned index, Ky2DNode* child);
    /// Null when out of range.
    virtual Ky2DNode* editChild(unsigned index);
    virtual const Ky2DNode* getChild(unsigned index) const;
    /// The first child of that name; null when there is none.
    virtual const Ky2DNode* getChildByName(const std::string& name) const;
    virtual Ky2DNode* editChildByName(const std::string& name);
    /// Takes the child out. With `destroy` it ends and null is returned, else it is returned and belongs to the caller.
    /// Null when out of range.
    virtual Ky2DNode* removeChildByIndex(unsigned index, bool destroy);
    /// Inserts before the index, cAppend appends; the node then owns the child. False, and nothing changed, for null, a
    /// scene, this node and those above it, and where the tree would become deeper than cMaxDepth. The child first
    /// leaves its former parent; when the index (then) is not below the number of children that is all that happens,
    /// the result is false and the child belongs to the caller.
    virtual bool insertChild(Ky2DNode* child, unsigned index);
    /// What the item covers, in coordinates of the Qt scene; null without item. Applies modifications first.
    virtual KyRectd getBound() const;
    /// The same in the node's own coordinates.
    virtual KyRectd getLocalBound() const;

    /// This node or the first one below of that name, depth first; null when there is none.
    Ky2DNode* find(std::string_view name);

    /// Units of the parent.
    const KyVec2d& getTranslation() const { return mTranslation; }
    void setTranslation(const KyVec2d& translation) { setPosition(mTranslation, translation, "Translation"); }
    void setTranslation(double x, double y) { setTranslation(KyVec2d(x, y)); }
    /// @{
    /// Adds to the translation.
    void translate(const KyVec2d& offset) { setTranslation(mTranslation + offset); }
    void translate(double x, double y) { translate(KyVec2d(x, y)); }
    /// @}
    /// @{
    /// Factors along x and y; negative ones mirror.
    const KyVec2d& getScale() const { return mScale; }
    void setScale(const KyVec2d& scale) { setPosition(mScale, scale, "Scale"); }
    void setScale(double x, double y) { setScale(KyVec2d(x, y)); }
    /// @}
    /// Multiplies.
    void scale(const KyVec2d& factors) { setScale(mScale * factors); }
    void scale(double x, double y) { scale(KyVec2d(x, y)); }
    /// @{
    /// Of x along y, and of y along x.
    const KyVec2d& getShear() const { return mShear; }
    void setShear(const KyVec2d& shear) { setPosition(mShear, shear, "Shear"); }
    void setShear(double x, double y) { setShear(KyVec2d(x, y)); }
    /// @}
    /// Adds.
    void shear(const KyVec2d& offset) { setShear(mShear + offset); }
    void shear(double x, double y) { shear(KyVec2d(x, y)); }
    /// Degrees, from x to y.
    double getRotation() const { return mRotation; }
    void setRotation(double degrees) { setPosition(mRotation, degrees, "Rotation"); }
    /// Adds degrees.
    void rotate(double degrees) { setRotation(mRotation + degrees); }
    /// The point that scale, shear and rotation leave in its place.
    const KyVec2d& getTransformOriginPoint() const { return mTransformOriginPoint; }
    void setTransformOriginPoint(const KyVec2d& point) {
        setPosition(mTransformOriginPoint, point, "TransformOriginPoint");
    }

    /// Composed of the five values: a point is moved by minus the origin, scaled, sheared, rotated, moved by the origin
    /// and by the translation.
    const QTransform& getLocalTransform() const;
    /// Sets translation, rotation and scale to those of the transform. A shear is lost, and the origin point stays: to
    /// place a node by an exact matrix use setInitialTransform.
    void setLocalTransform(const QTransform& transform);
    /// Acts on the node's coordinates before the local transform; the identity at first.
    const QTransform& getInitialTransform() const;
    void setInitialTransform(const QTransform& transform);

    /// Above siblings with a lower value; siblings of one value lie in their order.
    std::int32_t getZValue() const { return mZValue; }
    void setZValue(std::int32_t z) { setPosition(mZValue, z, "ZValue"); }
    /// Adds this node's value and that of every node above but the topmost one; a node without parent adds nothing.
    void getOffsetZValue(int& z) const;

    /// True when this node and all above it are visible.
    bool isVisible() const;
    /// The node's own switch.
    bool isOwnVisible() const { return mIsVisible; }
    /// Switches the node and all below it.
    void setVisible(bool isVisible);

    /// Moves the geometry in the node's own coordinates; groups and proxies ignore it.
    const KyVec2d& getQtOffset() const { return mQtOffset; }
    void setQtOffset(const KyVec2d& offset);

    /// Null when the node was given none.
    const Ky2DStyle* getStyle() const { return mStyle; }
    /// For changing: marked as modified at once.
    Ky2DStyle* editStyle();
    /// Takes the style over; of a style that another node owns it takes a copy. Null leaves the node without style. An
    /// ending node takes none.
    void setStyle(Ky2DStyle* style);

    /// Mark a part of the node for the next update. False when a listener ended the node meanwhile.
    bool geometryModified() { return mIsGeometryModified || mark(&Ky2DNode::mIsGeometryModified); }
    /// To be called by a setter that changes where the item stands; true when the node was clean.
    bool positionModified() { return mIsPositionModified || mark(&Ky2DNode::mIsPositionModified); }
    /// To be called when pen, brush or font change.
    bool styleModified();
    bool isGeometryModified() const { return mIsGeometryModified; }
    /// True while the position waits for the next update.
    bool isPositionModified() const { return mIsPositionModified; }
    /// True while the style waits for the next update.
    bool isStyleModified() const;

    /// The Qt item that the node drives; null for a plain node and when the item was deleted by others.
    QGraphicsItem* getQGraphicsItem() const { return mItem; }

    /// Updates all modified nodes in the order in which they became so, those too that become so meanwhile. A call from
    /// inside an update goes on with the rest. Without a QApplication they go on waiting.
    static void applyModification();
    /// Enters the list of modified nodes and tells the scene. False when a listener ended the node meanwhile.
    static bool nodeModified(Ky2DNode* node);
    /// The nodes that wait for applyModification; null where a node ended meanwhile.
    static const std::vector<Ky2DNode*>& getModifiedNodes() { return editModifiedNodes(); }

    /// While it lives it knows whether the node does: for code that goes on after others had a chance to end the node.
    class KYAPPLICATION_EXPORT Watch {
    public:
        /// The node is not owned.
        explicit Watch(const Ky2DNode* node)
            : mNode(node)
            , mOuter(msInnermost) {
            msInnermost = this;
        }
        ~Watch() { msInnermost = mOuter; }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        /// False once the node has ended.
        bool isAlive() const { return mNode != nullptr; }

    private:
        friend class Ky2DNode;
        static void onEnded(const Ky2DNode* node);

        const Ky2DNode* mNode;
        Watch* mOuter;
        static Watch* msInnermost;
    };

protected:
    /// Copies for derived classes, which make the item.
    Ky2DNode(const Ky2DNode& other);

    /// Makes the item, in a constructor. An item that a base class made is deleted.
    template <class Base, class... Arguments>
    Ky2DItem<Base>* createItem(Arguments&&... arguments) {
        auto* item = new Ky2DItem<Base>(std::forward<Arguments>(arguments)...);
        setItem(item, item, true);
        return item;
    }
    /// The item as that class, null when it is none or gone.
    template <class Item>
    Item* editItem() const {
        return dynamic_cast<Item*>(mItem);
    }
    /// Lets the node drive an item; the link ends with the item and is deleted with the node.
    void setItem(QGraphicsItem* item, Ky2DItemLink* link, bool ownsItem);

    /// What a shape's setter does: stores, marks the geometry, tells listeners.
    template <class T>
    void setGeometry(T& member, const T& value, std::string_view attribute) {
        member = value;
        if (mIsGeometryModified && !isWatched())
            return;
        if (geometryModified())
            tell(attribute);
    }
    /// The same for what belongs to the position.
    template <class T>
    void setPosition(T& member, const T& value, std::string_view attribute) {
        member = value;
        if (mIsPositionModified && !isWatched())
            return;
        if (positionModified())
            tell(attribute);
    }
    /// Tells listeners of an attribute, when there are any.
    void tell(std::string_view attribute);

private:
    friend class Ky2DGroup;
    friend class Ky2DItemLink;
    friend class Ky2DScene;
    friend class Ky2DStyle;
    class Walk;

    bool mark(bool Ky2DNode::*flag) {
        this->*flag = true;
        return mModifiedSlot != -1 || nodeModified(this);
    }
    void styleDestroyed() { mStyle = nullptr; }
    void itemDestroyed();
    void dropItem();
    void attachToItem(QGraphicsItem* parentItem);
    bool leaveForeignQtScene(const QGraphicsItem* parentItem);
    void enterSceneAgain();
    void enterModifiedNodes() {
        std::vector<Ky2DNode*>& nodes = editModifiedNodes();
        mModifiedSlot = static_cast<std::int32_t>(nodes.size());
        nodes.push_back(this);
    }
    void takeStyle(Ky2DStyle* style);
    void leaveModifiedNodes();
    void setSceneMember(Ky2DScene* scene);
    static std::vector<Ky2DNode*>& editModifiedNodes() {
        if (!msModifiedNodes)
            makeModifiedNodes();
        return *msModifiedNodes;
    }
    static void makeModifiedNodes();
    static void tellOfModifiedNodes();

    std::string mName;
    QTransform mLocalTransform;
    // None is the identity: few nodes have one.
    std::unique_ptr<QTransform> mInitialTransform;
    KyVec2d mTranslation;
    KyVec2d mScale{1.0, 1.0};
    KyVec2d mTransformOriginPoint;
    KyVec2d mShear;
    double mRotation = 0.0;
    KyVec2d mQtOffset;
    Ky2DStyle* mStyle = nullptr;
    Ky2DNode* mParent = nullptr;
    Ky2DScene* mScene = nullptr;
    QGraphicsItem* mItem = nullptr;
    Ky2DItemLink* mLink = nullptr;
    std::int32_t mZValue = 0;
    std::int32_t mIndex = -1;
    // Levels below this node.
    unsigned mHeight = 0;
    // Places in the list of modified nodes and among the scene's nodes, -1 for none.
    std::int32_t mModifiedSlot = -1;
    std::int32_t mSceneSlot = -1;
    bool mIsVisible = true;
    bool mOwnsItem = false;
    bool mIsGeometryModified = true;
    bool mIsPositionModified = true;

    static std::vector<Ky2DNode*>* msModifiedNodes;
    static const KyType* msType;
};
