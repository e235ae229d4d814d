#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the Debian packages and installs them with dpkg into a root of their own, beside a copy of
# this machine's package database: what they depend on must be known there. Then uses what is in
# that root: the command, and a host that is built with find_package and with pkg-config.
#   package_test.bash BUILD_FOLDER SOURCE_FOLDER CMAKE CXX_COMPILER
# scripts/test-packages does the same on a freshly installed system, which takes root and a network.
set -euo pipefail
export LC_ALL=C.UTF-8

build_dir="$1"
source_dir="$2"
cmake="$3"
compiler="$4"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
root="$work/root"
database="$work/database"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# quietly WHAT COMMAND...: shows the command's output only when it fails.
quietly() {
  local what="$1"
  shift
  "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "$what"; }
}

# The installation scripts run as they are, but for the linker's cache, which is this machine's.
mkdir "$work/bin"
printf '#!/bin/sh\n' >"$work/bin/ldconfig"
chmod +x "$work/bin/ldconfig"

own_dpkg() {
  PATH="$work/bin:$PATH:/usr/sbin:/sbin" dpkg --admindir="$database" --instdir="$root" --log="$work/dpkg.log" \
    --force-not-root --force-script-chrootless --force-bad-path "$@"
}

echo "-- packages"
quietly "cpack" "$(dirname "$cmake")/cpack" --config "$build_dir/CPackConfig.cmake" -B "$work/packages"
packages=("$work"/packages/*.deb)
names="$(for package in "${packages[@]}"; do dpkg-deb --field "$package" Package; done | sort)"
version="$(dpkg-deb --field "${packages[0]}" Version)"
major="${version%%.*}"
[[ "$names" == "$(printf '%s\n' chartbridge libchartbridge-dev libchartbridge-java \
  "libchartbridge$major" "libteskhost$major" | sort)" ]] || fail "other packages: $names"
for package in "${packages[@]}"; do
  [[ "$(dpkg-deb --field "$package" Version)" == "$version" ]] || fail "$package is no $version"
done

echo "-- lintian"
# What is overridden says why in packaging/debian/*.lintian-overrides.
lintian --allow-root --fail-on error,warning "${packages[@]}" || fail "lintian complains"

echo "-- installed with dpkg, all dependencies declared and known"
mkdir -p "$root" "$database/info" "$database/updates" "$database/triggers"
cp /var/lib/dpkg/status "$database/status"
[[ ! -f /var/lib/dpkg/arch ]] || cp /var/lib/dpkg/arch "$database/arch"
quietly "dpkg --install" own_dpkg --install "${packages[@]}"
for name in $names; do
  status="$(dpkg-query --admindir="$database" --show --showformat='${db:Status-Status}' "$name")"
  [[ "$status" == installed || "$status" == triggers-* ]] || fail "$name is $status"
done

echo "-- the packages of the jars are exactly those that the Java classes depend on"
# The file lists of the machine's packages, which the copied database lacks.
while read -r jar; do
  dpkg-query --search "$jar" | cut -d : -f 1
done <"$root/usr/share/chartbridge/libraries.txt" | sort -u >"$work/owners"
dpkg-query --admindir="$database" --show --showformat='${Depends}\n' libchartbridge-java |
  tr ',' '\n' | sed -E 's/^ *//; s/ .*//' | grep -E '^lib.*-java$' | sort >"$work/depends"
diff "$work/owners" "$work/depends" || fail "the jars' packages ('<') are not the Depends ('>')"

echo "-- sonames, search paths, build paths"
libraries="$(dirname "$(find "$root/usr/lib" -name "libchartbridge.so.$major")")"
for library in chartbridge teskhost jniguard; do
  readelf -d "$libraries/lib$library.so.$major" >"$work/dynamic"
  grep -q "SONAME.*\[lib$library.so.$major\]" "$work/dynamic" || fail "soname of lib$library"
  ! grep -E 'RPATH|RUNPATH' "$work/dynamic" || fail "lib$library has a search path"
done
! readelf -d "$root/usr/bin/chartbridge" | grep -E 'RPATH|RUNPATH' || fail "a search path"
mkdir "$work/jar"
(cd "$work/jar" && jar --extract --file "$root/usr/share/chartbridge/chartbridge-runtime.jar")
! grep -r -l -F -e "$build_dir" -e "$source_dir" "$root/usr" "$work/jar" ||
  fail "these know where they were built"
[[ -z "$(find "$root/usr" -perm /022 -not -type l)" ]] || fail "files that others may write"

echo "-- hardened as the distribution hardens its own packages"
[[ "$(DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get LDFLAGS)" == \
  "-Wl,-z,relro -Wl,-z,now" ]] || fail "the distribution hardens in another way now"
for file in "$root/usr/bin/chartbridge" "$libraries"/lib{chartbridge,teskhost,jniguard}.so.$major; do
  readelf --wide --dynamic --program-headers --symbols "$file" >"$work/elf"
  grep -q GNU_RELRO "$work/elf" || fail "$file: no relro"
  grep -q 'FLAGS.*NOW' "$work/elf" || fail "$file: not bound when it is loaded"
  grep -q 'GNU_STACK.* RW ' "$work/elf" || fail "$file: its stack can be run"
  grep -q '__stack_chk_fail' "$work/elf" || fail "$file: no stack protector"
  grep -q 'Type:.*DYN' < <(readelf --file-header "$file") || fail "$file: at a fixed address"
done
# Functions of the C library that know how large their buffers are.
for library in teskhost jniguard; do
  readelf --wide --symbols "$libraries/lib$library.so.$major" >"$work/elf"
  grep -q '__snprintf_chk@' "$work/elf" || fail "lib$library: no fortified functions"
done

echo "-- completion"
for completion in bash-completion/completions/chartbridge zsh/vendor-completions/_chartbridge \
  fish/vendor_completions.d/chartbridge.fish; do
  [[ -s "$root/usr/share/$completion" ]] || fail "no $completion"
done

# From here on everything comes from the packages.
export LD_LIBRARY_PATH="$libraries"
chart="$source_dir/examples/charts/titanic.gpl"
data="$source_dir/examples/data/titanic.csv"

echo "-- the command"
command="$root/usr/bin/chartbridge"
[[ "$("$command" --version)" == "chartbridge $version" ]] || fail "--version"
"$command" render "$chart" --data "$data" -o "$work/command.png"
"$command" tree render "$source_dir/examples/trees/airquality.pmml" -o "$work/tree.svg"
grep -q '<svg' "$work/tree.svg" || fail "no tree"
quietly "chartbridge doctor" "$command" doctor
LD_LIBRARY_PATH="" "$build_dir/app/chartbridge" render "$chart" --data "$data" -o "$work/built.png"
cmp "$work/built.png" "$work/command.png" || fail "the packaged command draws something else"

echo "-- a host with find_package"
quietly "the host cannot be configured" "$cmake" -S "$source_dir/examples/host" -B "$work/host" \
  -G Ninja -D "CMAKE_CXX_COMPILER=$compiler" -D "CMAKE_PREFIX_PATH=$root/usr"
quietly "the host cannot be built" "$cmake" --build "$work/host"
"$work/host/chart_host" "$chart" "$data" "$work/host.png"
cmp "$work/built.png" "$work/host.png" || fail "the host draws something else"

echo "-- find_package refuses another major version"
mkdir "$work/next"
cat >"$work/next/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.25)
project(next LANGUAGES CXX)
find_package(chartbridge $((major + 1)) CONFIG QUIET)
if(chartbridge_FOUND)
  message(FATAL_ERROR "found")
endif()
find_package(chartbridge $version EXACT CONFIG REQUIRED)
CMAKE
quietly "versions of find_package" "$cmake" -S "$work/next" -B "$work/next/build" -G Ninja \
  -D "CMAKE_CXX_COMPILER=$compiler" -D "CMAKE_PREFIX_PATH=$root/usr"

echo "-- a host with pkg-config"
export PKG_CONFIG_PATH="$libraries/pkgconfig"
[[ "$(pkg-config --modversion chartbridge chartbridge-host chartbridge-guard | sort -u)" == \
  "$version" ]] || fail "pkg-config --modversion"
[[ -f "$(pkg-config --variable=guard chartbridge-host)" ]] || fail "pkg-config --variable=guard"
jar="$(pkg-config --variable=jar chartbridge-host)"
[[ -f "$jar" ]] || fail "pkg-config --variable=jar"
read -r -a flags < <(pkg-config --cflags --libs chartbridge-host chartbridge-guard)
quietly "the host cannot be compiled" "$compiler" -std=c++17 "-DCHARTBRIDGE_JAR=\"$jar\"" \
  "$source_dir/examples/host/chart_host.cpp" "${flags[@]}" -o "$work/pkg_host"
"$work/pkg_host" "$chart" "$data" "$work/pkg_host.png"
cmp "$work/built.png" "$work/pkg_host.png" || fail "the host draws something else"

echo "-- removed without a trace"
unset LD_LIBRARY_PATH
# shellcheck disable=SC2086 # the names are words
quietly "dpkg --purge" own_dpkg --purge $names
[[ -z "$(find "$root" -type f -o -type l)" ]] || fail "left behind: $(find "$root" -type f)"

echo "PASSED"
