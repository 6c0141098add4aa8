# Shared by run, install and test: installs what is missing, configures and builds. To be sourced, from the repository's root.

BUILD_PACKAGES="g++ cmake ninja-build pkg-config qt6-base-dev libgl-dev libaravis-dev libusb-1.0-0-dev libxml2-dev libarchive-dev
    libcli11-dev libdtl-dev"

PACKAGE_PACKAGES="dpkg-dev file doxygen"

TEST_PACKAGES="libgtest-dev clang aravis-tools iproute2 zip zsh fish xvfb xauth xdotool fonts-dejavu-core
    $PACKAGE_PACKAGES lintian rpm"

say() { printf '%s\n' "$*" >&2; }

die() {
    say "$*"
    exit 1
}

# Installs those of the packages that are missing; a machine that has them all is not touched.
install_packages() {
    local missing=() package
    command -v apt-get >/dev/null || die "This needs Debian's apt-get, or these packages installed by hand: $*"
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null)" = "ii " ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing ${missing[*]} ..."
    as_root apt-get update
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

# Runs a command that only root may run.
as_root() {
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "Only root can do this: $*"
        root=(sudo)
    fi
    quietly "${root[@]}" "$@"
}

# Runs a command; shows what it printed only if it fails.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 </dev/null || status=$?
    [ $status -eq 0 ] || cat "$log" >&2
    rm -f "$log"
    return $status
}

# build PRESET. What was built where nothing can be written now, a medium or another user's folder, is taken as it is.
build() {
    local folder=build/$1 run=(quietly tell_compiling "$1")
    [ -w "$folder" ] || [ ! -x "$folder/bin/KoltaClassGenerator" ] || return 0
    [ ! -t 2 ] || run=()
    [ -f "$folder/build.ninja" ] || quietly cmake --preset "$1" || die "Configuring failed."
    "${run[@]}" cmake --build --preset "$1" 3>&2 >&2 || die "Building failed."
}

# tell_compiling PRESET COMMAND...: says so once the first file is compiled. Only the build knows whether one is.
tell_compiling() {
    local line told=
    "${@:2}" | while IFS= read -r line; do
        echo "$line"
        [[ -z $told && $line == *"Building CXX"* ]] || continue
        say "Building in build/$1; the first time this takes minutes ..." 2>&3
        told=1
    done
}
