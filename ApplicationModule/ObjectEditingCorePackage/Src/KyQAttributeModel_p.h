// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeTarget_p.h"
#include "KyQAttributeModel.h"

/// One use of an editor: what stood there before, and what the editor left there.
struct KyQAttributeModel::Session {
    int number = 0;
    std::shared_ptr<const KyAttributeTarget> target;
    KyField before;
    KyField after;
};

/// Stands while rows come or go.
class KyQAttributeModel::Changing {
public:
    explicit Changing(KyQAttributeModel& model)
        : mModel(model) {
        mModel.mIsChanging = true;
    }
    ~Changing() { mModel.mIsChanging = false; }
    Changing(const Changing&) = delete;
    Changing& operator=(const Changing&) = delete;

private:
    KyQAttributeModel& mModel;
};
