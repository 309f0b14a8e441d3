// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostErrors.h"
#include "KyHostOptions.h"
#include "KyHostScripts.h"
#include "KyHostSettings.h"

#include "KyDoxygenXmlDocMgr.h"
#include "KyScriptEngine.h"
#include "KyScriptStubs.h"

#include "KyBoundFunction.h"
#include "KyCallSignatures.h"
#include "KyType.h"

#include <lua.hpp>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

namespace {

using Names = std::set<std::string>;

/// What annotations declare: globals under "", the members of classes under their names, with those of the parents.
class Declarations {
public:
    void read(const std::string& text) {
        QString current;
        for (const QString& line : QString::fromStdString(text).split('\n'))
            readLine(line, current);
    }

    bool hasClass(const std::string& name) const { return mMembers.contains(name); }
    bool has(const std::string& owner, const std::string& name) const {
        const auto found = mMembers.find(owner);
        if (found == mMembers.end())
            return false;
        const auto parent = mParents.find(owner);
        return found->second.contains(name) || (parent != mParents.end() && has(parent->second, name));
    }

private:
    void readLine(const QString& line, QString& current) {
        static const QRegularExpression cClass("^---@class ([\\w.]+)(?:: ([\\w.]+))?$");
        static const QRegularExpression cMember("^---@field (?:(\\w+)|\\[\"(.*)\"\\]) |^---@operator (\\w+)|"
                                                "^function [\\w.]+[.:](\\w+)\\(|^\\w+(?:\\.(\\w+)|\\[\"(.*)\"\\]) = ");
        static const QRegularExpression cGlobal("^(?:function )?(\\w+)(?: = |\\()");
        static const QRegularExpression cNote("`(\\w+)[`(]");
        if (const auto match = cClass.match(line); match.hasMatch()) {
            current = match.captured(1);
            add(current, {});
            if (!match.captured(2).isEmpty())
                mParents[current.toStdString()] = match.captured(2).toStdString();
            for (const QString& note : std::exchange(mNotes, {}))
                add(current, note);
        } else if (line.startsWith("---Signals: ") || line.startsWith("---Metamethods: ")) {
            for (auto notes = cNote.globalMatch(line); notes.hasNext();)
                mNotes << notes.next().captured(1);
        } else if (const auto member = cMember.match(line); member.hasMatch()) {
            add(current, (line.startsWith("---@operator ") ? "__" : "") + member.captured(member.lastCapturedIndex()));
        } else if (const auto global = cGlobal.match(line); global.hasMatch()) {
            add({}, global.captured(1));
        }
    }

    void add(const QString& owner, const QString& name) { mMembers[owner.toStdString()].insert(name.toStdString()); }

    std::map<std::string, Names> mMembers;
    std::map<std::string, std::string> mParents;
    QStringList mNotes;
};

Names getKeys(lua_State* state, int table) {
    Names keys;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1))
        if (lua_type(state, -2) == LUA_TSTRING)
            keys.insert(lua_tostring(state, -2));
    return keys;
}

Names getStandardGlobals() {
    lua_State* const state = luaL_newstate();
    luaL_openlibs(state);
    const Names names = getKeys(state, LUA_GLOBALSINDEX);
    lua_close(state);
    return names;
}

class KyHostDescriptionTest : public KyHostSession<QCoreApplication> {
protected:
    KyHostDescriptionTest() {
        mScripts.run();
        for (const auto& [name, text] : KyScriptStubs::make(KyScriptCatalogue::make(KyScriptEngine::get())))
            mDeclared.read(text);
    }
    ~KyHostDescriptionTest() override { KyScriptEngine::get().closeLuaState(); }

    static lua_State* getState() { return KyScriptEngine::get().editLuaState(); }

    void expectDeclared(const std::string& owner, const std::string& name) const {
        EXPECT_TRUE(mDeclared.has(owner, name)) << owner << " has no " << name;
    }

    /// The keys of every table of the registry that has that entry.
    static Names findMembers(const char* entry) {
        lua_State* const state = getState();
        Names all;
        for (lua_pushnil(state); lua_next(state, LUA_REGISTRYINDEX) != 0; lua_pop(state, 1)) {
            if (!lua_istable(state, -1))
                continue;
            const int table = lua_gettop(state);
            lua_pushstring(state, entry);
            lua_rawget(state, table);
            if (!lua_isnil(state, -1))
                all.merge(getKeys(state, table));
            lua_settop(state, table);
        }
        return all;
    }

    QTemporaryDir mFolder;
    KyHostOptions mOptions;
    KyHostErrors mErrors{false};
    KyHostSettings mSettings{mFolder.filePath("settings.xml")};
    KyHostScripts mScripts{mOptions, mErrors, mHost, mStage, mSettings};
    Declarations mDeclared;
};

} // namespace

TEST_F(KyHostDescriptionTest, EveryGlobalIsDeclared) {
    const Names standard = getStandardGlobals();
    Names globals = getKeys(getState(), LUA_GLOBALSINDEX);
    std::erase_if(globals, [&](const std::string& name) { return standard.contains(name); });
    EXPECT_LT(200u, globals.size());
    for (const std::string& name : globals)
        expectDeclared({}, name);
}

TEST_F(KyHostDescriptionTest, EveryMemberOfEveryBoundClassIsDeclared) {
    lua_State* const state = getState();
    constexpr const char* cProbe = "kyHostDescriptionTestProbe";
    unsigned nbClasses = 0;
    for (const std::string& name : getKeys(state, LUA_GLOBALSINDEX)) {
        lua_getglobal(state, name.c_str());
        // A class of values takes an entry into its own tables, where the others that it has are found by it.
        const bool isClass = lua_type(state, -1) == LUA_TUSERDATA && mDeclared.hasClass(name);
        if (isClass) {
            ++nbClasses;
            lua_pushboolean(state, 1);
            lua_setfield(state, -2, cProbe);
            for (const std::string& member : findMembers(cProbe))
                if (member != cProbe && member != "__init")
                    expectDeclared(name, member);
            lua_pushnil(state);
            lua_setfield(state, -2, cProbe);
        }
        lua_pop(state, 1);
    }
    EXPECT_LT(70u, nbClasses);
}

TEST_F(KyHostDescriptionTest, ConstantsOfBoundClassesAreDeclaredWithTheirValues) {
    const std::pair<const char*, const char*> constants[] = {
        {"Boxf", "eZ"}, {"Color", "eOrange"}, {"Easing", "CubicInOut"}, {"QDir", "NoDot"}, {"URL", "eResource"}};
    for (const auto& [owner, name] : constants)
        expectDeclared(owner, name);
    unsigned nbConstants = 0;
    for (const KyScriptClass& scriptClass : KyScriptCatalogue::make(KyScriptEngine::get()).classes)
        for (const KyScriptConstant& constant : scriptClass.constants) {
            ++nbConstants;
            std::vector<KyField> results;
            const std::string text = scriptClass.name + "['" + constant.name + "']";
            EXPECT_TRUE(KyScriptEngine::get().executeChunktWithReturnValues("return " + text, results)) << text;
            EXPECT_EQ(KyField(double(constant.value)), results.empty() ? KyField() : results[0]) << text;
        }
    EXPECT_LT(150u, nbConstants);
}

TEST_F(KyHostDescriptionTest, EverythingOfEveryTypeIsDeclared) {
    lua_State* const state = getState();
    unsigned nbAttributes = 0;
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i) {
        const KyType& type = *KyType::getType(i);
        const std::string& name = type.getName();
        EXPECT_TRUE(mDeclared.hasClass(name)) << name;
        nbAttributes += type.getNbAttributes();
        for (unsigned j = 0; j < type.getNbAttributes(); ++j)
            expectDeclared(name, type.getAttribute(j)->getName());
        for (const KyComponent& component : type.getComponents())
            expectDeclared(name, component.name);
        for (const KySignalEntry& entry : type.getSignals())
            expectDeclared(name, entry.name);
        lua_getglobal(state, name.c_str());
        ASSERT_TRUE(lua_istable(state, -1)) << name;
        for (const std::string& member : getKeys(state, lua_gettop(state)))
            if (!member.starts_with("__"))
                expectDeclared(name, member);
        lua_pop(state, 1);
    }
    EXPECT_LT(300u, nbAttributes);
}

TEST_F(KyHostDescriptionTest, WhatMayBeNilAndWhatIsJoinedAndWhatANameGivesIsTold) {
    std::string all;
    for (const auto& [name, text] : KyScriptStubs::make(KyScriptCatalogue::make(KyScriptEngine::get())))
        all += text;
    for (const char* line :
         {"---@field Parent KyNode? (read-only)\n", "---@field MainPass KyBaseGraphicsPass?\n",
          "---@field PickedNode Ky2DNode? (read-only)\n", "---@field Children Container.KyNode\n",
          "---@generic T : KyObject\n---@param typeName `T`\n---@return T?\nfunction createKyObject(typeName) end\n"})
        EXPECT_NE(std::string::npos, all.find(line)) << line;

    const KyScriptCatalogue catalogue = KyScriptCatalogue::make(KyScriptEngine::get());
    for (const auto& [name, value] : {std::pair("Vec3d", "Vec3d(1, 2, 3)"), std::pair("Timer", "Timer()")}) {
        const KyScriptClass* const described = catalogue.findClass(name);
        ASSERT_NE(nullptr, described) << name;
        const auto isJoined = std::ranges::count(described->operators, "__concat", &KyScriptOperator::name) == 1;
        EXPECT_EQ(isJoined, KyScriptEngine::get().executeChunk(std::string("return 'a' .. ") + value + " .. 1"))
            << name;
    }
}

TEST_F(KyHostDescriptionTest, EveryRegistrationNamesItsParametersAndNoOthers) {
    EXPECT_EQ(std::vector<std::string>(), KyScriptCatalogue::make(KyScriptEngine::get()).unnamed);
}

TEST_F(KyHostDescriptionTest, NamesComeFromTheRegistrationAndShorterOverloadsMakeParametersOptional) {
    std::string all;
    for (const auto& [name, text] : KyScriptStubs::make(KyScriptCatalogue::make(KyScriptEngine::get())))
        all += text;
    for (const char* lines :
         {"---@param radius number\n---@param segments? integer\nfunction KyMeshNode:makeSphere(radius, segments) "
          "end\n",
          "---@overload fun(self: KyMeshNode, html: string)\n", "fun(x: number, y: number, z: number): Vec3d\n",
          "fun(red: number, green: number, blue: number, alpha?: number): Color\n",
          "---@param frame Matrixd\nfunction KyNode:setWorldFrame(frame) end\n", "fun(other?: Vec3d): Vec3d\n",
          "---@param from string|URL\n---@param to string|URL\n---@return boolean\nfunction Resource.copyFile(from, "
          "to) ",
          "fun(text: string|QString, parent?: QWidget): QLabel\n",
          "---@return Vec3d?\nfunction KyGraphicsView:pickPoint(x, y) end\n", "---Signals: `drawn(window: KyWindow?)",
          "---@param filter? string|QString\n---@param flags? integer\n---@param sort? integer\n",
          "---Of 32 bits, with a sign.\n---@param a integer\n---@param b integer\n---@return integer\n",
          "---@param get function\n---@param set? function\n", "---@param ... any\nfunction super(...) end\n",
          "---@class Global.view: KyGraphicsViewMultiPass\n---@field MainPass KyScenePass\n"})
        EXPECT_NE(std::string::npos, all.find(lines)) << lines;
}

TEST_F(KyHostDescriptionTest, WhatIsNotNamedOrNamedWronglyIsListed) {
    KyScriptEngine& engine = KyScriptEngine::get();
    for (const char* name : {"probe0", "probe1", "probe2", "probe3", "probe4"})
        engine.bindFunction(name, kyMakeFunction(name, [](double a, double b) { return a + b; }).release());
    KyCallSignatures::add({}, {"probe1(a, b)", "probe2(a)", "probe3(a, b?)", "probe4(a, end)"});
    const std::vector<std::string> unnamed = {
        "probe0(number1: number, number2: number)",
        "probe2(number1: number, number2: number)",
        "probe2(a) fits no call",
        "probe3(a, b?) fits no call",
        "probe4(a: number, end: number) has a name that is none",
    };
    EXPECT_EQ(unnamed, KyScriptCatalogue::make(engine).unnamed);
}

TEST_F(KyHostDescriptionTest, DocumentationThatIsLoadedStandsInTheAnnotations) {
    std::ofstream(mFolder.filePath("index.xml").toStdString())
        << "<doxygenindex><compound refid='classKyCamera' kind='class'><name>KyCamera</name></compound></doxygenindex>";
    std::ofstream(mFolder.filePath("classKyCamera.xml").toStdString())
        << "<doxygen><compounddef kind='class'><compoundname>KyCamera</compoundname><briefdescription><para>Sees."
           "</para></briefdescription><sectiondef><memberdef kind='function' prot='public'><type>void</type><name>"
           "frame</name><argsstring>()</argsstring><briefdescription><para>Turns.</para></briefdescription>"
           "</memberdef></sectiondef></compounddef></doxygen>";
    ASSERT_TRUE(KyDoxygenXmlDocMgr::get().load(mFolder.path().toStdString()));
    const KyScriptCatalogue catalogue = KyScriptCatalogue::make(KyScriptEngine::get());
    KyDoxygenXmlDocMgr::get().clear();
    const KyScriptClass* const camera = catalogue.findClass("KyCamera");
    ASSERT_NE(nullptr, camera);
    EXPECT_EQ("Sees.", camera->text);
    const auto frame = std::ranges::find(camera->functions, "frame", &KyScriptFunction::name);
    ASSERT_NE(camera->functions.end(), frame);
    EXPECT_EQ("Turns.", frame->text);
}
