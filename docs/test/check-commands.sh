#!/bin/sh
# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# check-commands.sh KYHOST BLOCKS DOCUMENT...: run at the project's root. Programs that the documents call must be
# there, their options must be known, and files of the project that are named or linked to must exist.
set -eu
kyhost=$1 blocks=$2
shift 2
help=$("$kyhost" --help)
failed=0

complain() {
    echo "$where: $1"
    failed=1
}

# knows PROGRAM OPTION
knows() {
    case $1 in
        kyhost) printf '%s\n' "$help" | grep -qwe "$2" ;;
        cmake) cmake --help | grep -qwe "$2" || [ "$2" = --prefix ] ;;
        *) grep -qwe "$2" "$1" ;;
    esac
}

check_line() {
    # What the shell would do with quotes, stars and the like is of no interest here.
    set -f
    # shellcheck disable=SC2086
    set -- ${1%%#*}
    set +f
    [ $# -gt 0 ] || return 0
    program=${1#./}
    shift
    case $program in
        kyhost | cmake) ;;
        *) [ -x "$program" ] || { complain "there is no program $program"; return 0; } ;;
    esac
    for word in "$@"; do
        case $word in
            examples/*) [ -e "$word" ] || complain "there is no file $word" ;;
            # What follows are words of another program.
            env | bash | packaging/*) return 0 ;;
            -R) [ "$program" = kyhost ] && complain "$program has no option $word" ;;
            -?*) knows "$program" "${word%%=*}" || complain "$program has no option $word" ;;
        esac
    done
}

while IFS=$(printf '\t') read -r language document file options; do
    [ "$language" = sh ] || continue
    where="docs/$document.md, the block at $file"
    while IFS= read -r line; do
        check_line "$line"
    done <"$blocks/$file"
done <"$blocks/blocks.txt"

for where in "$@"; do
    # Links to files, without what they name inside of them.
    for link in $(grep -o '](\([^)#]*\)' "$where" | sed 's/^](//' | grep -v '^http'); do
        [ -e "$(dirname "$where")/$link" ] || complain "there is no file $link"
    done
    # Calls of kyhost in the text.
    calls=$(grep -o '`kyhost [^`]*`' "$where" | tr -d '`') || continue
    while IFS= read -r line; do
        check_line "$line"
    done <<CALLS
$calls
CALLS
done
exit $failed
