#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# scripts/setup while another package manager is at work: it says so, waits, and gives up in the end.
# apt-get is the real one, with package lists, locks and one package of its own, and with a dpkg that
# does nothing.
#   setup_test.bash SOURCE_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8

setup="$1/scripts/setup"
work="$(mktemp -d)"
holder=""

clean_up() {
  [[ -z "$holder" ]] || kill "$holder" 2>/dev/null || true
  rm -rf "$work"
}
trap clean_up EXIT

fail() {
  echo "FAILED: $*" >&2
  cat "$work/output" >&2 || true
  exit 1
}

root="$work/root"
lists_lock="$root/var/lib/apt/lists/lock"
frontend_lock="$root/var/lib/dpkg/lock-frontend"
archives_lock="$root/var/cache/apt/archives/lock"

mkdir -p "$root"/etc/apt/{apt.conf.d,preferences.d,sources.list.d,trusted.gpg.d} \
  "$root"/var/{lib/apt/lists/partial,cache/apt/archives/partial,lib/dpkg,log/apt} \
  "$work"/{bin,package/DEBIAN,archive}
touch "$root/var/lib/dpkg/status" "$lists_lock" "$frontend_lock" "$archives_lock"

# An archive with one of the packages that setup asks for.
cat >"$work/package/DEBIAN/control" <<'CONTROL'
Package: xauth
Version: 1
Architecture: all
Maintainer: nobody <nobody@chartbridge.invalid>
Description: nothing
CONTROL
dpkg-deb --build "$work/package" "$work/archive/xauth.deb" >/dev/null
{
  cat "$work/package/DEBIAN/control"
  echo "Filename: ./xauth.deb"
  echo "Size: $(stat --format=%s "$work/archive/xauth.deb")"
  echo "SHA256: $(sha256sum "$work/archive/xauth.deb" | cut -d ' ' -f 1)"
} >"$work/archive/Packages"
echo "deb [trusted=yes] file:$work/archive ./" >"$root/etc/apt/sources.list"

cat >"$work/apt.conf" <<CONF
Dir "$root";
Dir::State::status "$root/var/lib/dpkg/status";
Dir::Bin::dpkg "$work/bin/dpkg";
APT::Sandbox::User "";
CONF
export APT_CONFIG="$work/apt.conf"

# Everything but that package is there, and everybody is root.
cat >"$work/bin/dpkg-query" <<'SCRIPT'
#!/bin/sh
for package; do :; done
[ "$package" = xauth ] || printf installed
SCRIPT
printf '#!/bin/sh\nexec "$@"\n' >"$work/bin/sudo"
printf '#!/bin/sh\necho "$*" >>"%s/dpkg-calls"\n' "$work" >"$work/bin/dpkg"
chmod +x "$work"/bin/*
export PATH="$work/bin:$PATH"

# hold LOCK: takes it as apt-get does, until `release`.
hold() {
  rm -f "$work/held"
  perl -e 'use Fcntl;
    open(my $file, "+<", $ARGV[0]) or die;
    my $all = pack("s s x4 q q i x4", F_WRLCK, 0, 0, 0, 0);
    fcntl($file, F_SETLK, $all) or die "not locked: $!";
    open(my $held, ">", $ARGV[1]) or die;
    close($held);
    sleep 300' "$1" "$work/held" &
  holder=$!
  until [[ -e "$work/held" ]]; do
    kill -0 "$holder" || fail "$1 cannot be locked"
    sleep 0.1
  done
}

release() {
  kill "$holder"
  wait "$holder" || true
  holder=""
}

# expect PATTERN: a line of the output.
expect() {
  grep -q -E -- "$1" "$work/output" || fail "it does not say: $1"
}

# Whether dpkg was asked to install the package since the calls were removed.
is_installed() {
  grep -q -s -- '--unpack.*xauth.deb' "$work/dpkg-calls"
}

echo "-- nobody else is there"
"$setup" >"$work/output" 2>&1 || fail "exit code $?"
! grep -q waiting "$work/output" || fail "it waits for nobody"
expect '^setup: done$'
is_installed || fail "nothing was installed"

for lock in "$lists_lock" "$frontend_lock" "$archives_lock"; do
  echo "-- ${lock#"$root"}: waits until it is free"
  rm -f "$work/dpkg-calls"
  hold "$lock"
  : >"$work/output"
  "$setup" >>"$work/output" 2>&1 &
  running=$!
  for ((i = 0; i < 600; ++i)); do
    ! grep -q waiting "$work/output" || break
    sleep 0.1
  done
  kill -0 "$running" || fail "it did not wait"
  ! is_installed || fail "it installs meanwhile"
  expect "^setup: waiting for another package manager, 600 seconds at most: lock $lock\. It is held by process $holder \(perl\)\$"
  release
  wait "$running" || fail "exit code $?"
  [[ "$(grep -c waiting "$work/output")" -eq 1 ]] || fail "it says so more than once"
  ! grep -q '^E: ' "$work/output" || fail "apt-get's complaint is shown"
  expect '^setup: done$'
  is_installed || fail "nothing was installed"

  echo "-- ${lock#"$root"}: gives up in the end"
  hold "$lock"
  status=0
  "$setup" --wait 1 >"$work/output" 2>&1 || status=$?
  [[ "$status" -eq 1 ]] || fail "exit code $status"
  expect "^setup: gave up after 1 seconds, another package manager is still at work: lock $lock\. It is held by process $holder \(perl\); run this again"
  ! grep -q '^setup: done$' "$work/output" || fail "it says that it is done"
  release
done

echo "-- what else goes wrong is said at once"
rm "$work/archive/xauth.deb"
rm -f "$root"/var/cache/apt/archives/*.deb
status=0
"$setup" >"$work/output" 2>&1 || status=$?
[[ "$status" -eq 100 ]] || fail "exit code $status"
expect '^E: '
! grep -q -E 'waiting|done' "$work/output" || fail "it waits, or is done"

echo "-- options"
for seconds in "" -1 1.5 ten 1000000; do
  status=0
  "$setup" --wait "$seconds" >"$work/output" 2>&1 || status=$?
  [[ "$status" -eq 2 ]] || fail "--wait '$seconds': exit code $status"
  expect '^setup: --wait takes whole seconds, 999999 at most$'
done

echo "PASSED"
