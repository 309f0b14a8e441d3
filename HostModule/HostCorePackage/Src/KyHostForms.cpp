// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostForms.h"

#include "KyPassSurface.h"
#include "KyQtPassEventHandler.h"

#include "KyCanvas.h"

#include "KyHolder.h"

#include <algorithm>
#include <vector>

namespace {

/// A pass that takes events, and the view that shows it.
struct Form {
    KyHolder<KyBaseGraphicsPass> pass;
    KyHolder<KyGraphicsViewMultiPass> view;

    KyQtPassEventHandler* getHandler() const { return KyQtPassEventHandler::cast(pass->getEventHandler()); }
    bool hasKeyboard() const { return getHandler()->hasKeyboardFocus(pass.get()); }
};

using Forms = std::vector<Form>;

void addPass(KyBaseGraphicsPass* pass, KyGraphicsViewMultiPass* view, Forms& forms) {
    if (const auto* const surface = KyPassSurface::cast(pass))
        return surface->isEnabled() ? addPass(surface->getPass(), surface->getPictureView(), forms) : void();
    if (pass && pass->isEnabled() && KyQtPassEventHandler::cast(pass->getEventHandler()))
        forms.push_back({KyHolder<KyBaseGraphicsPass>(pass), KyHolder<KyGraphicsViewMultiPass>(view)});
}

void addView(KyGraphicsViewMultiPass* view, Forms& forms) {
    if (!view->isEnabled())
        return;
    for (unsigned i = 0; i < view->getNbPasses(); ++i)
        addPass(view->getPass(i), view, forms);
    for (unsigned i = 0; i < view->getNbViews(); ++i)
        addView(view->getView(i), forms);
}

} // namespace

bool KyHostForms::enter(const KyCanvas& canvas, int step) {
    Forms forms;
    for (unsigned i = 0; i < canvas.getNbViews(); ++i)
        addView(canvas.getView(i), forms);
    if (step < 0)
        std::ranges::reverse(forms);
    const auto now = std::ranges::find_if(forms, &Form::hasKeyboard);
    if (now != forms.end())
        std::ranges::rotate(forms, now + 1);
    return std::ranges::any_of(forms, [](const Form& form) {
        KyQtPassEventHandler* const handler = form.getHandler();
        return handler && handler->takeKeyboardFocus(form.pass.get(), form.view.get());
    });
}

bool KyHostForms::leave() {
    return KyQtPassEventHandler::dropKeyboardFocus();
}
