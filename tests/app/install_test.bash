#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Installs the build into a fresh folder, moves that folder, and uses what is in it: the command,
# and a host that is built with find_package(chartbridge).
#   install_test.bash BUILD_FOLDER SOURCE_FOLDER CMAKE CXX_COMPILER
set -euo pipefail

build_dir="$1"
source_dir="$2"
cmake="$3"
compiler="$4"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
export XDG_CACHE_HOME="$work/cache"
mkdir "$XDG_CACHE_HOME"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

expect_png() {
  [[ "$(head -c 4 "$1" | tail -c 3)" == PNG ]] || fail "$1 is no PNG picture"
}

"$cmake" --install "$build_dir" --prefix "$work/first" >"$work/install.log" ||
  { cat "$work/install.log"; fail "cmake --install"; }

echo "-- the public headers, and no others"
(cd "$work/first/include/chartbridge" && find . -type f | LC_ALL=C sort) >"$work/headers"
diff "$work/headers" - <<'HEADERS' || fail "the installed headers are not the public ones"
./bridge/Export.h
./bridge/JAccessor.h
./bridge/JException.h
./bridge/UnicodeConverter.h
./chart/ViZEditor.h
./convert/VizConverter.h
./convert/graphBoardConverter.h
./export/ExAccessor.h
./guard/jniguard.h
./host/ClassArchive.h
./host/DebugOutput.h
./host/JvmSettings.h
./host/JvmThreads.h
./host/LocalFrame.h
./host/TemplateCallback.h
./json/jsonEditor.h
./platform/ChartBase.h
./platform/ChartTransformer.h
./platform/CriticalSection.h
./platform/JNIAccessor.h
./platform/TESKMB.h
./platform/TeskJVM.h
./tree/TreeEditor.h
HEADERS

echo "-- the manual pages and the completion"
[[ -s "$work/first/share/man/man1/chartbridge-render.1.gz" ]] || fail "no manual page"
for completion in bash-completion/completions/chartbridge zsh/site-functions/_chartbridge \
  fish/vendor_completions.d/chartbridge.fish; do
  [[ -s "$work/first/share/$completion" ]] || fail "no $completion"
done

echo "-- a staged installation"
DESTDIR="$work/stage" "$cmake" --install "$build_dir" --prefix /opt/chartbridge \
  >"$work/install.log" || { cat "$work/install.log"; fail "cmake --install with DESTDIR"; }
"$work/stage/opt/chartbridge/bin/chartbridge" --version >"$work/version" || fail "no command"
[[ ! -e "$work/stage/opt/chartbridge/share/chartbridge/chartbridge.jsa" ]] ||
  fail "an archive for a place where nothing is"
rm -r "$work/stage"

echo "-- the class-data-sharing archive"
archive="$work/first/share/chartbridge/chartbridge.jsa"
[[ -s "$archive" ]] || fail "there is no archive"
render_titanic() {
  "$1/bin/chartbridge" render "$source_dir/examples/charts/titanic.gpl" \
    --data "$source_dir/examples/data/titanic.csv" -o "$2"
}
# expect_archive WHO: the run that was logged took its classes out of an archive.
expect_archive() {
  grep -q 'com.tesk.charteditor.ChartImager source: shared objects file' "$work/loaded.txt" ||
    fail "the archive is not used by $1"
  rm "$work/loaded.txt"
}
log="-Xlog:class+load:file=$work/loaded.txt"
TESK_JVM_OPTIONS="$log" render_titanic "$work/first" "$work/titanic.png"
expect_png "$work/titanic.png"
expect_archive "the command"
[[ -z "$(ls -A "$XDG_CACHE_HOME")" ]] || fail "an archive in the cache beside the installed one"

# From here on nothing of the build folder and of the first place may be needed.
mv "$work/first" "$work/moved"

echo "-- the command"
render_titanic "$work/moved" "$work/moved.png" 2>"$work/errors"
[[ ! -s "$work/errors" ]] || fail "an archive that does not fit is no news: $(cat "$work/errors")"
echo "-- an archive for the new place, in the cache"
for ((second = 0; second < 90; second++)); do
  compgen -G "$XDG_CACHE_HOME/chartbridge/*.jsa" >/dev/null && break
  sleep 1
done
TESK_JVM_OPTIONS="$log" render_titanic "$work/moved" "$work/moved.png"
expect_archive "the moved command"
cmp "$work/titanic.png" "$work/moved.png" || fail "the moved command draws something else"
mapfile -t libraries < <(find "$work/moved/lib"* -name '*.so')
[[ ${#libraries[@]} -eq 3 ]] || fail "not three libraries: ${libraries[*]}"
for file in "$work/moved/bin/chartbridge" "${libraries[@]}"; do
  ! ldd "$file" | grep -F "$build_dir" || fail "$file needs the build folder"
done

if [[ -e "$build_dir/viewer/page.html" ]]; then
  echo "-- a page"
  "$work/moved/bin/chartbridge" view "$source_dir/examples/charts/titanic.gpl" \
    --data "$source_dir/examples/data/titanic.csv" -o "$work/page.html"
  grep -q '<script id="chart-json"' "$work/page.html" || fail "the page has no chart"
  [[ -s "$work/moved/share/chartbridge/viewer/LICENSES.txt" ]] || fail "no licences of the viewer"
fi

echo "-- a host"
{
  "$cmake" -S "$source_dir/examples/host" -B "$work/host" -G Ninja \
    -D "CMAKE_CXX_COMPILER=$compiler" -D "CMAKE_PREFIX_PATH=$work/moved" \
    -D "CMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror"
  "$cmake" --build "$work/host"
} >"$work/host.log" 2>&1 || { cat "$work/host.log"; fail "the host cannot be built"; }
TESK_JVM_OPTIONS="$log" "$work/host/chart_host" "$source_dir/examples/charts/titanic.gpl" \
  "$source_dir/examples/data/titanic.csv" "$work/host.png"
expect_archive "a host, which finds that of the cache"
rm -r "$XDG_CACHE_HOME/chartbridge"
"$work/moved/share/chartbridge/make-class-archive"
TESK_JVM_OPTIONS="$log" "$work/host/chart_host" "$source_dir/examples/charts/titanic.gpl" \
  "$source_dir/examples/data/titanic.csv" "$work/host.png"
expect_archive "a host, after make-class-archive"
expect_png "$work/host.png"
cmp "$work/titanic.png" "$work/host.png" || fail "the host draws something else"
lines="$(wc -l <"$source_dir/examples/host/chart_host.cpp")"
[[ "$lines" -le 40 ]] || fail "the example host has $lines lines"

echo "-- pkg-config"
modules="$(find "$work/moved" -type d -name pkgconfig)"
[[ "$(PKG_CONFIG_PATH="$modules" pkg-config --variable=jar chartbridge-host)" -ef \
  "$work/moved/share/chartbridge/chartbridge-runtime.jar" ]] || fail "pkg-config names another place"

echo "-- each header by itself"
jni_include="$(sed -n -E 's/^chartbridge_JNI_INCLUDE_DIR:PATH=(.*)/\1/p' "$work/host/CMakeCache.txt")"
while read -r header; do
  echo "#include \"${header#./}\"" | "$compiler" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic \
    -Wshadow -Wconversion -Werror -I "$work/moved/include/chartbridge" -I "$jni_include" \
    -I "$jni_include/linux" -x c++ - || fail "$header cannot be included by itself"
done <"$work/headers"

echo "-- a host without a chart says so"
status=0
"$work/host/chart_host" /dev/null /dev/null "$work/none.png" 2>"$work/errors" || status=$?
[[ "$status" -eq 1 ]] || fail "exit code $status instead of 1"
grep -q '^not rendered' "$work/errors" || fail "no reason given"
[[ ! -e "$work/none.png" ]] || fail "a picture appeared"

echo "PASSED"
