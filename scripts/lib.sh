# What the scripts share. To be sourced; needs bash.
# shellcheck shell=bash

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)

# Progress goes to standard error, so that a command's output can be piped on.
say() { printf '%s\n' "$*" >&2; }

fail() {
    say "$*"
    exit 1
}

is_there() {
    case $1 in
    command) command -v "$2" >/dev/null ;;
    module) pkg-config --exists "$2" 2>/dev/null ;;
    file) [[ -e $2 ]] ;;
    esac
}

# The packages that are missing for these needs: `missing_packages build test`.
missing_packages() {
    local need package kind name
    while read -r need package kind name; do
        if [[ " $* " == *" $need "* ]] && ! is_there "$kind" "$name"; then printf '%s\n' "$package"; fi
    done < <(grep -v '^#' "$root/scripts/packages")
}

# Runs a command whose output nobody needs to see unless it fails: `quietly LOG COMMAND…`.
quietly() {
    local log=$1
    shift
    mkdir -p -- "$(dirname -- "$log")"
    "$@" >"$log" 2>&1 && return
    tail -n 60 -- "$log" >&2
    fail "Failed: $*
All of its output is in $log"
}

install_packages() {
    local as_root=()
    if [[ $(id -u) != 0 ]]; then
        command -v sudo >/dev/null || fail "Missing here, and only root can install: apt-get install $*"
        as_root=(sudo)
    fi
    say "Installing: $*"
    quietly "$root/build/apt-update.log" "${as_root[@]}" apt-get update
    quietly "$root/build/apt-install.log" "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "$@"
}

# Sees that everything is there for these needs, and installs what is not.
require() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then return; fi
    if ! command -v apt-get >/dev/null; then
        fail "Missing here are these, by the names of their Debian packages; please install what your system calls them:
$(printf '  %s\n' "${missing[@]}")"
    fi
    install_packages "${missing[@]}"
    touch -- "$root/CMakeLists.txt" # so that the next build looks for what is there now
}

# Builds everything of a preset, or some of its targets: `build PRESET [TARGET…]`.
build() {
    local preset=$1 folder=$root/build/$1
    local targets=("${@:2}")
    cd -- "$root" || exit
    if [[ ! -e $folder/build.ninja ]]; then
        say "Building ($preset); the first time this takes some minutes."
        quietly "$root/build/$preset-configure.log" cmake --preset "$preset"
    fi
    quietly "$root/build/$preset.log" cmake --build --preset "$preset" ${targets[@]+--target "${targets[@]}"}
    cd -- "$OLDPWD" || exit
}
