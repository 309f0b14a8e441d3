// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

#include <vector>

class QComboBox;

/// A reference to an object: none, what it refers to now, or one of the published objects. What the
/// attribute refuses, such as an object of another class, is not offered again.
class KyQReferenceEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    explicit KyQReferenceEditor(QWidget* parent);

    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;
    void noteRefused(const KyField& field) override;

private:
    void add(KyObject* object);

    QComboBox* mNames;
    std::vector<KyObjectReference> mObjects;
    std::vector<KyObjectReference> mRefused;
};
