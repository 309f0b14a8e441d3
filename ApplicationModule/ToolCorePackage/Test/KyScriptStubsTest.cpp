// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptReference.h"
#include "KyScriptStubs.h"

#include <gtest/gtest.h>

#include <lua.hpp>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

KyScriptClass makeLamp() {
    KyScriptClass lamp;
    lamp.name = "Lamp";
    lamp.parent = "Node";
    lamp.text = "Gives light.\nAnd heat.";
    lamp.isGlobal = true;
    lamp.constructors = {{{}, {}}, {{{"power", "number"}}, {}}};
    lamp.members = {{"Power", KyScriptMember::eAttribute, "number", false, "In watts."},
                    {"Age", KyScriptMember::eAttribute, "integer", true, {}},
                    {"how \"bright\"", KyScriptMember::eAttribute, "number", false, {}},
                    {"end", KyScriptMember::eComponent, "Lamp", true, {}},
                    {"Bulbs", KyScriptMember::eContainer, "Lamp", false, {}}};
    lamp.functions = {{"blink",
                       "Once, or so often.",
                       true,
                       {{{}, {}}, {{{"number", "integer"}, {"node", "Node?", true}}, "boolean"}}},
                      {"count", {}, false, {{{}, "integer"}}},
                      {"repeat", {}, true, {{{{"text", "string?"}}, {}}}}};
    lamp.constants = {{"eSpot", 0}, {"e-Point", 1}};
    lamp.emitted = {{"switched", {{"isOn", "boolean"}}}};
    lamp.operators = {{"__add", "Lamp", "number"}, {"__unm", {}, "Lamp"}};
    lamp.metamethods = {"__eq"};
    return lamp;
}

KyScriptCatalogue makeCatalogue() {
    KyScriptCatalogue catalogue;
    KyScriptClass hidden;
    hidden.name = "Inner.Part";
    hidden.group = KyScriptClass::eValues;
    hidden.functions = {{"grow", {}, true, {{{{"number", "number"}}, {}}}}};
    catalogue.classes = {hidden, makeLamp()};
    catalogue.aliases = {{"Light", "Lamp"}, {"Part", "Inner.Part"}};
    catalogue.enumerations = {{"Mode", {"eOn", "it's \\off"}}};
    catalogue.functions = {{"connect", {}, false, {{{{"sender", "any"}}, {}}}},
                           {"a b", {}, false, {{{}, {}}}},
                           {"make", {}, false, {{{{"type", "string"}, {"power", "number", true}}, "Lamp?"}}, true}};
    catalogue.globals = {{"lamp", "Lamp", "The one.\nAnd only."},
                         {"spot", "Lamp?", {}, {{"Bulb", KyScriptMember::eAttribute, "Spot", true, {}}}}};
    return catalogue;
}

std::string readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(none)";
}

void writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

/// Every file as one text.
std::string joinStubs(const KyScriptCatalogue& catalogue) {
    std::string all;
    for (const auto& [name, text] : KyScriptStubs::make(catalogue))
        all += text;
    return all;
}

class KyScriptStubsTest : public testing::Test {
protected:
    std::string getPath(const QString& name) const { return mFolder.filePath(name).toStdString(); }

    void expectFailure(const std::string& folder, const std::string& part) const {
        std::string error;
        EXPECT_FALSE(KyScriptStubs::write(makeCatalogue(), folder, error)) << folder;
        EXPECT_NE(std::string::npos, error.find(part)) << error;
        EXPECT_EQ(std::string::npos, error.find('\n')) << error;
    }
    /// Names that saving left behind.
    QStringList getEntries() const { return QDir(mFolder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(KyScriptStubsTest, EveryEntryHasItsAnnotationAndNamesThatLuaDoesNotTakeAreInQuotes) {
    const std::string all = joinStubs(makeCatalogue());
    for (const char* line : {
             "---Gives light.\n---And heat.\n---Signals: `switched(isOn: boolean)`.\n---Metamethods: `__eq`.\n"
             "---@class Lamp: Node\n---@operator add(Lamp): number\n---@operator unm: Lamp\n",
             "\n---@field Power number In watts.\n---@field Age integer (read-only)\n"
             "---@field [\"how \\\"bright\\\"\"] number\n---@field [\"end\"] Lamp (read-only)\n"
             "---@field Bulbs Container.Lamp\n",
             "\n---@overload fun(): Lamp\n---@overload fun(power: number): Lamp\nLamp = {}\n",
             "\nLamp.eSpot = 0\nLamp[\"e-Point\"] = 1\n",
             "\n---Once, or so often.\n---@overload fun(self: Lamp, number: integer, node?: Node): boolean\nfunction "
             "Lamp:blink() "
             "end\n",
             "\n---@return integer\nfunction Lamp.count() end\n",
             "\n---@param text string?\nLamp[\"repeat\"] = function(self, text) end\n",
             "\n---@class Container.Lamp\n---@operator len: integer\n---@field [integer] Lamp\n",
             "\ndo\n---@class Inner.Part\nlocal class = {}\n",
             "\nfunction class:grow(number) end\nend\n",
             "\n---@alias Light Lamp\nLight = Lamp\n",
             "\n---@alias Part Inner.Part\n---@type Inner.Part\nPart = {}\n",
             "\n---@alias Mode\n---| integer\n---| '\"eOn\"' # 0\n---| '\"it's \\\\off\"' # 1\n",
             "\n---@overload fun(sender: Lamp, signal: \"switched\", callback: fun(isOn: boolean))\n"
             "function connect(sender) end\n",
             "\n_G[\"a b\"] = function() end\n",
             "\n---@generic T : Lamp\n---@param type `T`\n---@param power? number\n---@return T?\nfunction make(type, "
             "power) "
             "end\n",
             "\n---The one.\n---And only.\n---@type Lamp\nlamp = nil\n",
             "\n---@class Global.spot: Lamp\n---@field Bulb Spot (read-only)\n\n---@type Global.spot?\nspot = nil\n",
         })
        EXPECT_NE(std::string::npos, all.find(line)) << line;
}

TEST_F(KyScriptStubsTest, EveryFileIsLuaAndBeginsAsAnnotations) {
    lua_State* const state = luaL_newstate();
    for (const auto& [name, text] : KyScriptStubs::make(makeCatalogue())) {
        EXPECT_EQ(0, luaL_loadbuffer(state, text.data(), text.size(), name.c_str())) << lua_tostring(state, -1);
        EXPECT_TRUE(text.starts_with("---@meta\n")) << name;
    }
    lua_close(state);
}

TEST_F(KyScriptStubsTest, TheReferenceTellsTheSame) {
    const std::string text = KyScriptReference::make(makeCatalogue());
    for (const char* line : {
             "\n### Lamp\n\nGives light.\nAnd heat.\n\nDerives from `Node`.\n\nAlso called `Light`.\n\nMade by:\n\n- "
             "`Lamp()`\n- `Lamp(power: number)`\n",
             "\n- `Power: number`: In watts.\n- `Age: integer`: read-only\n",
             "\n- `Bulbs: Lamp`: container\n",
             "\n- `:blink()`: Once, or so often.\n- `:blink(number: integer, node?: Node): boolean`\n- `.count(): "
             "integer`\n",
             "\n- `Lamp + Lamp: number`\n- `-Lamp: Lamp`\n\nMetamethods: `__eq`.\n",
             "\nConstants: `eSpot` 0, `e-Point` 1.\n",
             "\n- `switched(isOn: boolean)`\n",
             "\n- `Mode`: `eOn`, `it's \\off`\n",
             "\n- `spot: Lamp?`\n  - `spot.Bulb: Spot`\n",
         })
        EXPECT_NE(std::string::npos, text.find(line)) << line << text;
}

TEST_F(KyScriptStubsTest, FilesThatAreThereAreReplacedAndTheFolderIsMade) {
    std::string error;
    const std::string folder = getPath("new/deeper");
    ASSERT_TRUE(KyScriptStubs::write(makeCatalogue(), folder, error)) << error;
    writeFile(QString::fromStdString(folder) + "/values.lua", "old");
    writeFile(QString::fromStdString(folder) + "/mine.lua", "mine");
    ASSERT_TRUE(KyScriptStubs::write(makeCatalogue(), folder, error)) << error;
    for (const auto& [name, text] : KyScriptStubs::make(makeCatalogue()))
        EXPECT_EQ(text, readFile(QString::fromStdString(folder + '/' + name)));
    EXPECT_EQ("mine", readFile(QString::fromStdString(folder) + "/mine.lua"));
}

TEST_F(KyScriptStubsTest, WhatCannotBeWrittenIsSaidAndNothingIsLost) {
    writeFile(mFolder.filePath("file"), "old");
    expectFailure(getPath("file"), "file'");
    expectFailure(getPath("file") + "/deeper", "deeper'");
    EXPECT_EQ("old", readFile(mFolder.filePath("file")));

    writeFile(mFolder.filePath("enumerations.lua"), "old");
    QDir(mFolder.path()).mkdir("values.lua");
    expectFailure(mFolder.path().toStdString(), "values.lua'");
    EXPECT_EQ("old", readFile(mFolder.filePath("enumerations.lua"))) << "all or none";
    EXPECT_EQ(QStringList({"enumerations.lua", "file", "values.lua"}), getEntries());

    std::string error;
    EXPECT_FALSE(KyScriptReference::write(makeCatalogue(), getPath("values.lua"), error));
    EXPECT_FALSE(KyScriptReference::write(makeCatalogue(), getPath("file/x.md"), error));
    if (QFile::exists("/dev/full")) {
        EXPECT_FALSE(KyScriptReference::write(makeCatalogue(), "/dev/full", error));
        EXPECT_TRUE(QFile::exists("/dev/full") && !QFileInfo("/dev/full").isFile());
    }
}
