// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DPath.h"

#include "Ky2DPathData.h"
#include "Ky2DStyle.h"
#include "Ky2DUtil.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyNumberText.h"
#include "KyTypeBuilder.h"

#include <QBrush>
#include <QGraphicsPathItem>
#include <QPainterPath>
#include <QPen>

#include <cstddef>
#include <utility>

namespace {

Qt::FillRule toQtFillRule(const Ky2DStyle& style) {
    return style.getFillRule() == eEvenOdd ? Qt::OddEvenFill : Qt::WindingFill;
}

} // namespace

const KyType* Ky2DPath::msType = nullptr;

const KyType* Ky2DPath::getType() {
    if (!msType)
        initializeType();
    return msType;
}

Ky2DPath* Ky2DPath::cast(KyObject* object) {
    return kyCast<Ky2DPath>(object);
}

Ky2DPath* Ky2DPath::create() {
    return new Ky2DPath;
}

KyObject* Ky2DPath::factory() {
    return create();
}

void Ky2DPath::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DPath::getObjectType() const {
    return getType();
}

Ky2DPath* Ky2DPath::clone() const {
    return new Ky2DPath(*this);
}

void Ky2DPath::initializeType() {
    if (msType)
        return;
    Ky2DNode::initializeType();
    msType = KyTypeBuilder<Ky2DPath>("Ky2DPath", Ky2DNode::getType())
                 .factory()
                 .container("Command", &Ky2DPath::getNbCommands, &Ky2DPath::getCommandString)
                 .attribute("PathData", &Ky2DPath::getPathData, &Ky2DPath::setPathData)
                 .method("getNbCommands", &Ky2DPath::getNbCommands)
                 .method("getCommandString", &Ky2DPath::getCommandString)
                 .method("addCommand", &Ky2DPath::addPathData)
                 .method("removeCommand", &Ky2DPath::removeCommand)
                 .method("getPathData", &Ky2DPath::getPathData)
                 .method("setPathData", &Ky2DPath::setPathData)
                 .build();
    KyCallSignatures::add("Ky2DPath", {"addCommand(command)", "getCommandString(index)", "removeCommand(index)"});
}

Ky2DPath::Ky2DPath() {
    createItem<QGraphicsPathItem>();
}

Ky2DPath::Ky2DPath(const Ky2DPath& other)
    : Ky2DNode(other)
    , mCommands(other.mCommands) {
    createItem<QGraphicsPathItem>();
}

const Ky2DPathCommand& Ky2DPath::getCommand(unsigned index) const {
    static const Ky2DPathCommand nothing;
    return index < mCommands.size() ? mCommands[index] : nothing;
}

std::string Ky2DPath::getCommandString(unsigned index) const {
    const char letter = index < mCommands.size() ? Ky2DPathCommand::getLetter(mCommands[index].getType()) : '\0';
    if (letter == '\0')
        return {};
    std::string text(1, letter);
    if (mCommands[index].getNbCoordinates() != 0)
        text += ' ' + KyNumberText::format(mCommands[index].getCoordinates(), KyNumberText::cDefaultPrecision);
    return text;
}

void Ky2DPath::addCommand(const Ky2DPathCommand& command) {
    mCommands.push_back(command);
    commandsModified();
}

Ky2DPathCommand& Ky2DPath::editCommand(unsigned index) {
    static Ky2DPathCommand discarded;
    if (index >= mCommands.size() || !geometryModified())
        return discarded = Ky2DPathCommand();
    return mCommands[index];
}

void Ky2DPath::removeCommand(unsigned index) {
    if (index >= mCommands.size())
        return;
    mCommands.erase(mCommands.begin() + static_cast<std::ptrdiff_t>(index));
    commandsModified();
}

void Ky2DPath::setCommands(std::vector<Ky2DPathCommand> commands) {
    mCommands = std::move(commands);
    commandsModified();
}

std::string Ky2DPath::getPathData() const {
    return Ky2DPathData::format(mCommands);
}

bool Ky2DPath::setPathData(const std::string& text) {
    std::vector<Ky2DPathCommand> commands;
    if (!Ky2DPathData::parse(text, commands))
        return false;
    setCommands(std::move(commands));
    return true;
}

bool Ky2DPath::addPathData(const std::string& text) {
    const std::size_t count = mCommands.size();
    if (!Ky2DPathData::parse(text, mCommands)) {
        mCommands.resize(count);
        return false;
    }
    if (mCommands.size() != count)
        commandsModified();
    return true;
}

void Ky2DPath::commandsModified() {
    if (!geometryModified() || !isWatched())
        return;
    const Watch watch(this);
    tell("Command");
    if (watch.isAlive())
        tell("PathData");
}

void Ky2DPath::updateQGraphicsItemGeometry() {
    auto* item = editItem<QGraphicsPathItem>();
    if (!item)
        return;
    QPainterPath path;
    if (getStyle())
        path.setFillRule(toQtFillRule(*getStyle()));
    Ky2DUtil::initializeQPainterPath(path, mCommands, getQtOffset());
    item->setPath(path);
}

void Ky2DPath::updateQGraphicsItemStyle() {
    auto* item = editItem<QGraphicsPathItem>();
    if (!item || !getStyle())
        return;
    Ky2DUtil::applyShapeStyle(getStyle(), item);
    if (isGeometryModified())
        return;
    // The geometry takes the rule too, but is not rebuilt for a new style.
    if (const Qt::FillRule rule = toQtFillRule(*getStyle()); item->path().fillRule() != rule) {
        QPainterPath path = item->path();
        path.setFillRule(rule);
        item->setPath(path);
    }
}
