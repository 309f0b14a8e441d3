# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
# Roots of their own, of the distribution for i386 unless root_architecture says another, for the scripts that build or
# run what this machine has no packages for; they read it with "." after packages.sh.

cannot() {
    say "cannot be set up here: $*"
    exit 77
}

# Whether this machine can have such a root, enter it and write to a copy of it.
check_roots() {
    local architecture
    [ "$(id -u)" = 0 ] || cannot "mounts and a root of its own need the superuser"
    command -v apt-get >/dev/null || cannot "no apt-get to get packages with"
    architecture=$(dpkg --print-architecture)
    [ "$architecture" = amd64 ] || [ "$architecture" = i386 ] || cannot "programs for i386 do not run on $architecture"
    unshare --mount --pid --fork true 2>/dev/null || cannot "namespaces are refused"
    command -v mount >/dev/null || (packages=(mount) optional=() && install_packages)
    unshare --mount sh -c 'mount -t tmpfs none /mnt && cd /mnt && mkdir upper work root &&
        mount -t overlay -o lowerdir=/,upperdir=upper,workdir=work none root && chroot root true' 2>/dev/null ||
        cannot "mounts are refused"
}

# run LOG COMMAND...: the command's words are shown only when it fails.
run() {
    local log=$1
    shift
    "$@" >>"$log" 2>&1 || {
        tail -n 60 "$log" >&2
        die "failed: $*"
    }
}

# What the machine's apt needs on its way out, such as a proxy.
write_apt_options() {
    apt-config dump | grep -iE '^Acquire::[a-z]+::(proxy|verify|caInfo)' >"$1" || true
    echo 'APT::Install-Recommends "false";' >>"$1"
}

# The machine's own source of the distribution's main packages, which apt checks the signatures of.
find_source() {
    local keyring=/usr/share/keyrings/debian-archive-keyring.gpg uri
    codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
    uri=$(apt-get indextargets --format '$(REPO_URI)' "Created-By: Packages" "Origin: Debian" "Component: main" \
        "Codename: $codename" | head -n 1)
    [ -n "$uri" ] && [ -e "$keyring" ] || cannot "the machine's sources have no main packages of Debian"
    source="[signed-by=$keyring] $uri"
}

# make_root DIR KEY PACKAGES [COMMAND...]: made anew when the key changes; the command, given the new root as its last
# argument, finishes it.
make_root() {
    local out=$1 key="$codename $2" packages=$3 new=$1.new log=$1.log
    shift 3
    [ "$(cat "$out/etc/ky-root" 2>/dev/null)" != "$key" ] || return 0
    rm -rf "$new" "$log"
    write_apt_options "$out.apt"
    run "$log" mmdebstrap --mode=root --variant=minbase --architectures="${root_architecture:-i386}" \
        --include="$packages" --components=main --aptopt="$out.apt" "$codename" "$new" "deb $source $codename main"
    [ $# -eq 0 ] || "$@" "$new"
    echo "$key" >"$new/etc/ky-root"
    rm -rf "$out"
    mv -T "$new" "$out"
}
