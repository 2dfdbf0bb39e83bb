#!/usr/bin/env bash
# Runs tests as a machine has them that is not the developer's: by an ordinary user of an empty home, without the
# machine's identity, in a foreign locale. The machine itself is not changed: all that is in a mount namespace.
# Usage: elsewhere.sh BUILD-FOLDER TEST-PROGRAM...
set -euo pipefail

if [ "${1:-}" != --inside ]; then
  [ "$(id -u)" -eq 0 ] || { echo 'only root can become another user' >&2; exit 1; }
  place=$(mktemp -d)
  trap 'rm -rf "$place"' EXIT
  unshare --mount "$0" --inside "$place" "$@"
  exit
fi

place=$2
build=$(cd "$3" && pwd)
shift 3
user=20001 # has no name either
locale=tr_TR.UTF-8 # whose capital of i is no I

touch "$place/no-identity"
for file in /etc/machine-id /var/lib/dbus/machine-id; do
  [ ! -e "$file" ] || mount --bind "$place/no-identity" "$file"
done
mkdir -p "$place/locales" "$place/home"
localedef --no-warnings=ascii -i "${locale%.*}" -f UTF-8 "$place/locales/$locale" || [ $? -eq 1 ]
chmod 711 "$place"
chown "$user:$user" "$place/home"

labels=$(IFS='|'; printf '^(%s)$' "$*")
# What needs a server runs as an ordinary user anyway.
mapfile -t commands < <(ctest --test-dir "$build" -N -V -L "$labels" -E '_postgres$' -FA '.*' | sed -n 's/^[0-9]*: Test command: //p')
[ ${#commands[@]} -gt 0 ] || { echo 'no tests' >&2; exit 1; }
# One command a line; the output of those that fail.
printf '%s\n' "${commands[@]}" | tr -d '"' | xargs -P "$(nproc)" -d '\n' -n 1 \
  setpriv --reuid="$user" --regid="$user" --clear-groups --no-new-privs \
  env -i PATH="$PATH" HOME="$place/home" LOCPATH="$place/locales" LC_ALL="$locale" QT_QPA_PLATFORM=offscreen \
  KEL_DATOS="$PWD/tests/data" bash -c '
    cd "$HOME"
    output=$(timeout 300 $1 2>&1) && status=ok || { status=FAILED; printf "%s\n" "$output" | grep -v "^PASS"; }
    printf "%s %s\n" "$status" "${1##*/}"
    printf "%s\n" "$output" | grep -A1 "^SKIP" || true
    [ $status = ok ]' -
