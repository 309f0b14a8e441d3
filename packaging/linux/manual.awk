# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# awk -v version=V -v share=FOLDER -v lib=FOLDER -f manual.awk HELP TEMPLATE: fills the manual page's template from the
# text of --help, so that both tell the same. In that text two spaces begin an entry, ten or more go on with it, a line that
# ends in ":" is a heading, and all else is prose.

function escape(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    return text ~ /^[.']/ ? "\\&" text : text
}

# "-h, --help" and "--size WxH": what is typed is bold, what it stands for is not.
function markUsage(usage,    words, n, i, marked) {
    if (usage !~ /^-/)
        return "\\fB" escape(usage) "\\fR"
    n = split(usage, words, " ")
    for (i = 1; i <= n; i++) {
        if (words[i] ~ /,$/)
            words[i] = "\\fB" escape(substr(words[i], 1, length(words[i]) - 1)) "\\fR,"
        else
            words[i] = (words[i] ~ /^-/ ? "\\fB" : "\\fI") escape(words[i]) "\\fR"
        marked = marked (i > 1 ? " " : "") words[i]
    }
    return marked
}

# Where the usage ends; one too long for its column has one space behind it and its argument in capitals.
function findGap(text) {
    if (match(text, /   */))
        return RSTART
    return match(text, / [a-z]/) ? RSTART : length(text) + 1
}

function addEntry(text,    gap) {
    gap = findGap(text)
    add(".TP\n" markUsage(substr(text, 1, gap - 1)))
    sub(/^ +/, "", text)
    text = substr(text, gap)
    sub(/^ +/, "", text)
    add(escape(text))
}

function add(text) {
    parts[part] = parts[part] text "\n"
}

# Prose behind entries is no part of the last one.
function addProse(text) {
    if (isBehindGap && parts[part] != "")
        add(".PP")
    isBehindGap = 0
    add(escape(text))
}

FNR == NR && FNR == 1 {
    program = $2
    arguments = $0
    sub(/^usage: [^ ]+ */, "", arguments)
    parts["SYNOPSIS"] = ".B " program "\n" escape(arguments) "\n"
    part = "DESCRIPTION"
    next
}
FNR == NR && /^$/ {
    isBehindGap = 1
    next
}
FNR == NR && /^          / {
    sub(/^ +/, "")
    add(escape($0))
    next
}
FNR == NR && /^  [^ ]/ {
    if (part == "DESCRIPTION")
        part = "OPTIONS"
    addEntry(substr($0, 3))
    isBehindGap = 1
    next
}
FNR == NR {
    if (part == "OPTIONS")
        part = "NOTES"
    if (/:$/)
        add(".SS " escape(substr($0, 1, length($0) - 1)))
    else
        addProse($0)
    next
}

/^@[A-Z]+@$/ {
    printf "%s", parts[substr($0, 2, length($0) - 2)]
    next
}
{
    gsub(/@VERSION@/, version)
    gsub(/@SHARE@/, share)
    gsub(/@LIB@/, lib)
    print
}
