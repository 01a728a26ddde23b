# What ./run and ./test share: packages, and one build at a time. Sourced by them; `root` is set. Says all it has to say
# on standard error.

core_packages=(g++ cmake ninja-build pkgconf ccache unzip libsqlite3-dev libplist-dev libssl-dev libheif-dev
    libjpeg62-turbo-dev nlohmann-json3-dev libcli11-dev)
window_packages=(qt6-base-dev qt6-image-formats-plugins libqt6svg6 fonts-dejavu-core fonts-wqy-microhei)
# Debian's plain clang is too old for what g++ takes of C++20, captured structured bindings for one.
test_packages=(libgtest-dev libgmock-dev clang-19 libclang-rt-19-dev)
bench_packages=(libbenchmark-dev)
tidy_packages=(clang-tidy-19 clang-format-19)

say() { printf '%s\n' "$*" >&2; }

die() {
    say "${0##*/}: $*"
    exit 1
}

# Those of the packages that are not installed, one a line.
missing_packages() {
    comm -23 <(printf '%s\n' "$@" | LC_ALL=C sort -u) \
        <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | LC_ALL=C sort -u)
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

# Tells the number and the size of the packages with all that they draw in. (What apt itself would tell leaves out what it
# has in its cache, and its --assume-no installs a package that needs no other.)
tell_installation_size() {
    local names
    names=$(apt-get install -s -y --no-install-recommends "$@" 2>/dev/null | sed -n 's/^Inst \([^ ]*\).*/\1/p') || return 0
    # shellcheck disable=SC2086
    say "$(apt-cache show --no-all-versions $names 2>/dev/null | awk '
        /^Size:/ {download += $2} /^Installed-Size:/ {disk += $2} /^Package:/ {count++}
        END {printf "With what they need: %d packages, %.0f MB to download, %.0f MB on disk.", count, download / 1e6, disk * 1024 / 1e6}')"
}

# Installs what is missing of the packages, and sets installed_any then. Asks once where a person can answer, unless
# ASSUME_YES is set.
need_packages() {
    command -v dpkg-query >/dev/null || return 0   # not a Debian: the configuration names what it does not find
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    say "These packages are needed: ${missing[*]}"
    if [ "$(id -u)" != 0 ] && ! command -v sudo >/dev/null; then
        die "neither root nor sudo: please install them, then call this again"
    fi
    as_root apt-get update -qq >&2 || say "the package lists could not be renewed; going on with those that are there"
    tell_installation_size "${missing[@]}"
    if [ -z "${ASSUME_YES:-}" ] && [ -t 0 ] && [ -t 2 ]; then
        local answer
        read -r -p 'Install them now? [Y/n] ' answer || answer=n   # bash puts the question on standard error
        case $answer in '' | [Yy]*) ;; *) die 'nothing was installed' ;; esac
    fi
    as_root apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 \
        "${missing[@]}" </dev/null >&2 || die 'the packages could not be installed'
    installed_any=1
}

# Whether build/NAME can be built as it stands. One that was made elsewhere and moved or copied here cannot.
is_configured() {
    [ -f "$root/build/$1/build.ninja" ] && grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$root/build/$1/CMakeCache.txt"
}

# Configures build/NAME by the preset PRESET, with further cmake arguments.
configure() {
    local name=$1 preset=$2 tree=$root/build/$1
    shift 2
    is_configured "$name" || rm -rf "$tree"
    mkdir -p "$tree"
    (cd "$root" && cmake --preset "$preset" -B "$tree" "$@") >"$tree/configure.log" 2>&1 || {
        cat "$tree/configure.log" >&2
        die "build/$name cannot be configured"
    }
}

# Builds targets of build/NAME.
build() {
    local name=$1
    shift
    ninja -C "$root/build/$name" "$@" >&2 || die "build/$name cannot be built"
}

# The same where most likely nothing is to be done, and then without a word.
rebuild() {
    local name=$1
    shift
    ninja -C "$root/build/$name" "$@" 2>&1 | sed -u '/^ninja: \(no work\|Entering\)/d; /Re-checking globbed/d' >&2 ||
        die "build/$name cannot be built"
}

# Holds the right to build until release_build or the end of the program.
hold_build() {
    mkdir -p "$root/build"
    exec {build_lock}>"$root/build/.lock"
    flock "$build_lock"
}

release_build() { exec {build_lock}>&-; }
