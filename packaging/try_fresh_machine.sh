#!/usr/bin/env bash
# Runs the README's two commands on a machine that has nothing yet: a bare Debian 12 in a folder that is thrown away,
# without an identity, a screen, a locale or the folders of a desktop, by an ordinary user with sudo, in a fresh clone of
# what is committed. Nothing of this machine is used but its kernel and network. Takes two whole builds.
# Usage: try_fresh_machine.sh PROJECT-FOLDER [MIRROR]
set -euo pipefail

if [ "${1:-}" != --inside ]; then
  place=$(mktemp -d)
  sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  trap '"${sudo[@]}" rm -rf --one-file-system "$place"' EXIT
  "${sudo[@]}" unshare --mount --pid --fork --kill-child "$0" --inside "$place" "$@"
  exit
fi

root=$2/root
project=$3
mirror=${4:-http://deb.debian.org/debian}
chmod 755 "$2"

debootstrap --variant=minbase --include=sudo bookworm "$root" "$mirror" >"$2/debootstrap.log" ||
  { tail "$2/debootstrap.log"; exit 1; }
rm -f "$root/etc/machine-id" "$root/var/lib/dbus/machine-id"
chroot "$root" useradd --create-home --shell /bin/bash ana
echo 'ana ALL=(ALL) NOPASSWD: ALL' >"$root/etc/sudoers.d/ana"
printf '127.0.0.1 localhost %s\n' "$(uname -n)" >"$root/etc/hosts"
git -c safe.directory="$project" clone --quiet --no-local "$project" "$root/home/ana/kel"
chroot "$root" chown -R ana:ana /home/ana/kel
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev"
printf 'Un Debian 12 desnudo en %d s\n' "$SECONDS"

for command in run test; do
  SECONDS=0
  chroot --userspec=ana:ana "$root" env -i USER=ana HOME=/home/ana PATH=/usr/local/bin:/usr/bin:/bin LC_ALL=C \
    ${http_proxy:+http_proxy="$http_proxy"} bash -c "cd ~/kel && ./kel $command </dev/null"
  printf './kel %s en un Debian 12 desnudo: %d s\n' "$command" "$SECONDS"
done
