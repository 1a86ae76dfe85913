# Shared by test.sh and run.sh: install what is missing, then configure and build a preset.
# Sourced, not run.

nv_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-svg-dev libgtest-dev libgmock-dev
             libbenchmark-dev nlohmann-json3-dev fonts-dejavu-core desktop-file-utils appstream
             libsqlite3-dev poppler-utils
             xvfb at-spi2-core python3-pyatspi dbus-x11)

nv_install() {
    local missing=()
    for p in "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    export DEBIAN_FRONTEND=noninteractive
    $sudo apt-get update -qq && $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

nv_build() {
    local preset="$1"
    if [ ! -f "build/$preset/build.ninja" ]; then
        cmake --preset "$preset" >/dev/null || return 1
    fi
    cmake --build --preset "$preset"
}
