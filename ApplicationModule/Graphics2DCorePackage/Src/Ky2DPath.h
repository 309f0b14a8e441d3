// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "Ky2DNode.h"
#include "Ky2DPathCommand.h"

#include <string>
#include <vector>

/// Any outline: a list of commands as in SVG's path data, filled by the style's fill rule. Driven item: a
/// QGraphicsPathItem. GUI thread.
///
/// ```
/// Ky2DPath* arrow = Ky2DPath::create();
/// arrow->setPathData("M0 0 l10 5 -10 5z");
/// arrow->editCommand(1).setPoint(0, KyVec2d(20, 5));
/// group->insertChild(arrow, -1);
/// ```
class KYAPPLICATION_EXPORT Ky2DPath : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DPath* cast(KyObject* object);
    static Ky2DPath* create();
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Without commands: draws nothing.
    Ky2DPath();
    Ky2DPath(const Ky2DPath& other);
    Ky2DPath& operator=(const Ky2DPath&) = delete;
    Ky2DPath* clone() const override;

    /// 0 for an empty path.
    unsigned getNbCommands() const { return static_cast<unsigned>(mCommands.size()); }
    /// A command without numbers when out of range.
    const Ky2DPathCommand& getCommand(unsigned index) const;
    /// All commands; until the next change of the path.
    const std::vector<Ky2DPathCommand>& getCommands() const { return mCommands; }
    /// The letter, then each number after one blank, with six digits; empty when out of range or of unknown type.
    std::string getCommandString(unsigned index) const;

    /// Appends a command.
    void addCommand(const Ky2DPathCommand& command);
    /// For changing a command before the next update; out of range it is one that belongs to nobody.
    Ky2DPathCommand& editCommand(unsigned index);
    /// Nothing happens out of range.
    void removeCommand(unsigned index);
    /// Replaces all commands.
    void setCommands(std::vector<Ky2DPathCommand> commands);

    /// SVG path data that gives the commands again; see Ky2DPathData::format.
    std::string getPathData() const;
    /// Replaces the commands; false, and nothing changed, when the text is no path data.
    bool setPathData(const std::string& text);
    /// Appends the commands of the text; false, and nothing changed, when it is no path data.
    bool addPathData(const std::string& text);

protected:
    void updateQGraphicsItemGeometry() override;
    void updateQGraphicsItemStyle() override;

private:
    void commandsModified();

    std::vector<Ky2DPathCommand> mCommands;

    static const KyType* msType;
};
