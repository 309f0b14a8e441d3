// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

#include <vector>

class KyType;
class QComboBox;

/// A reference to an object: none, what it refers to now, or one of the published objects that are of the attribute's
/// class. What the attribute refuses all the same is not offered again.
class KyQReferenceEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    explicit KyQReferenceEditor(QWidget* parent);

    /// Null, as at first, for objects of any class.
    void setObjectType(const KyType* type) { mType = type; }
    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;
    void noteRefused(const KyField& field) override;
    void updateTranslations() override;

private:
    void add(KyObject* object);
    bool isOffered(KyObject* object) const;

    QComboBox* mNames;
    const KyType* mType = nullptr;
    std::vector<KyObjectReference> mObjects;
    std::vector<KyObjectReference> mRefused;
};
