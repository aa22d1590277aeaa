# The Debian packages that the project needs, and how to get them. Sourced by ./run and ./test.
# shellcheck shell=bash
# shellcheck disable=SC2034 # the lists are for those who source it

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools qt6-serialport-dev libgl-dev
    libasio-dev libcli11-dev nlohmann-json3-dev)
# What cmake is told beyond the preset.
settings=()

screen_packages=(xvfb xauth xdotool fonts-dejavu-core)
# The fonts are those of tests/surroundings.
test_packages=(gcovr poppler-utils fonts-dejavu-core fonts-liberation fonts-noto-mono fonts-urw-base35 python3
    python3-jsonschema)
package_packages=(dpkg-dev appstream desktop-file-utils lintian man-db python3-markdown)
# The Windows program, and what runs it here.
windows_packages=(g++-mingw-w64-x86-64 zip xz-utils)
wine_packages=(wine wine64 fonts-wine fonts-liberation)
# For pictures of its windows.
windows_tour_packages=(imagemagick xdotool)

# How many seconds need_packages waits for another apt.
apt_patience=600

# Installs those of the given packages that are missing. Says what to do when it may not.
need_packages() {
    local package missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        if command -v sudo >/dev/null && { [ -t 0 ] || sudo -n true 2>/dev/null; }; then
            root=(sudo)
        else
            echo "These Debian packages are missing and cannot be installed from here:" >&2
            echo "    ${missing[*]}" >&2
            echo "Please run: sudo apt-get install ${missing[*]}" >&2
            return 1
        fi
    fi
    echo "Installing ${missing[*]}"
    apt_get update && apt_get install -y --no-install-recommends "${missing[@]}"
}

# Runs apt-get quietly, behind the words in $root. While another apt is at work, a desktop's software centre say, it
# waits and says so.
apt_get() {
    local output deadline=$((SECONDS + apt_patience)) said=no
    until output=$("${root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C \
        apt-get -o DPkg::Lock::Timeout=5 -qq "$@" 2>&1); do
        if ! grep -qE 'Could not get lock|Unable to (acquire|lock)' <<<"$output" || [ "$SECONDS" -ge "$deadline" ]; then
            printf '%s\n' "$output" >&2
            return 1
        fi
        [ "$said" = yes ] || echo "Another apt is at work here. Waiting for it, at most $((apt_patience / 60)) minutes."
        said=yes
        sleep 1
    done
}

# Configures and builds a preset: all of it, or the given targets. What is in $settings goes to the configuration.
build_preset() {
    local preset=$1
    shift
    local launcher=() targets=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    [ $# -gt 0 ] && targets=(-t "$@")
    cmake --preset "$preset" "${launcher[@]}" "${settings[@]}" >"build/$preset.log" 2>&1 ||
        { cat "build/$preset.log"; return 1; }
    cmake --build "build/$preset" "${targets[@]}" >>"build/$preset.log" 2>&1 ||
        { grep -E 'error|FAILED' -A 8 "build/$preset.log" | head -n 60; return 1; }
}

# The folder of a Qt for Windows: what QT_WINDOWS_KIT names, or where one usually lies; nothing when there is none.
usual_kit() {
    local folder
    for folder in ${QT_WINDOWS_KIT:+"$QT_WINDOWS_KIT"} ../windows-kit ../shared/windows-kit; do
        [ ! -d "$folder" ] || { readlink -f "$folder"; return 0; }
    done
}

# The folder of the Qt for Windows that a kit's folder is, or holds as an archive, which is then unpacked below build/.
windows_kit() {
    local kit=$1 archive unpacked
    if [ -d "$kit/lib/cmake/Qt6" ]; then
        echo "$kit"
        return 0
    fi
    archive=$(find "$kit" -maxdepth 1 -name 'qt-*-mingw.tar.xz' | sort | tail -n 1)
    if [ -z "$archive" ]; then
        echo "There is neither a Qt for Windows nor an archive of one in $kit." >&2
        return 1
    fi
    unpacked=$PWD/build/$(basename "$archive" .tar.xz)
    if [ ! -d "$unpacked/lib/cmake/Qt6" ] || [ "$archive" -nt "$unpacked" ]; then
        rm -rf "$unpacked"
        mkdir -p "$unpacked"
        tar -xJf "$archive" -C "$unpacked" --strip-components=1
        touch "$unpacked"
    fi
    echo "$unpacked"
}
