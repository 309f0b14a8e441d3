// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtForm_p.h"
#include "KyQtLuaClass_p.h"
#include "KyQtTreeItem_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QIcon>
#include <QTreeWidget>

#include <algorithm>
#include <optional>
#include <vector>

template <>
inline constexpr bool cIsLuaValue<KyQtTreeItem> = true;

namespace {

QTreeWidgetItem& check(const KyQtTreeItem& handle) {
    QTreeWidgetItem* item = handle.find();
    if (!item)
        throw KyScriptError("the Qt object has been deleted");
    return *item;
}

/// Stands on the C++ stack while an item comes or goes. The tree sends signals on the way, and counts on its items
/// then.
class ChangeScope {
public:
    explicit ChangeScope(const QTreeWidgetItem& parent) {
        const QTreeWidget* tree = parent.treeWidget();
        if (tree && std::find(msChanging.begin(), msChanging.end(), tree) != msChanging.end())
            throw KyScriptError("an item of this tree is being added or removed");
        msChanging.push_back(tree);
    }
    ~ChangeScope() { msChanging.pop_back(); }
    ChangeScope(const ChangeScope&) = delete;
    ChangeScope& operator=(const ChangeScope&) = delete;

private:
    static inline std::vector<const QTreeWidget*> msChanging;
};

std::optional<KyQtTreeItem> toHandle(QTreeWidgetItem* item) {
    return item ? std::optional<KyQtTreeItem>(std::in_place, *item) : std::nullopt;
}

int checkColumn(double column) {
    return kyCheckLuaIndex(column, cMaxQtColumns, "column");
}

std::optional<KyQtTreeItem> getChild(const KyQtTreeItem& item, int index) {
    return toHandle(check(item).child(index));
}

/// Qt walks for ever below an item that is its own child.
QTreeWidgetItem& checkNewChild(const KyQtTreeItem& item, const KyQtTreeItem& newChild) {
    QTreeWidgetItem& child = check(newChild);
    if (newChild.isRoot() || child.treeWidget() || child.parent())
        throw KyScriptError("the item already has a parent");
    const QTreeWidgetItem* above = &check(item);
    if (child.childCount() == 0 && above != &child)
        return child;
    for (; above; above = above->parent())
        if (above == &child)
            throw KyScriptError("an item cannot be put below itself");
    return child;
}

void addChild(const KyQtTreeItem& item, const KyQtTreeItem& newChild) {
    QTreeWidgetItem& child = checkNewChild(item, newChild);
    const ChangeScope changing(check(item));
    check(item).addChild(&child);
}

void insertChild(const KyQtTreeItem& item, double index, const KyQtTreeItem& newChild) {
    QTreeWidgetItem& child = checkNewChild(item, newChild);
    const ChangeScope changing(check(item));
    check(item).insertChild(kyCheckLuaIndex(index, check(item).childCount() + 1), &child);
}

void removeChild(const KyQtTreeItem& item, const KyQtTreeItem& child) {
    QTreeWidgetItem& parent = check(item);
    const int index = parent.indexOfChild(&check(child));
    if (index < 0)
        return;
    const ChangeScope changing(parent);
    KyQtTreeItem::take(parent, index);
}

bool areEqual(const KyQtTreeItem& a, const KyQtTreeItem& b) {
    return a.find() && a.find() == b.find();
}

void defineContent(luabind::class_<KyQtTreeItem>& itemClass) {
    itemClass.def("columnCount", kyQtCall([](const KyQtTreeItem& item) { return check(item).columnCount(); }))
        .def("text",
             kyQtCall([](const KyQtTreeItem& item, double column) { return check(item).text(checkColumn(column)); }))
        .def("setText", kyQtCall([](const KyQtTreeItem& item, double column, const QString& text) {
                 check(item).setText(checkColumn(column), text);
             }))
        .def("setIcon", kyQtCall([](const KyQtTreeItem& item, double column, const QIcon& icon) {
                 check(item).setIcon(checkColumn(column), icon);
             }));
}

luabind::scope makeItem() {
    using luabind::argument;
    luabind::class_<KyQtTreeItem> itemClass("QTreeWidgetItem");
    KyCallSignatures::add("QTreeWidgetItem",
                          {"text(column: integer)", "setText(column: integer, text)", "setIcon(column: integer, icon)",
                           "child(index: integer)", "addChild(child)", "insertChild(index: integer, child)",
                           "removeChild(child)", "indexOfChild(child)"});
    defineContent(itemClass);
    itemClass.def("__init", kyLuaConstructor(+[] { return KyQtTreeItem(); }))
        .def("__eq", &areEqual)
        .def(
            "__eq", +[](const KyQtTreeItem&, const argument&) { return false; })
        .def(
            "__eq", +[](const argument&, const KyQtTreeItem&) { return false; })
        .def("parent", kyQtCall([](const KyQtTreeItem& item) { return toHandle(check(item).parent()); }))
        .def("child", kyQt<&getChild>)
        .def("childCount", kyQtCall([](const KyQtTreeItem& item) { return check(item).childCount(); }))
        .def("addChild", kyQt<&addChild>)
        .def("insertChild", kyQt<&insertChild>)
        .def("removeChild", kyQt<&removeChild>)
        .def("indexOfChild", kyQtCall([](const KyQtTreeItem& item, const KyQtTreeItem& child) {
                 return check(item).indexOfChild(&check(child));
             }));
    return itemClass;
}

luabind::scope makeTree() {
    auto viewClass = kyQtClass<QTreeView, QWidget>("QTreeView");
    auto treeClass = kyQtClass<QTreeWidget, QTreeView>("QTreeWidget");
    kyQtWidgetConstructors<QTreeWidget>(treeClass);
    KyCallSignatures::add("QTreeWidget", {"__init(parent?)"});
    treeClass.def("invisibleRootItem", kyQt<&KyQtTreeItem::ofRoot>).def("currentItem", kyQtCall([](QTreeWidget& tree) {
                                                                            return toHandle(tree.currentItem());
                                                                        }));
    return viewClass, treeClass;
}

} // namespace

void kyPushQtTreeItem(lua_State* state, QTreeWidgetItem* item) {
    if (item)
        kyLuaPushValueObject(state, KyQtTreeItem(*item));
    else
        lua_pushnil(state);
}

luabind::scope kyMakeQtTreeTypes() {
    return makeItem(), makeTree();
}
