// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DIntersected.h"
#include "Ky2DScene.h"
#include "Ky2DUtil.h"
#include "KyGraphicsItemType.h"
#include "KyQGraphicsItemIntersected.h"

#include <QGraphicsItem>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

/// Half the side of the square in which the area mode looks.
constexpr double cReach = 10.0;

/// False for an item whose transforms overflow together: Qt finds it everywhere. Those of nodes are finite alone.
bool isPlaced(const QGraphicsItem* item) {
    if (!item->parentItem())
        return true;
    return Ky2DUtil::isFinite(item->sceneTransform());
}

QList<QGraphicsItem*> collect(const QGraphicsScene& scene, const QPointF& point, Ky2DScene::PickMode mode) {
    if (mode == Ky2DScene::eArea) {
        const QRectF area(point.x() - cReach, point.y() - cReach, 2.0 * cReach, 2.0 * cReach);
        QList<QGraphicsItem*> items = scene.items(area, Qt::IntersectsItemShape, Qt::DescendingOrder);
        items.erase(std::remove_if(items.begin(), items.end(), std::not_fn(&isPlaced)), items.end());
        return items;
    }
    const QList<QGraphicsItem*> items = scene.items(point, Qt::IntersectsItemShape, Qt::DescendingOrder);
    const auto found = std::find_if(items.begin(), items.end(), &isPlaced);
    return found == items.end() ? QList<QGraphicsItem*>() : QList<QGraphicsItem*>{*found};
}

/// All that can be picked; nothing of a scene that is gone or at a point that is none.
QList<QGraphicsItem*> findItems(const QGraphicsScene* scene, const QPointF& point, Ky2DScene::PickMode mode) {
    if (!scene || !std::isfinite(point.x()) || !std::isfinite(point.y()))
        return {};
    QList<QGraphicsItem*> items = collect(*scene, point, mode);
    items.erase(std::remove_if(items.begin(), items.end(),
                               [](const QGraphicsItem* item) { return item->type() == eGraphicsItem3DView; }),
                items.end());
    return items;
}

/// Makes a record for each item; `Fill` puts the item into a record of its kind.
template <class Record, class Fill>
void addRecords(const QList<QGraphicsItem*>& items, const QPointF& point, const KyIntersectedCreator& creator,
                std::vector<KyIntersected*>& results, Fill fill) {
    results.reserve(results.size() + static_cast<std::size_t>(items.size()));
    for (QGraphicsItem* item : items) {
        KyIntersected* result = creator.make();
        if (!result)
            continue;
        if (Record* record = Record::cast(result))
            fill(*record, item);
        result->setPoint(KyVec3d(point.x(), point.y(), 0.0));
        result->setValid(true);
        results.push_back(result);
    }
}

} // namespace

bool Ky2DScene::setPickMode(PickMode mode) {
    if (mode < eArea || mode >= eNbPickModes)
        return false;
    mPickMode = mode;
    if (isWatched())
        notifyModified("PickMode");
    return true;
}

void Ky2DScene::pick(double x, double y, std::vector<KyIntersected*>& results, const KyIntersectedCreator& creator) {
    const Watch watch(this);
    applyModification();
    if (!watch.isAlive())
        return;
    const QPointF point(x, y);
    addRecords<Ky2DIntersected>(
        findItems(mGraphicsScene, point, mPickMode), point, creator, results,
        [this](Ky2DIntersected& record, const QGraphicsItem* item) { record.setElement(getNode(item)); });
}

void Ky2DScene::pickQGraphicsItem(double x, double y, std::vector<KyIntersected*>& results,
                                  const KyIntersectedCreator& creator) const {
    const QPointF point(x, y);
    addRecords<KyQGraphicsItemIntersected>(
        findItems(mGraphicsScene, point, mPickMode), point, creator, results,
        [](KyQGraphicsItemIntersected& record, QGraphicsItem* item) { record.setQGraphicsItem(item); });
}
