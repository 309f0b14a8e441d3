#!/bin/sh
# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# run-scripts.sh KYHOST BLOCKS DRIVER FOLDER... -- DOCUMENT: runs each block of Lua of the document, among the files of
# the folders, and fails when one of them does or does not print what stands behind its "-->".
set -eu
kyhost=$1 blocks=$2 driver=$3
shift 3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME="$work/config"
while [ "$1" != -- ]; do
    cp -R "$1/." "$work"
    shift
done
document=$2

cd "$work"
echo "0.5 1" >wheel.txt
failed=0
nb=0
tab=$(printf '\t')

# has_printed FILE: whether its log has each line that the script promises.
has_printed() {
    tr '\t' ' ' <"$1.log" >"$1.lines"
    sed -n 's/.*--> //p' "$1" | while IFS= read -r line; do
        grep -qxF -e "$line" "$1.lines" || exit 1
    done
}

while IFS=$tab read -r language where file options; do
    [ "$language" = lua ] && [ "$where" = "$document" ] || continue
    nb=$((nb + 1))
    cp "$blocks/$file" .
    options=$(printf '%s' "$options" | sed "s|@WheelDriver@|$driver|")
    # The options are words.
    # shellcheck disable=SC2086
    if ! "$kyhost" $options --frames 3 --traceback "$file" >"$file.log" 2>&1 </dev/null ||
        grep -q "$file:[0-9]*: " "$file.log" || ! has_printed "$file"; then
        printf '%s\n' "docs/$document.md, the block at $file:"
        cat "$file.log"
        failed=1
    fi
done <"$blocks/blocks.txt"
echo "$nb scripts were run"
exit $failed
