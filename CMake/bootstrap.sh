# Shared by run and test: installs what is missing, configures and builds. To be sourced, from the repository's root.

BUILD_PACKAGES="g++ cmake ninja-build pkg-config qt6-base-dev libgl-dev libaravis-dev libusb-1.0-0-dev libxml2-dev libarchive-dev
    libcli11-dev libdtl-dev"

TEST_PACKAGES="libgtest-dev clang aravis-tools iproute2 zip xvfb xauth xdotool
    fonts-dejavu-core"

say() { printf '%s\n' "$*" >&2; }

die() {
    say "$*"
    exit 1
}

# Installs those of the packages that are missing; a machine that has them all is not touched.
install_packages() {
    local missing=() package root=()
    command -v apt-get >/dev/null || die "This needs Debian's apt-get, or these packages installed by hand: $*"
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null)" = "ii " ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "These packages are missing, and only root can install them: ${missing[*]}"
        root=(sudo)
    fi
    say "Installing ${missing[*]} ..."
    quietly "${root[@]}" apt-get update
    quietly "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
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

# build PRESET
build() {
    local run=quietly
    [ ! -t 2 ] || run=
    [ -f "build/$1/build.ninja" ] || quietly cmake --preset "$1" || die "Configuring failed."
    [ -d "build/$1/bin" ] || say "Building ..."
    $run cmake --build --preset "$1" >&2 || die "Building failed."
}
