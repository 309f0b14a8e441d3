// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDoxygenFixture.h"

#include "KyDoxygenXmlDocMgr.h"
#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include "KyTypeBuilder.h"

#include <tuple>

namespace {

/// Type records of a lamp that is a node, with nothing behind them.
class Node : public KyObject {
public:
    static inline const KyType* msType = nullptr;
};
class Lamp : public Node {
public:
    static inline const KyType* msType = nullptr;
};

class KyDoxygenXmlDocMgrTest : public KyDoxygenFixture {
protected:
    void SetUp() override {
        KyDoxygenFixture::SetUp();
        KyDoxygenXmlDocMgr::initializeClass();
        Node::msType = KyTypeBuilder<Node>("KyDocNode", KyObject::getType()).build();
        Lamp::msType = KyTypeBuilder<Lamp>("KyDocLamp", Node::msType).build();
        writeIndex({"KyDocLamp", "KyDocNode", "KyDocAlone"});
        writeClass("KyDocLamp", "<briefdescription><para>Gives light.</para></briefdescription>"
                                "<detaileddescription><para>Long text.</para></detaileddescription>" +
                                    function("void", "blink", "()", "Once.") +
                                    function("void", "blink", "(int count)", "Often.") +
                                    function("double", "getPower", "() const", "Watts.") +
                                    function("void", "move", "(float)", "The lamp's."));
        writeClass("KyDocNode", function("void", "move", "(double)", "The node's.") +
                                    function("bool", "isVisible", "() const", "Whether it is shown.") +
                                    function("void", "Power", "()", "Not the lamp's."));
        writeClass("KyDocAlone", function("", "KyDocAlone", "()", ""));
    }
    void TearDown() override {
        KyType::remove(Lamp::msType);
        KyType::remove(Node::msType);
        KyDoxygenXmlDocMgr::finalizeClass();
        KyDoxygenFixture::TearDown();
    }

    static KyDoxygenXmlDocMgr& manager() { return KyDoxygenXmlDocMgr::get(); }
};

TEST_F(KyDoxygenXmlDocMgrTest, ClassesAndMembersHereAndAboveAreFound) {
    EXPECT_EQ(manager().findClass("KyDocLamp"), nullptr);
    ASSERT_TRUE(manager().load(folder())) << msReports.back();
    EXPECT_EQ(manager().getClassText("KyDocLamp"), "KyDocLamp\nGives light.\nLong text.");
    using Names = std::vector<std::string>;
    EXPECT_EQ(manager().getCompletions("KyDocLamp", ""), (Names{"Power", "blink", "getPower", "isVisible", "move"}));
    EXPECT_EQ(manager().getCompletions("KyDocLamp", "b"), Names{"blink"});
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"KyDocLamp", "blink", "void blink()\nOnce.\nvoid blink(int count)\nOften."},
        {"KyDocLamp", "move", "void move(float)\nThe lamp's."},
        {"KyDocLamp", "Visible", "bool isVisible() const\nWhether it is shown."},
        {"KyDocLamp", "Power", "void Power()\nNot the lamp's."},
        {"KyDocNode", "blink", ""},
        {"KyDocAlone", "KyDocAlone", "KyDocAlone()"},
        {"KyDocNone", "move", ""},
    };
    for (const auto& [type, member, text] : cases)
        EXPECT_EQ(manager().getMemberText(type, member), text) << type << " " << member;
}

TEST_F(KyDoxygenXmlDocMgrTest, LoadingAgainReplacesAndAFailureAddsNothing) {
    ASSERT_TRUE(manager().load(folder()));
    writeIndex({"KyDocAlone"});
    writeClass("KyDocAlone", "<briefdescription><para>New.</para></briefdescription>");
    ASSERT_TRUE(manager().load(folder()));
    EXPECT_EQ(manager().getNbClasses(), 3u);
    EXPECT_EQ(manager().getClassText("KyDocAlone"), "KyDocAlone\nNew.");
    writeIndex({"KyDocAlone", "KyDocBroken"});
    writeClass("KyDocAlone", "");
    writeClass("KyDocBroken", "<briefdescription>");
    EXPECT_FALSE(manager().load(folder()));
    EXPECT_EQ(msReports.size(), 1u);
    EXPECT_EQ(manager().getNbClasses(), 3u);
    EXPECT_EQ(manager().getClassText("KyDocAlone"), "KyDocAlone\nNew.");
}

TEST_F(KyDoxygenXmlDocMgrTest, ScriptsReadIt) {
    KyScriptEngine::initializeClass();
    KyLuaBinder::initializeClass();
    std::vector<KyField> results;
    KyScriptEngine::get().executeChunktWithReturnValues(
        "bindClass('KyDoxygenXmlDocMgr') local manager = KyDoxygenXmlDocMgr.get() manager:load('" + folder() +
            "') return manager:getMemberText('KyDocLamp', 'move'), manager:getCompletions('KyDocLamp', 'is')[1]",
        results);
    EXPECT_EQ(results, (std::vector<KyField>{"void move(float)\nThe lamp's.", "isVisible"}));
    KyScriptEngine::finalizeClass();
    KyLuaBinder::finalizeClass();
}

} // namespace
