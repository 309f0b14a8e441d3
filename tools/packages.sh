# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# Words, packages and source packages for the scripts that set a machine up; they read it with ".".

say() { printf '%s: %s\n' "${0##*/}" "$*" >&2; }
die() {
    say "$*"
    exit 1
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    elif command -v sudo >/dev/null; then
        sudo -n env DEBIAN_FRONTEND=noninteractive "$@"
    else
        die "not root and no sudo; cannot run: $*"
    fi
}

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

print_missing() {
    local package
    for package in "$@"; do
        is_installed "$package" || printf '%s\n' "$package"
    done
}

# A single command so that apt can be absent as long as nothing is missing.
install_packages() {
    local missing missing_optional package
    command -v dpkg-query >/dev/null ||
        die "no dpkg on this system; install the counterparts of: ${packages[*]}"
    mapfile -t missing < <(print_missing "${packages[@]}")
    mapfile -t missing_optional < <(print_missing "${optional[@]}")
    [ ${#missing[@]} -gt 0 ] || return 0
    command -v apt-get >/dev/null || die "no apt-get, and these packages are missing: ${missing[*]}"

    say "installing ${missing[*]} ${missing_optional[*]}"
    as_root apt-get -qq update >/dev/null || say "apt-get update failed; trying with the lists at hand"
    as_root apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null ||
        die "apt-get could not install: ${missing[*]}"
    for package in "${missing_optional[@]}"; do
        as_root apt-get -qq install -y --no-install-recommends "$package" >/dev/null ||
            say "going on without $package"
    done
}

# Turns one source list into its deb-src form, for either of apt's two formats.
write_source_list() {
    case $1 in
        *.sources) sed -E 's/^Types:.*/Types: deb-src/' "$1" ;;
        *) sed -nE 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$1" ;;
    esac
}

# make_private_apt DIR: the machine's lists, keys and proxies, with sources in place of binaries; for fetch_source.
make_private_apt() {
    local dir=$1 list
    mkdir -p "$dir/lists/partial" "$dir/cache/archives/partial" "$dir/parts"
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
        [ ! -f "$list" ] || write_source_list "$list" >"$dir/parts/$(basename "$list")"
    done
    mv "$dir/parts/sources.list" "$dir/parts/main.list" 2>/dev/null || true
    cat >"$dir/apt.conf" <<CONF
Dir::Etc::SourceList "/dev/null";
Dir::Etc::SourceParts "$dir/parts";
Dir::State::Lists "$dir/lists";
Dir::Cache "$dir/cache";
APT::Sandbox::User "$(id -un)";
APT::Architectures { "$(dpkg --print-architecture)"; };
Acquire::Languages "none";
CONF
    private_apt=$dir/apt.conf
    # A list without sources fails the update; the download says whether the one we need was there.
    APT_CONFIG=$private_apt apt-get -qq update >"$dir/update.log" 2>&1 || true
}

# fetch_source DIR PACKAGE[/RELEASE]: unpacks the source package, the distribution's patches applied, into DIR/source.
# apt checks the signatures, as of any package.
fetch_source() {
    local dir=$1 package=$2
    mkdir -p "$dir"
    (cd "$dir" && APT_CONFIG=$private_apt apt-get -qq source --download-only "$package") >"$dir/fetch.log" 2>&1 || {
        cat "${private_apt%/*}/update.log" "$dir/fetch.log" >&2
        die "could not download the source package $package (apt's words are above)"
    }
    (cd "$dir" && dpkg-source --no-check -x ./*.dsc source) >>"$dir/fetch.log" 2>&1 || {
        cat "$dir/fetch.log" >&2
        die "could not unpack the source package $package"
    }
}
