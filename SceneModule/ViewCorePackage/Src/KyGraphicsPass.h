// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyBaseGraphicsPass.h"

/// A pass that covers a part of its view: fractions of it, all of it at the start.
class KYSCENE_EXPORT KyGraphicsPass : public KyBaseGraphicsPass {
public:
    static const KyType* getType();
    static KyGraphicsPass* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// x, y, width, height as fractions of the view, y down.
    const KyRect<double>& getArea() const { return mArea; }
    KyRect<int> getAreaPixels(const KyGraphicsViewMultiPass* view) const override;

    /// A null rectangle stands for the whole view.
    void setArea(const KyRect<double>& area);

private:
    KyRect<double> mArea{0.0, 0.0, 1.0, 1.0};

    static const KyType* msType;
};
