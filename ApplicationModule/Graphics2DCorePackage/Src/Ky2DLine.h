// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "Ky2DNode.h"

#include "KyVec2.h"

/// A straight line between two points, drawn by the stroke of its style; nothing while an end is not finite. Driven
/// item: a QGraphicsLineItem. GUI thread.
///
/// ```
/// Ky2DLine* axis = Ky2DLine::create();
/// axis->setP2(KyVec2d(100, 0));
/// axis->editStyle()->setStrokeMode(eSolidLine);
/// ```
class KYAPPLICATION_EXPORT Ky2DLine : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DLine* cast(KyObject* object);
    static Ky2DLine* create();
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Both ends at (0, 0).
    Ky2DLine();
    Ky2DLine(const Ky2DLine& other);
    Ky2DLine& operator=(const Ky2DLine&) = delete;
    Ky2DLine* clone() const override;

    /// @{
    /// One end, in the node's units.
    const KyVec2d& getP1() const { return mP1; }
    void setP1(const KyVec2d& point);
    /// @}
    /// @{
    /// The other end, in the node's units.
    const KyVec2d& getP2() const { return mP2; }
    void setP2(const KyVec2d& point);
    /// @}

protected:
    void updateQGraphicsItemGeometry() override;
    void updateQGraphicsItemStyle() override;

private:
    KyVec2d mP1;
    KyVec2d mP2;

    static const KyType* msType;
};
