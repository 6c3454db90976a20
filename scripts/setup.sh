# Sourced by the scripts: installs Debian packages that are missing, configures and builds.
# shellcheck shell=bash disable=SC2034

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc)

build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-svg-dev libcli11-dev
    libtomlplusplus-dev libopenturns-dev libsqlite3-dev nlohmann-json3-dev fonts-liberation2)
test_packages=(libgtest-dev libgmock-dev python3 poppler-utils clang
    libclang-rt-14-dev python3-jsonschema jq make desktop-file-utils shared-mime-info libglib2.0-bin)
display_packages=(xvfb xauth jwm)
bench_packages=(libbenchmark-dev)
slurm_packages=(slurmctld slurmd slurm-client munge)
lint_packages=(clang-format clang-tidy codespell)
package_packages=(dpkg-dev lintian gzip file)

# install_missing PACKAGE...: touches the package lists only where something is missing.
install_missing() {
    local package missing=()
    for package in "$@"; do
        if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}" >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -qq -y --no-install-recommends "${missing[@]}" >&2
}

# build PRESET OPTION... -- TARGET...: configures build/PRESET, warnings as errors but in the release
# preset that people configure themselves, and builds the targets.
build() {
    local preset=$1 options=()
    if [ "$preset" != release ]; then
        options+=(-DKORVANE_WERROR=ON)
    fi
    shift
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        options+=("$1")
        shift
    done
    if [ $# -lt 2 ]; then
        echo "build: no target" >&2
        return 2
    fi
    shift
    if command -v ccache >/dev/null; then
        options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
    fi
    (
        cd "$root" || exit
        mkdir -p build
        log=build/configure-$preset.log
        cmake --preset "$preset" "${options[@]}" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
        cmake --build "build/$preset" -j "$jobs" --target "$@"
    )
}
