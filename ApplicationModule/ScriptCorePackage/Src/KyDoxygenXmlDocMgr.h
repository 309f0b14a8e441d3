// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyDoxygenClass.h"

#include "KyObject.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Documentation of the classes that scripts see, by the names of type and member: what completion lists and tool tips
/// show. Members of the types above are found through their type records.
///
/// Made by initializeClass and reached by get(). An attribute is found under its own name or that of its accessors
/// ("Power" under getPower, isPower or setPower). Texts are plain UTF-8: to be escaped where rich text is shown. One
/// thread.
///
/// ```
/// KyDoxygenXmlDocMgr& documentation = KyDoxygenXmlDocMgr::get();
/// documentation.load("doc/xml");
/// widget.setToolTip(toQString(documentation.getMemberText("KyLamp", "blink")));
/// ```
class KYAPPLICATION_EXPORT KyDoxygenXmlDocMgr : public KyObject {
public:
    KyDoxygenXmlDocMgr();
    KyDoxygenXmlDocMgr(const KyDoxygenXmlDocMgr&) = delete;
    KyDoxygenXmlDocMgr& operator=(const KyDoxygenXmlDocMgr&) = delete;
    ~KyDoxygenXmlDocMgr() override;

    /// The manager made by initializeClass, which must have been called.
    static KyDoxygenXmlDocMgr& get();
    /// As get(), null when there is none.
    static KyDoxygenXmlDocMgr* find() { return msInstance; }

    static const KyType* getType();
    static KyDoxygenXmlDocMgr* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    static void initializeClass();
    static void finalizeClass();
    const KyType* getObjectType() const override;

    /// Adds a directory's classes, in place of those of the same names. False, reported and nothing added, when
    /// anything of it cannot be read. See KyDoxygenXmlDocReader.
    bool load(const std::string& directory);
    /// Forgets all classes.
    void clear();

    /// Classes that were read.
    unsigned getNbClasses() const { return static_cast<unsigned>(mClasses.size()); }
    /// Valid until the next load or clear; null when the type is not documented.
    const KyDoxygenClass* findClass(std::string_view typeName) const;
    /// The member's overloads, from the nearest of the type and its parents that documents it; an attribute's accessor
    /// when nothing has the name itself. Valid as above.
    std::vector<const KyDoxygenMember*> findMembers(std::string_view typeName, std::string_view memberName) const;

    /// "KyLamp", then the brief and the detailed text, each on lines of its own; empty when not documented.
    std::string getClassText(const std::string& typeName) const;
    /// For each overload "double getPower() const", then its brief text; empty when not documented.
    std::string getMemberText(const std::string& typeName, const std::string& memberName) const;
    /// Names of the documented members, inherited ones too, that begin with the text, in the order of the alphabet.
    std::vector<std::string> getCompletions(const std::string& typeName, const std::string& beginning) const;

private:
    static void staticInitialize();
    static void staticFinalize();

    std::vector<const KyDoxygenClass*> getLineage(std::string_view typeName) const;

    std::map<std::string, KyDoxygenClass, std::less<>> mClasses;

    static KyDoxygenXmlDocMgr* msInstance;
    static const KyType* msType;
    static bool msIsClassInitialized;
};
