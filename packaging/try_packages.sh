#!/usr/bin/env bash
# Installs the packages into a copy of this system that is thrown away and does not have the project's folder, and does
# there what their users do: build the example, run it, verify services, start the host, take the packages away again.
# The copy is an overlay in a mount namespace of its own, so that dependencies are real ones and nothing here changes.
# Usage: try_packages.sh PROJECT-FOLDER PACKAGE.deb... | try_packages.sh --check
# With KEL_OLD_PACKAGES=FOLDER the packages of an earlier version are there first, used, and upgraded.
set -euo pipefail

lacks() {
  printf 'Falta %s\n' "$*" >&2
  exit 1
}

if [ "${1:-}" != --inside ]; then
  sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || lacks 'sudo, o ser root: para montar una copia del sistema'
    sudo=(sudo)
  fi
  [ -e /proc/self/status ] || lacks '/proc: mount -t proc proc /proc'
  [ -c /dev/null ] && [ -c /dev/urandom ] || lacks '/dev: mount --rbind el de fuera, o mknod'
  "${sudo[@]}" unshare --mount true 2>/dev/null ||
    lacks 'permiso para montar (CAP_SYS_ADMIN, unshare --mount): úsese una máquina, o un contenedor con más permisos'
  place=$(mktemp -d)
  trap 'rmdir "$place"' EXIT
  "${sudo[@]}" unshare --mount "$0" --inside "$place" "$@"
  exit
fi

place=$2
project=$3
shift 3
mount -t tmpfs tmpfs "$place" || lacks 'permiso para montar sistemas de archivos en memoria (tmpfs)'
mkdir "$place"/{upper,work,root}
root=$place/root
mount -t overlay overlay -o "lowerdir=/,upperdir=$place/upper,workdir=$place/work" "$root" ||
  lacks 'overlayfs en el núcleo, o una raíz sobre la que se pueda montar'
if [ "$project" = --check ]; then
  exit
fi
mount --rbind /proc "$root/proc"
mount --rbind /dev "$root/dev"
mkdir -p "$root$project" "$root/try/old"
mount -t tmpfs tmpfs "$root$project"
cp "$@" "$root/try"
if [ -n "${KEL_OLD_PACKAGES:-}" ]; then
  cp "$KEL_OLD_PACKAGES"/*.deb "$root/try/old"
fi

chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/try/home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen \
  XDG_RUNTIME_DIR=/try/home bash -euo pipefail <<'INSIDE'
cd /try
mkdir -m 700 home
packages='kel-host libkel-dev libkel1'
dpkg --purge $packages >log 2>&1 || true

# What the user has, but for the program's own: databases, copies, settings.
users_files() {
  find home -type f ! -name '*-shm' ! -name '*-wal' | sort
}

if [ -n "$(ls old)" ]; then
  dpkg --install old/*.deb >log 2>&1 || { cat log; exit 1; }
  timeout --preserve-status 15 kel-host abrir --nodo 20 --accion agregar
  kel-host copia home/copia.db >log
  users_files >before
fi
dpkg --install ./*.deb >log 2>&1 || { cat log; exit 1; }
ldconfig -p >log
grep -q libKelPlataforma.so.1 log || { echo 'the libraries are not in the cache of the loader'; exit 1; }
if [ -n "$(ls old)" ]; then
  timeout --preserve-status 15 kel-host abrir --nodo 20 --accion agregar
  kel-host comprobar
  kel-host restaurar home/copia.db >log
  missing=$(users_files | comm -23 before -)
  [ -z "$missing" ] || { echo "the upgrade lost: $missing"; exit 1; }
  users_files >before
fi
desktop-file-validate /usr/share/applications/kel-host.desktop
appstreamcli validate --no-net --pedantic /usr/share/metainfo/invalid.kel.host.metainfo.xml
kel-host --version
man -w kel-host >log
# A dialog, found by the packages' registry; it ends with the signal.
timeout --preserve-status 15 kel-host --demo abrir --nodo 20 --accion agregar

cmake -S /usr/share/doc/libkel-dev/examples/minimal-host -B host -G Ninja >log
cmake --build host >log || { cat log; exit 1; }
timeout 60 host/minimal-host --demostrar 2>&1 | tee log
grep -q 'the newest country is Atlántida' log
timeout 60 kel-host verificar-servicios host/libminimal-services.so Oficina.cPrincipal | tail -1

cmake -S /usr/share/doc/libkel-dev/examples/python-host -B python -G Ninja >log
cmake --build python >log || { cat log; exit 1; }
rm oficina.db
timeout 60 python3 /usr/share/doc/libkel-dev/examples/python-host/host.py python/libkel-python.so --demostrar 2>&1 | tee log
grep -q 'the newest country is Atlántida' log

files=$(dpkg -L $packages)
dpkg --purge $packages >log 2>&1 || { cat log; exit 1; }
for file in $files; do
  [ ! -f "$file" ] || { echo "left behind: $file"; exit 1; }
done
if [ -f before ]; then
  missing=$(users_files | comm -23 before -)
  [ -z "$missing" ] || { echo "the purge took the user's files: $missing"; exit 1; }
fi
INSIDE
printf 'Paquetes instalados, usados y quitados en una copia del sistema\n'
