// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptTrace_p.h"

void KyScriptTrace::note(const char* kind, const char* name) {
    if (mBeginsList) {
        mNext = 0;
        mIsFull = false;
    }
    mBeginsList = false;
    mIsNew = true;
    Call& call = mCalls[mNext];
    call.kind = kind;
    if (name)
        call.name = name;
    else
        call.name.clear();
    if (++mNext < cMaxCalls)
        return;
    mNext = 0;
    mIsFull = true;
}

std::string KyScriptTrace::makeCallstack() const {
    std::string text;
    const std::size_t nbCalls = mIsFull ? cMaxCalls : mNext;
    for (std::size_t i = 0; i < nbCalls; ++i) {
        const auto& [kind, name] = mCalls[mIsFull ? (mNext + i) % cMaxCalls : i];
        text.append(1, '[').append(kind).append(1, ']').append(name).append(1, '\n');
    }
    return text;
}
