# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# awk -v folder=FOLDER -f blocks.awk DOCUMENT.md... takes the code out of the documents, to be compiled and run. What is
# done with a block stands in a comment on the line before it:
#
#   cpp    <!-- file: Wheel.cpp -->                  a whole file of that name
#          <!-- in: void show(KyNode* node) -->      the inside of that function
#          <!-- declarations -->                     what stands outside of functions
#   lua    <!-- run: --offscreen; local a = 1 -->    run by kyhost with these options, after these words of Lua
#          <!-- continues -->                        run behind the block before it
#          nothing                                   run by kyhost --no-window
#          ... --> text                              in a line: what is printed, spaces for tabs
#   qml    nothing                                   loaded by the test program
#   sh     nothing                                   programs, options and files are looked for
#   cmake  nothing                                   configured
#   all    <!-- not checked: reason -->
#
# FOLDER gets the files, fragments.cpp with all that is no whole file, and blocks.txt, a line for each block: language,
# document, file and options, with tabs between.

function stop(text) {
    print FILENAME ":" FNR ": " text > "/dev/stderr"
    hasFailed = 1
    exit 1
}

function nameIt(extension) {
    return document "-" FNR "." extension
}

function note(options) {
    print language "\t" document "\t" file "\t" options > (folder "/blocks.txt")
}

function splitMark(text) {
    kind = text
    rest = ""
    if (match(text, /^[a-z ]+: */)) {
        kind = substr(text, 1, RLENGTH)
        sub(/: *$/, "", kind)
        rest = substr(text, RLENGTH + 1)
    }
}

function beginLua(options, prelude) {
    if (kind == "continues") {
        if (luaFile == "")
            stop("there is no block before it")
        prelude = luaText
        options = luaOptions
    } else if (kind == "run") {
        options = rest
        if (match(rest, /; */)) {
            options = substr(rest, 1, RSTART - 1)
            prelude = substr(rest, RSTART + RLENGTH) "\n"
        }
    } else if (kind == "") {
        options = "--no-window"
    } else {
        stop("lua: what is \"" kind "\"?")
    }
    file = luaFile = nameIt("lua")
    luaOptions = options
    body = prelude
    # Messages then have the lines of the document.
    for (lines = gsub(/\n/, "\n", prelude); lines < FNR; ++lines)
        body = body "\n"
    note(options)
}

function beginCpp() {
    if (kind == "file" && rest ~ /^[A-Za-z]+\.(h|cpp)$/) {
        file = rest
        note("")
    } else if (kind == "in" && rest ~ /\(.*\)$/) {
        body = "\n" rest " {\n"
    } else if (kind != "declarations") {
        stop("cpp: say \"file: ...\", \"in: ...\" or \"declarations\"")
    }
    if (file == "")
        body = body "#line " FNR + 1 " \"" FILENAME "\"\n"
}

function beginBlock() {
    file = body = ""
    splitMark(mark)
    isSkipped = kind == "not checked"
    if (isSkipped && rest == "")
        stop("not checked: why?")
    if (isSkipped || language == "")
        return
    if (language == "lua") {
        beginLua()
    } else if (language == "cpp") {
        beginCpp()
    } else if (language ~ /^(qml|sh|cmake)$/ && kind == "") {
        file = nameIt(language)
        note("")
    } else {
        stop("a block of \"" language "\", marked \"" kind "\": nobody checks that")
    }
}

function endBlock() {
    if (language == "" || isSkipped)
        return
    if (file != "") {
        printf "%s", body > (folder "/" file)
        close(folder "/" file)
    } else {
        fragments = fragments body (kind == "in" ? "}\n" : "")
    }
    if (language == "lua")
        luaText = body
}

FNR == 1 {
    document = FILENAME
    sub(/^.*\//, "", document)
    sub(/\.md$/, "", document)
    mark = luaFile = ""
    isInside = isMark = 0
}

isInside && /^```$/ {
    isInside = 0
    endBlock()
    next
}

isInside {
    # Those of fragments stand in front of all of them; the empty line keeps the numbers of the others.
    isHoisted = language == "cpp" && file == "" && /^#include/
    if (isHoisted)
        includes = includes $0 "\n"
    body = body (isHoisted ? "" : $0) "\n"
    next
}

/^```/ {
    language = substr($0, 4)
    isInside = 1
    beginBlock()
    mark = ""
    next
}

/^ +```/ {
    stop("a block that does not begin at the margin is not checked")
}

isMark || /^<!-- / {
    mark = isMark ? mark " " $0 : $0
    isMark = $0 !~ /-->$/
    if (!isMark) {
        sub(/^<!-- /, "", mark)
        sub(/ *-->$/, "", mark)
    }
    next
}

{ mark = "" }

END {
    if (hasFailed)
        exit 1
    print "#include \"Fragments.h\"\n\n" includes fragments > (folder "/fragments.cpp")
}
