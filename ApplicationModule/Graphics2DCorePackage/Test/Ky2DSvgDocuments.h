// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DGroup.h"
#include "Ky2DRaster.h"
#include "Ky2DScene.h"
#include "Ky2DStyle.h"
#include "Ky2DSvgImporter.h"

#include <QGraphicsScene>

#include <memory>
#include <string>
#include <vector>

namespace Ky2DSvgDocuments {

struct Destroy {
    void operator()(KyObject* object) const { object->destroy(); }
};
using Group = std::unique_ptr<Ky2DGroup, Destroy>;

/// A document of 200 by 200 pixels.
inline std::string wrap(const std::string& content) {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='200' "
           "height='200' viewBox='0 0 200 200'>" +
           content + "</svg>";
}

/// What an importer makes of a document.
struct Imported {
    explicit Imported(const std::string& svg)
        : group(importer.importText(svg)) {}
    /// With a limit, and as many hundred bytes of expansion.
    Imported(const std::string& svg, unsigned maxNodes) {
        importer.setMaxNodes(maxNodes);
        importer.setMaxExpansion(100 * maxNodes);
        group.reset(importer.importText(svg));
    }
    template <class Node = Ky2DNode>
    Node* find(const char* name) {
        return group ? Node::cast(group->find(name)) : nullptr;
    }
    std::vector<std::string> getReports() const {
        std::vector<std::string> names;
        for (unsigned i = 0; i < importer.getNbReports(); ++i)
            names.push_back(importer.getReport(i));
        return names;
    }
    Ky2DSvgImporter importer;
    Group group;
};

inline QImage renderGroup(Ky2DGroup* group) {
    Ky2DScene* scene = Ky2DScene::create(nullptr, true);
    scene->insertChild(group, Ky2DNode::cAppend);
    Ky2DNode::applyModification();
    QImage image = Ky2DRaster::makePaper();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scene->getQGraphicsScene()->render(&painter, QRectF(0, 0, 200, 200), QRectF(0, 0, 200, 200));
    painter.end();
    scene->destroy();
    return image;
}

inline int countInk(const QImage& image) {
    return Ky2DRaster::countDifferences(image, Ky2DRaster::makePaper());
}

} // namespace Ky2DSvgDocuments
