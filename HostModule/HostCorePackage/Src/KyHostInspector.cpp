// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostInspector.h"

#include "KyQAttributeEditor.h"
#include "KyScriptEngine.h"

namespace {

constexpr int cWidth = 420;
constexpr int cHeight = 640;

} // namespace

KyHostInspector::KyHostInspector(const std::string& name)
    : mName(name)
    , mEditor(std::make_unique<KyQAttributeEditor>()) {
    mEditor->setObjectName("inspector");
    mEditor->setWindowTitle(QString::fromStdString(name));
    // The program does not end with it.
    mEditor->setAttribute(Qt::WA_QuitOnClose, false);
    mEditor->resize(cWidth, cHeight);
    KyScriptEngine& engine = KyScriptEngine::get();
    engine.boundSignal.connect(this, &KyHostInspector::onBound);
    engine.unboundSignal.connect(this, &KyHostInspector::onUnbound);
    if (KyObject* const object = engine.getInstance(name))
        onBound(object, name);
}

KyHostInspector::~KyHostInspector() = default;

void KyHostInspector::onBound(KyObject* object, const std::string& name) {
    if (name != mName)
        return;
    mEditor->setObject(object);
    // Somebody who has closed it does not want it again.
    if (!mHasFound)
        mEditor->show();
    mHasFound = true;
}

void KyHostInspector::onUnbound(KyObject* object, const std::string& name) {
    if (name == mName && object == mEditor->getObject())
        mEditor->setObject(nullptr);
}
