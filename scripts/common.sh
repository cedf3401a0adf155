# Shared by the scripts of this folder; sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

step() { printf '\n== %s\n' "$*"; }
fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

# Installs those of the named Debian packages that are missing.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    step "Installing packages: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "run as root or install sudo; missing: ${missing[*]}"
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq || fail "apt-get update"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        fail "apt-get install ${missing[*]}"
}

BUILD_PACKAGES=(g++ cmake ninja-build pkg-config libexpat1-dev libpcre3-dev zlib1g-dev)
TEST_PACKAGES=(libgtest-dev libgmock-dev libgmp-dev libbenchmark-dev python3 locales)

# build_preset NAME [TARGET...]: configures and builds one preset.
build_preset() {
    local preset=$1
    shift
    step "Configuring $preset"
    cmake --preset "$preset" >/dev/null || fail "cmake --preset $preset"
    step "Building $preset${*:+ ($*)}"
    if [ $# -gt 0 ]; then
        cmake --build --preset "$preset" --target "$@" || fail "build of $preset"
    else
        cmake --build --preset "$preset" || fail "build of $preset"
    fi
}
