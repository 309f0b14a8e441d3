// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyObject.h"

#include <string>

/// The look of a text: family, size, weight. An object of the model, made with `new` and owned by its maker.
class KYSCENE_EXPORT KyFontFormat : public KyObject {
public:
    /// Upright, italic, or slanted.
    enum Style { eNormal = 0, eItalic = 1, eOblique = 2, eNbStyles };

    static const KyType* getType();
    static KyFontFormat* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Empty for the toolkit's own.
    const std::string& getFamily() const { return mFamily; }
    /// What to look for when the family is missing, as the toolkit numbers it.
    int getStyleHint() const { return mStyleHint; }
    /// Points.
    double getSize() const { return mSize; }
    /// 0 to 99; 50 is normal, 75 bold.
    int getWeight() const { return mWeight; }
    /// A number of Style.
    int getStyle() const { return mStyle; }
    /// A line below the text.
    bool isUnderline() const { return mIsUnderline; }
    /// A line through the text.
    bool isStrikeOut() const { return mIsStrikeOut; }

    /// Of no such family the toolkit takes the nearest.
    void setFamily(const std::string& family);
    void setStyleHint(int hint);
    /// Not positive or not finite: ignored.
    void setSize(double points);
    /// Limited to 0 ... 99.
    void setWeight(int weight);
    /// Others than those of Style are ignored.
    void setStyle(int style);
    /// @{
    /// Off at the start.
    void setUnderline(bool isOn);
    void setStrikeOut(bool isOn);
    /// @}

private:
    template <class T>
    void assign(T& member, const T& value, const char* name);

    std::string mFamily;
    double mSize = 12.0;
    int mStyleHint = 0;
    int mWeight = 50;
    int mStyle = eNormal;
    bool mIsUnderline = false;
    bool mIsStrikeOut = false;

    static const KyType* msType;
};
