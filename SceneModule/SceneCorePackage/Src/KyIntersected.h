// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyObject.h"
#include "KyVec3.h"

#include <limits>

/// One record of what picking found; kinds of hits derive from it. Made by a creator, owned by who asked.
class KYSCENE_EXPORT KyIntersected : public KyObject {
public:
    static const KyType* getType();
    static KyIntersected* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    static KyIntersected* create() { return new KyIntersected; }

    /// In world coordinates.
    const KyVec3d& getPoint() const { return mPoint; }
    /// World units from the eye.
    double getDistance() const { return mDistance; }
    /// False until somebody says that the record holds a hit.
    bool isValid() const { return mIsValid; }

    /// See getPoint.
    void setPoint(const KyVec3d& point) { mPoint = point; }
    /// See getDistance.
    void setDistance(double distance) { mDistance = distance; }
    void setValid(bool isValid) { mIsValid = isValid; }

private:
    KyVec3d mPoint;
    double mDistance = 0.0;
    bool mIsValid = false;

    static const KyType* msType;
};

/// Makes the records that picking fills, and says how far it looks.
struct KyIntersectedCreator {
    /// Makes an empty record of the wanted class.
    using Function = KyIntersected* (*)();

    /// Null makes records of the base class; implicit, so that a function can be passed.
    KyIntersectedCreator(Function function = nullptr)
        : create(function) {}

    /// Null stands for KyIntersected::create.
    Function create = nullptr;
    /// World units from the eye; what is farther is not found.
    double distanceLimit = std::numeric_limits<double>::max();

    /// A new record, which the caller owns.
    KyIntersected* make() const { return create ? create() : KyIntersected::create(); }
};
