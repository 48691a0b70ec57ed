# Sourced by the run-* scripts: installs the Debian packages that are missing and builds a preset.
# Defines need_packages, build_preset and build_folder.

QV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# Another folder that compiles the same file the same way finds it in the compiler's cache.
export CCACHE_BASEDIR=$QV_ROOT CCACHE_NOHASHDIR=1
QV_BUILD_PACKAGES="g++ cmake ninja-build pkg-config ccache mold libfreetype-dev libharfbuzz-dev libfontconfig-dev
  libpng-dev libcairo2-dev libhowardhinnant-date-dev tzdata zlib1g-dev libzstd-dev nlohmann-json3-dev libcli11-dev fonts-liberation fonts-dejavu-core"
QV_QT_PACKAGES="qt6-base-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools libqt6opengl6-dev"
QV_TEST_PACKAGES="doctest-dev python3 clang xvfb xdotool poppler-utils librsvg2-bin netpbm cups cups-client xclip gcovr"
QV_PYTHON_PACKAGES="pybind11-dev python3-dev python3-numpy python3-pandas python3-pytest mypy"
QV_PACKAGING_PACKAGES="dpkg-dev file lintian"
QV_FUZZ_PACKAGES="clang"
QV_COMPILER_PACKAGES="clang-14 clang-16"
QV_TIDY_PACKAGES="clang-tidy-14"
QV_DOCS_PACKAGES="doxygen"
QV_BENCH_PACKAGES="libbenchmark-dev libmuparser-dev"
# Other plotting libraries, for ./run-bench --peers alone.
QV_PEER_PACKAGES="python3 qt6-base-dev qt6-charts-dev libqt6opengl6-dev libgl-dev libopengl-dev qtbase5-dev
  libqcustomplot-dev libqcustomplot2.1 libqcustomplot2.1-qt6 libqwt-qt5-dev libkchart-dev gnuplot-nox"

# need_packages NAME...: installs those that dpkg does not know as installed.
need_packages() {
  local missing=() name
  for name in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These Debian packages are missing: ${missing[*]}" >&2
      echo "Install them as root (apt-get install ${missing[*]}), then run this again." >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}" >&2
  local log
  log=$(mktemp)
  if ! { "${as_root[@]}" apt-get -q -o DPkg::Lock::Timeout=300 update &&
         "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 \
           install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "apt-get could not install ${missing[*]}; see above." >&2
    return 1
  fi
  rm -f "$log"
}

# build_preset PRESET [cmake option...]: configures and builds quietly; shows the output only on failure.
build_preset() {
  build_quietly "$1" "$QV_ROOT/build/$1" -S "$QV_ROOT" --preset "$@"
}

# build_folder SOURCE BUILD [cmake option...]: the same for a project of its own.
build_folder() {
  build_quietly "$(basename "$1")" "$2" -S "$1" -B "$2" "${@:3}"
}

build_quietly() {
  local name=$1 folder=$2 log
  shift 2
  log=$(mktemp)
  echo "Building ($name)" >&2
  if ! { cmake "$@" && cmake --build "$folder" ${QV_BUILD_TARGET:+--target "$QV_BUILD_TARGET"}; } >"$log" 2>&1; then
    grep -E -A 12 'error|Error|FAILED' "$log" | head -n 80 >&2 || tail -n 40 "$log" >&2
    echo "The build failed; the whole output is in $log" >&2
    return 1
  fi
  rm -f "$log"
}
