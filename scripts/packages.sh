# shellcheck shell=bash disable=SC2034
# Sourced by ./dev: what has to be on the machine, and how it gets there.
# Names are Debian's. "a|b" means: a, or b on a release that has no a.

# To build the planner and see it run, on a machine without a display too.
run_packages=(
    build-essential cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools 'qt6-svg-dev|libqt6svg6-dev' qt6-wayland
    qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick
    qml6-module-qtquick-controls qml6-module-qtquick-templates qml6-module-qtquick-layouts
    qml6-module-qtquick-window qml6-module-qtquick-dialogs qml6-module-qt-labs-folderlistmodel
    qml6-module-qtcore qml6-module-qt-labs-platform
    qt6-webengine-dev qml6-module-qtwebengine libqt6webenginecore6-bin
    libsqlite3-dev zlib1g-dev libicu-dev libical-dev libzip-dev 'libboost1.81-dev|libboost-dev' 'libboost-json1.81-dev|libboost-json-dev'
    libegl1 libgl1-mesa-dri
    fonts-inter fonts-noto-cjk fonts-jetbrains-mono
    xvfb xauth
    libecal2.0-dev
)

# To build and run the tests and benchmarks as well.
test_packages=(
    qml6-module-qttest nlohmann-json3-dev
    python3 python3-gi python3-pyatspi gir1.2-atspi-2.0 python3-dbusmock python3-dateutil
    evolution-data-server radicale
    dbus dbus-x11 at-spi2-core xdotool x11-utils xclip imagemagick dunst libnotify-bin sqlite3
    orca speech-dispatcher
    fcitx5 fcitx5-pinyin fcitx5-frontend-qt6
)

lint_packages=(clang clang-tidy clang-format python3)
# Clang's sanitizers and fuzzer.
sanitizer_packages=(clang 'libclang-rt-14-dev|libclang-rt-dev')

# What the pages shown in documents load comes from npm; a machine may have npm from elsewhere.
if [ -f web/package.json ] && ! command -v npm >/dev/null; then
    run_packages+=(nodejs npm)
fi

say() { printf '\033[1m▸ %s\033[0m\n' "$*" >&2; }
die() { printf '\033[1;31m✗ %s\033[0m\n' "$*" >&2; exit 1; }

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# The first name of "a|b" that is installed, else the first that apt knows.
package_of() {
    local name names
    IFS='|' read -ra names <<<"$1"
    for name in "${names[@]}"; do is_installed "$name" && echo "$name" && return; done
    for name in "${names[@]}"; do
        apt-cache policy "$name" 2>/dev/null | grep -q 'Candidate: [^(]' && echo "$name" && return
    done
    echo "${names[0]}"
}

# missing_packages NAME…: prints those that are not installed (one quick look at dpkg's list).
missing_packages() {
    local installed wanted name
    installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' | sed -n 's/^installed //p')
    for wanted in "$@"; do
        for name in ${wanted//|/ }; do
            grep -qxF "$name" <<<"$installed" && continue 2
        done
        echo "$wanted"
    done
}

explain_without_apt() {
    local tool lacking=()
    for tool in c++ cmake ninja pkg-config npm; do command -v "$tool" >/dev/null || lacking+=("$tool"); done
    say "This system has no apt-get, so nothing is installed for you. Tessaly needs: a C++20 compiler, CMake 3.25," \
        "Ninja, npm, Qt 6.4 or later (Base, Declarative, Quick Controls, Svg, Wayland, WebEngine), SQLite 3, zlib, ICU 60," \
        "Boost 1.75 with Boost.JSON, libical; libecal 2.0 for the calendars of GNOME (optional);" \
        "for the tests nlohmann-json, Xvfb, dbus, AT-SPI 2 with pyatspi, Orca, python-dbusmock, python-dateutil, Radicale, Fcitx 5 with pinyin and its module for Qt 6; for the gates clang 14's tools." \
        "The Debian names are in scripts/packages.sh."
    [ ${#lacking[@]} -eq 0 ] || die "Not found: ${lacking[*]}. Install them and run the command again."
}

# install_packages NAME…: installs what is missing, and says so.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        explain_without_apt
        return
    fi
    local missing resolved=() name as_root=()
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            die "Packages are missing and there is no sudo. As root: apt-get install --no-install-recommends ${missing[*]%%|*}"
        as_root=(sudo)
    fi
    say "Installing ${#missing[@]} packages with apt-get: ${missing[*]%%|*}"
    "${as_root[@]}" apt-get update -q >/dev/null || say "apt-get update failed; trying with the lists at hand"
    for name in "${missing[@]}"; do resolved+=("$(package_of "$name")"); done
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends -o Dpkg::Use-Pty=0 "${resolved[@]}" >build/apt.log 2>&1 ||
        { tail -n 20 build/apt.log >&2; die "apt-get could not install the packages (whole output: build/apt.log)"; }
}
