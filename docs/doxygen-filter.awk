# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# Doxygen's input filter for the house style: one comment speaks for the accessors of one thing (getX, setX, editX,
# isX) and for the overloads of one name that follow it without an empty line between. The comment is repeated in front
# of each, on the same line, so that the line numbers of warnings stay those of the header. What the compiler writes
# or refuses (= default, = delete) and nobody commented is left out.

# What every class of the type system has; the texts say it once for all of them.
BEGIN {
    common["getType"] = "The class's type record."
    common["cast"] = "The object as this class; null for null and for an object of another class."
    common["factory"] = "A new object, for the type record; the caller holds the only reference."
    common["create"] = "A new object; nobody refers to it yet."
    common["get"] = "The one instance."
    common["initializeType"] = "Registers the type record. The library's start calls it, after that of the base class."
    common["finalizeType"] = "Withdraws the type record. The library's end calls it."
    common["initializeClass"] = "As initializeType, and what else the class needs once. The library's start calls it."
    common["finalizeClass"] = "Ends what initializeClass began. The library's end calls it."
    common["finalizeSingleton"] = "Ends the one instance. The library's end calls it."
    common["operator<<"] = "Writes the text that toString returns."
    qtNames = "^([a-zA-Z]*[eE]vent|eventFilter|paintGL|initializeGL|resizeGL|paint|boundingRect|sizeHint|minimumSizeHint" \
        "|rowCount|columnCount|flags|data|setData|index|parent|headerData|hasChildren|fetchMore|canFetchMore|roleNames" \
        "|removeRows|createEditor|setEditorData|setModelData|updateEditorGeometry|drawBackground|accept|reject)$"
}

function nameOf(line) {
    if (!match(line, /[A-Za-z_~][A-Za-z_0-9]* *\(/))
        return ""
    return substr(line, RSTART, RLENGTH - 1)
}

function isQt(line) {
    return line ~ /override|,$/ && nameOf(line) ~ qtNames
}

function stem(line, name) {
    if (line ~ /operator/)
        return "operator"
    if (!match(line, /[A-Za-z_~][A-Za-z_0-9]* *\(/))
        return ""
    name = substr(line, RSTART, RLENGTH - 1)
    sub(/ +$/, "", name)
    sub(/^(get|set|edit|is|has)/, "", name)
    return tolower(name)
}

function follow(line, i, character, code) {
    # Qt's macros stand without a semicolon.
    if (line ~ /^ *Q_[A-Z_]+(\(.*\))?$/)
        return
    code = line
    gsub(/\\"/, "", code)
    gsub(/"[^"]*"/, "", code)
    sub(/\/\/.*/, "", code)
    gsub(/'[^']*'/, "", code)
    for (i = 1; i <= length(code); ++i) {
        character = substr(code, i, 1)
        if (character == "{") {
            if (statement ~ /(^|[ >])(class|struct) / && depth == 0)
                split("", told)
            isScope[++depth] = statement ~ /(^|[ >])(class|struct|union|namespace) / && statement !~ /(^| )enum |\(/
            statement = isScope[depth] ? "" : statement
        } else if (character == "}") {
            if (!isScope[depth--] && inScope())
                statement = ""
        } else if (character == ";" && inScope()) {
            statement = ""
        } else if (inScope()) {
            statement = statement character
        }
    }
    if (statement !~ /[^ ]/)
        statement = ""
}

function inScope() { return depth == 0 || isScope[depth] }

function isBegin() { return inScope() && statement == "" }

function flush() {
    if (held != "")
        print held
    held = ""
}

/^ *\/\/\/ @([{}]|cond|endcond)$/ {
    isGroup = /\{$/
    isComment = isFresh = 0
    text = ""
    print
    next
}

!isBegin() && /^ *\/\/\// {
    print
    next
}

/^ *\/\/\/[^<]/ || /^ *\/\/\/$/ {
    if (!isComment)
        text = ""
    isComment = isFresh = 1
    line = $0
    sub(/^ *\/\/\/ ?/, "", line)
    text = text " " line
    print
    next
}

{ isComment = 0 }

/^ *$/ || /^ *(public|protected|private):/ || /^#/ || /^ *\/\// {
    if (isBegin())
        text = ""
    print
    next
}

isBegin() && /^ *template *</ && !/[;{]/ && !isFresh && text != "" {
    held = $0
    next
}

{
    if (isBegin()) {
        if (isFresh) {
            name = stem($0)
            if (name ~ /^[a-z]/ && name != "operator" && !(name in told)) {
                told[name] = text
                teller[name] = nameOf($0)
            }
        } else if (text != "" && stem($0) == name && name != "") {
            print "/** " text " */ " (held == "" ? $0 : held)
            if (held != "")
                print
            held = ""
            follow($0)
            next
        } else if ($0 ~ /^ *static / && nameOf($0) in common) {
            print "/** " common[nameOf($0)] " */ " $0
            follow($0)
            next
        } else if ($0 ~ /^ *friend .*operator<</) {
            print "/** " common["operator<<"] " */ " $0
            follow($0)
            next
        } else if (!isGroup && stem($0) in told) {
            print "/** See " teller[stem($0)] ": " told[stem($0)] " */ " $0
            follow($0)
            next
        } else if (isQt($0)) {
            print "/** Qt's, overridden. */ " $0
            follow($0)
            next
        } else if ($0 ~ /= (default|delete);/) {
            flush()
            print ""
            next
        }
        if ($0 !~ /^ *template/)
            isFresh = 0
    }
    flush()
    print
    follow($0)
}
