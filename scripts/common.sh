# Shared by ./run and ./test: what the machine needs, and how to build.

# Debian's names of what every build needs.
build_packages=(
    ca-certificates
    ccache
    cmake
    g++
    git
    libqt6sql6-sqlite
    libqt6svg6-dev
    libssl-dev
    ninja-build
    qt6-base-dev
    qt6-pdf-dev
    qt6-translations-l10n
    fonts-wqy-microhei
)

say() { printf '%s\n' "$*" >&2; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        say "These packages are missing and need root or sudo to install: ${missing[*]}"
        return 1
    fi
}

# Installs the packages that are missing, and asks the package servers only then.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        say "This system has no apt-get: please see to CMake 3.25, Ninja, a C++20 compiler,"
        say "Qt 6.4 (Core, Gui, Widgets, Sql with SQLite, PrintSupport, Pdf, Svg, Test), OpenSSL 3 and a Chinese font."
        return 0
    fi
    local package
    missing=()
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$package")
    done
    [ "${#missing[@]}" -gt 0 ] || return 0
    say "Installing ${#missing[@]} packages: ${missing[*]}"
    as_root apt-get -qq update &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends \
            "${missing[@]}" >/dev/null
}

# build PRESET: configures quietly, shows what went wrong when it did.
build() {
    local log
    mkdir -p build
    log=build/configure-$1.log
    if ! cmake --preset "$1" >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
    grep -A 3 'CMake Warning' "$log" >&2 || true
    cmake --build --preset "$1"
}
