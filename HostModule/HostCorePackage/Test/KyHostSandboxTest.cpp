// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostErrors.h"
#include "KyHostOptions.h"
#include "KyHostScripts.h"
#include "KyHostSettings.h"

#include "KyScriptCatalogue.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox.h"
#include "KyType.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

namespace {

using Lines = std::set<std::string>;

/// The lines of the list that people have read.
Lines readReviewed() {
    std::ifstream file(KY_TEST_DATA_DIR "/sandbox/reviewed.txt");
    Lines lines;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line.front() != '#')
            lines.insert(line);
    return lines;
}

template <class Entries>
void addNames(Lines& names, const Entries& entries) {
    for (const auto& entry : entries)
        names.insert(entry.name);
}

/// "KyImage (not made): BitsPerPixel Height -load": what is withheld has a "-".
std::string describe(const KyScriptClass& scriptClass) {
    Lines names;
    addNames(names, scriptClass.members);
    addNames(names, scriptClass.functions);
    addNames(names, scriptClass.emitted);
    const KyType* const type = KyType::getType(scriptClass.name);
    std::string text = scriptClass.name + (type && KyScriptSandbox::isTypeWithheld(*type) ? " (not made):" : ":");
    for (const std::string& name : names)
        text += (type && KyScriptSandbox::isMemberWithheld(*type, name) ? " -" : " ") + name;
    return text;
}

class KyHostSandboxTest : public KyHostSession<QCoreApplication> {
protected:
    KyHostSandboxTest() {
        mOptions.isSandboxed = true;
        mOptions.isSandboxStrict = true;
    }
    ~KyHostSandboxTest() override { KyScriptEngine::get().closeLuaState(); }

    QTemporaryDir mFolder;
    KyHostOptions mOptions;
    KyHostErrors mErrors{false};
    KyHostSettings mSettings{mFolder.filePath("settings.xml")};
    KyHostScripts mScripts{mOptions, mErrors, mHost, mStage, mSettings};
};

TEST_F(KyHostSandboxTest, EveryTypeHasBeenReviewed) {
    mScripts.run();
    EXPECT_LT(60u, KyType::getNbTypes());
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        EXPECT_TRUE(KyScriptSandbox::isTypeReviewed(*KyType::getType(i)))
            << KyType::getType(i)->getName() << " is withheld from scripts in a sandbox until somebody decides on it";
}

TEST_F(KyHostSandboxTest, ScriptsSeeWhatHasBeenReviewedAndNothingElse) {
    mScripts.run();
    const KyScriptCatalogue catalogue = KyScriptCatalogue::make(KyScriptEngine::get());
    Lines seen;
    for (const KyScriptClass& scriptClass : catalogue.classes)
        if (scriptClass.isGlobal || KyType::getType(scriptClass.name))
            seen.insert(describe(scriptClass));
    for (const KyScriptFunction& function : catalogue.functions)
        seen.insert(function.name + "()");
    for (const KyScriptGlobal& global : catalogue.globals)
        seen.insert(global.name);
    EXPECT_LT(140u, seen.size());
    const Lines reviewed = readReviewed();
    Lines unknown;
    Lines gone;
    std::ranges::set_difference(seen, reviewed, std::inserter(unknown, unknown.end()));
    std::ranges::set_difference(reviewed, seen, std::inserter(gone, gone.end()));
    for (const std::string& line : unknown)
        ADD_FAILURE() << "scripts in a sandbox see this, and nobody has reviewed it:\n" << line;
    for (const std::string& line : gone)
        ADD_FAILURE() << "the reviewed list has this, and scripts do not see it any more:\n" << line;
}

} // namespace
