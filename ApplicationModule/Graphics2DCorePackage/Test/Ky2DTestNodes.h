// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DNode.h"
#include "Ky2DStyle.h"

#include <QGraphicsRectItem>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A shape of 10 x 10 that counts what is done with it and may do more.
class CountingNode : public Ky2DNode {
public:
    CountingNode() { createItem<QGraphicsRectItem>(); }
    CountingNode(const CountingNode& other)
        : Ky2DNode(other) {
        createItem<QGraphicsRectItem>();
    }
    CountingNode* clone() const override { return new CountingNode(*this); }

    void update() override {
        ++nbUpdates;
        Ky2DNode::update();
    }

    int nbUpdates = 0;
    std::string steps;
    std::function<void()> onGeometry;

protected:
    void updateQGraphicsItemGeometry() override {
        steps += 'g';
        if (auto* item = editItem<QGraphicsRectItem>())
            item->setRect(getQtOffset().x, getQtOffset().y, 10, 10);
        if (const auto action = onGeometry)
            action();
    }
    void updateQGraphicsItemStyle() override { steps += 's'; }
    void updateQGraphicsItemPosition() override {
        steps += 'p';
        Ky2DNode::updateQGraphicsItemPosition();
    }
};

/// Notes what it is told of, and may act on it.
class Listener : public KyHasSlots {
public:
    explicit Listener(KyObject& object, std::function<void()> act = {})
        : action(std::move(act)) {
        object.connectModified(this, &Listener::onModified);
    }
    void onModified(KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
        entries.push_back(name + " " + std::to_string(kind) + " " + std::to_string(index));
        if (const auto act = action)
            act();
    }
    std::vector<std::string> entries;
    std::function<void()> action;
};
