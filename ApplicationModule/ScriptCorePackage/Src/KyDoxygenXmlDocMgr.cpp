// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDoxygenXmlDocMgr.h"

#include "KyDoxygenXmlDocReader.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyTypeBuilder.h"

#include <array>
#include <set>
#include <utility>

KyDoxygenXmlDocMgr* KyDoxygenXmlDocMgr::msInstance = nullptr;
const KyType* KyDoxygenXmlDocMgr::msType = nullptr;
bool KyDoxygenXmlDocMgr::msIsClassInitialized = false;

namespace {

/// The name itself, then an attribute's accessors.
constexpr std::array<std::string_view, 4> cPrefixes{"", "get", "is", "set"};

std::string signatureOf(const KyDoxygenMember& member) {
    return (member.type.empty() ? std::string() : member.type + " ") + member.name + member.arguments;
}

void addLine(std::string& text, const std::string& line) {
    if (line.empty())
        return;
    if (!text.empty())
        text += '\n';
    text += line;
}

} // namespace

KyDoxygenXmlDocMgr::KyDoxygenXmlDocMgr() = default;

KyDoxygenXmlDocMgr::~KyDoxygenXmlDocMgr() {
    // A script may end the manager.
    if (msInstance == this)
        msInstance = nullptr;
    notifyEnd();
}

KyDoxygenXmlDocMgr& KyDoxygenXmlDocMgr::get() {
    return *msInstance;
}

void KyDoxygenXmlDocMgr::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
    staticInitialize();
}

void KyDoxygenXmlDocMgr::finalizeClass() {
    if (!msIsClassInitialized)
        return;
    msIsClassInitialized = false;
    staticFinalize();
    finalizeType();
}

void KyDoxygenXmlDocMgr::staticInitialize() {
    if (!msInstance)
        msInstance = new KyDoxygenXmlDocMgr;
}

void KyDoxygenXmlDocMgr::staticFinalize() {
    if (msInstance)
        msInstance->destroy();
}

void KyDoxygenXmlDocMgr::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyDoxygenXmlDocMgr>("KyDoxygenXmlDocMgr", KyObject::getType())
                 .method("load", &KyDoxygenXmlDocMgr::load)
                 .method("clear", &KyDoxygenXmlDocMgr::clear)
                 .method("getNbClasses", &KyDoxygenXmlDocMgr::getNbClasses)
                 .method("getClassText", &KyDoxygenXmlDocMgr::getClassText)
                 .method("getMemberText", &KyDoxygenXmlDocMgr::getMemberText)
                 .method("getCompletions", &KyDoxygenXmlDocMgr::getCompletions)
                 .staticMethod("get", &KyDoxygenXmlDocMgr::find)
                 .build();
    KyCallSignatures::add("KyDoxygenXmlDocMgr",
                          {"load(directory)", "getClassText(typeName)", "getMemberText(typeName, memberName)",
                           "getCompletions(typeName, beginning)"});
}

void KyDoxygenXmlDocMgr::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyDoxygenXmlDocMgr::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyDoxygenXmlDocMgr* KyDoxygenXmlDocMgr::cast(KyObject* object) {
    return kyCast<KyDoxygenXmlDocMgr>(object);
}

const KyType* KyDoxygenXmlDocMgr::getObjectType() const {
    return getType();
}

bool KyDoxygenXmlDocMgr::load(const std::string& directory) {
    KyDoxygenXmlDocReader reader;
    if (!reader.readDirectory(directory))
        return false;
    for (KyDoxygenClass& record : reader.takeClasses()) {
        std::string name = record.name;
        mClasses.insert_or_assign(std::move(name), std::move(record));
    }
    return true;
}

void KyDoxygenXmlDocMgr::clear() {
    mClasses.clear();
}

const KyDoxygenClass* KyDoxygenXmlDocMgr::findClass(std::string_view typeName) const {
    const auto place = mClasses.find(typeName);
    return place == mClasses.end() ? nullptr : &place->second;
}

/// Of the type and its parents those that are documented, the type first.
std::vector<const KyDoxygenClass*> KyDoxygenXmlDocMgr::getLineage(std::string_view typeName) const {
    std::vector<const KyDoxygenClass*> lineage{findClass(typeName)};
    const KyType* type = KyType::getType(typeName);
    for (const KyType* parent = type ? type->getParent() : nullptr; parent; parent = parent->getParent())
        lineage.push_back(findClass(parent->getName()));
    std::erase(lineage, nullptr);
    return lineage;
}

std::vector<const KyDoxygenMember*> KyDoxygenXmlDocMgr::findMembers(std::string_view typeName,
                                                                    std::string_view memberName) const {
    const auto lineage = getLineage(typeName);
    std::vector<const KyDoxygenMember*> found;
    for (const std::string_view prefix : cPrefixes) {
        const std::string name = std::string(prefix) + std::string(memberName);
        for (const KyDoxygenClass* record : lineage) {
            for (const KyDoxygenMember& member : record->members)
                if (!name.empty() && member.name == name)
                    found.push_back(&member);
            if (!found.empty())
                return found;
        }
    }
    return found;
}

std::string KyDoxygenXmlDocMgr::getClassText(const std::string& typeName) const {
    const KyDoxygenClass* record = findClass(typeName);
    if (!record)
        return {};
    std::string text = record->name;
    addLine(text, record->brief);
    addLine(text, record->detailed);
    return text;
}

std::string KyDoxygenXmlDocMgr::getMemberText(const std::string& typeName, const std::string& memberName) const {
    std::string text;
    for (const KyDoxygenMember* member : findMembers(typeName, memberName)) {
        addLine(text, signatureOf(*member));
        addLine(text, member->brief);
    }
    return text;
}

std::vector<std::string> KyDoxygenXmlDocMgr::getCompletions(const std::string& typeName,
                                                            const std::string& beginning) const {
    std::set<std::string> names;
    for (const KyDoxygenClass* record : getLineage(typeName))
        for (const KyDoxygenMember& member : record->members)
            if (!member.name.empty() && member.name.starts_with(beginning))
                names.insert(member.name);
    return {names.begin(), names.end()};
}
