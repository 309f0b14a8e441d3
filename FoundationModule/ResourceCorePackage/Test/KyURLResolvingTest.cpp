// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURL.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* url;
    const char* base;
    const char* expected;
};

} // namespace

TEST(KyURLResolvingTest, ReferencesAreResolvedByTheStandardsTableAndOnOtherBases) {
    constexpr const char* cBase = "http://a/b/c/d;p?q";
    constexpr Case cCases[] = {
        {"g:h", cBase, "http://a/b/c/g%3Ah"}, // one letter is a drive and no scheme
        {"gg:h", cBase, "gg:h"},
        {"/g", cBase, "http://a/g"},
        {"//g", cBase, "http://g"},
        {"", cBase, "http://a/b/c/d;p?q"},
        {"../..", cBase, "http://a/"},
        {"../../../g", cBase, "http://a/g"},
        {"/../g", cBase, "http://a/g"},
        {"..g", cBase, "http://a/b/c/..g"},
        {"g;x=1/../y", cBase, "http://a/b/c/y"},
        {"g?y/../x", cBase, "http://a/b/c/g?y/../x"},
        {"%2e%2e/g", cBase, "http://a/b/g"},
        {"g", "file:///C:/dir/", "file:///C:/dir/g"},
        {"file:g", "file:///dir/x", "file:///dir/g"},
        {"file:g", "http://a/", "file:g"},
        {"g", "qrc:/scripts/main.lua", "qrc:/scripts/g"},
        {"../g", "a/b/c", "a/g"},
        {"../../../g", "a/b/c", "../g"},
    };
    for (const auto& [reference, base, expected] : cCases) {
        KyURL url(reference);
        url.setAbsoluteURL(KyURL(base));
        EXPECT_EQ(url.toString(), expected) << reference << " on " << base;
        EXPECT_EQ(KyURL(reference).getAbsoluteURL(KyURL(base)), url) << reference;
    }
}

TEST(KyURLResolvingTest, RelativeReferencesLeadBack) {
    constexpr Case cCases[] = {
        {"http://h/a/b/c", "http://h/a/b/x", "c"},
        {"http://h/a/b/c?q#f", "http://h/a/b/", "c?q#f"},
        {"file:///C:/a", "file:///D:/a", "file:///C:/a"},
        {"http://h/a", "http://h:81/a", "http://h/a"},
        {"http://h/a/", "http://h/a/x", "./"},
        {"http://h/a//b", "http://h/a/x", ".//b"},
        {"http://h/a/b:c", "http://h/a/x", "./b:c"},
        {"file:///C:/a/b", "file:///C:/x/y", "../a/b"},
    };
    for (const auto& [target, base, expected] : cCases) {
        const KyURL relative = KyURL(target).getRelativeURL(KyURL(base));
        EXPECT_EQ(relative.toString(), expected) << target << " from " << base;
        EXPECT_EQ(relative.getAbsoluteURL(KyURL(base)).toString(), target);
    }
}

TEST(KyURLResolvingTest, CanonicalPathsHoldNoDots) {
    constexpr std::pair<const char*, const char*> cCases[] = {
        {"/a/./b/../c", "/a/c"}, {"/../../a", "/a"},    {"/a/b/.", "/a/b/"}, {"../a/../b", "../b"},
        {"a/..", "./"},          {"a//b/../c", "a//c"}, {"/", "/"},          {"..", "../"},
        {"/a/...", "/a/..."},    {"./b:c", "b%3Ac"},    {"a/..//b", ".//b"},
    };
    for (const auto& [path, expected] : cCases) {
        KyURL url(path);
        url.setCanonicalPath();
        EXPECT_EQ(url.getPath(), expected) << path;
    }
}
