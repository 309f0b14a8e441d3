// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDescription.h"

#include "KyScriptEngine.h"
#include "KyScriptReference.h"
#include "KyScriptStubs.h"

#include <algorithm>
#include <string_view>

namespace {

struct Text {
    std::string_view global;
    const char* text;
    bool isThereAtTimes = false;
};

constexpr Text cTexts[] = {
    {"camera", "What the scene is seen from."},
    {"devices", "The input devices."},
    {"host", "The program."},
    {"network", "Downloads and uploads; absent in a sandbox.", true},
    {"progress", "Long work that is under way."},
    {"qApp", "The application object of Qt."},
    {"scene", "What is shown."},
    {"shaper", "Gives axes of devices their feel."},
    {"trackball", "Moves the camera with the pointer."},
    {"view", "Draws the scene, pass by pass."},
};

constexpr const char* cWhileDrawing = "Only while a drawing is shown.";

void complete(KyScriptCatalogue& catalogue) {
    for (KyScriptGlobal& global : catalogue.globals) {
        const Text* const known = std::ranges::find(cTexts, global.name, &Text::global);
        if (known == std::end(cTexts))
            continue;
        global.text = known->text;
        global.type += known->isThereAtTimes ? "?" : "";
    }
    catalogue.addGlobal({"drawing", "Ky2DScene?", cWhileDrawing});
    catalogue.addGlobal({"drawingView", "Ky2DView?", cWhileDrawing});
}

} // namespace

bool KyHostDescription::write(const KyHostOptions& options, std::string& error) {
    KyScriptCatalogue catalogue = KyScriptCatalogue::make(KyScriptEngine::get());
    complete(catalogue);
    return (options.stubs.empty() || KyScriptStubs::write(catalogue, options.stubs, error)) &&
           (options.reference.empty() || KyScriptReference::write(catalogue, options.reference, error));
}
