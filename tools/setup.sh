# Sourced by run.sh, test.sh and .ci/run: packages, and commands whose output goes to a log.

# What building, running and testing need, as Debian packages.
build_packages=(binutils cmake g++ libcli11-dev libgmock-dev libgtest-dev libjs-dygraphs libopenmpi-dev
  libpugixml-dev libtomlplusplus-dev libxml2-utils libzip-dev ninja-build nlohmann-json3-dev openmpi-bin
  pkg-config strace)

# What the binaries for other platforms need besides, and the tests of these.
cross_packages=(g++-aarch64-linux-gnu g++-mingw-w64-x86-64-posix googletest qemu-user wine64)

# Installs those of the named packages that are missing; as root, or through sudo.
install_missing() {
  local missing=() package root=()
  for package in "$@"; do
    dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  echo "Installing ${missing[*]}"
  if ! command -v apt-get >/dev/null || ! { [ ${#root[@]} -eq 0 ] || command -v sudo >/dev/null; }; then
    echo "Please install by hand: ${missing[*]} (Debian's names; this needs apt-get, and root or sudo)." >&2
    exit 1
  fi
  quietly "  package lists" "${root[@]}" apt-get update
  quietly "  packages" "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
    "${missing[@]}"
}

# quietly "What" command...: one line on the terminal; the output goes to build/log and is shown when it fails.
quietly() {
  local what=$1 log start=$SECONDS
  shift
  mkdir -p build/log
  log="build/log/$(tr -cs 'a-zA-Z0-9' '-' <<<"$what" | sed 's/^-//; s/-$//').log"
  printf '%s ... ' "$what"
  if "$@" >"$log" 2>&1; then
    echo "done ($((SECONDS - start)) s)"
  else
    local status=$?
    echo "failed"
    grep -E -i -m 20 'error|failed' "$log" >&2 || tail -n 40 "$log" >&2
    echo "The whole output is in $log." >&2
    exit "$status"
  fi
}

# build PRESET [target...]
build() {
  local preset=$1
  shift
  quietly "Configuring $preset" cmake --preset "$preset"
  quietly "Building $preset" cmake --build --preset "$preset" ${*:+--target "$@"}
}

# test_preset PRESET: runs its tests; prints the test runner's summary, or the failures.
test_preset() {
  local log="build/log/test-$1.log"
  mkdir -p build/log
  echo "Testing $1 ..."
  if ctest --preset "$1" >"$log" 2>&1; then
    sed -n '/tests passed/,$p' "$log"
  else
    sed -n '/\*\*\*\|Failure\|^\[  FAILED/,+12p' "$log" | head -n 120 >&2
    sed -n '/tests passed/,$p' "$log" >&2
    echo "The whole output is in $log." >&2
    exit 1
  fi
}
