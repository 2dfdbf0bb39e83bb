#!/usr/bin/env bash
# Installs the packages into a copy of this system that is thrown away and does not have the project's folder, and does
# there what their users do: build the example, run it, verify services, start the host, take the packages away again.
# The copy is an overlay in a mount namespace of its own, so that dependencies are real ones and nothing here changes.
# Usage: try_packages.sh PROJECT-FOLDER PACKAGE.deb...
set -euo pipefail

if [ "${1:-}" != --inside ]; then
  place=$(mktemp -d)
  trap 'rmdir "$place"' EXIT
  sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  "${sudo[@]}" unshare --mount "$0" --inside "$place" "$@"
  exit
fi

place=$2
project=$3
shift 3
mount -t tmpfs tmpfs "$place"
mkdir "$place"/{upper,work,root}
root=$place/root
mount -t overlay overlay -o "lowerdir=/,upperdir=$place/upper,workdir=$place/work" "$root"
mount --rbind /proc "$root/proc"
mount --rbind /dev "$root/dev"
mkdir -p "$root$project" "$root/try"
mount -t tmpfs tmpfs "$root$project"
cp "$@" "$root/try"

chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/try/home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen \
  XDG_RUNTIME_DIR=/try/home bash -euo pipefail <<'INSIDE'
cd /try
mkdir -m 700 home
packages='kel-host libkel-dev libkel1'
dpkg --purge $packages >log 2>&1 || true
dpkg --install ./*.deb >log 2>&1 || { cat log; exit 1; }
ldconfig -p >log
grep -q libKelPlataforma.so.1 log || { echo 'the libraries are not in the cache of the loader'; exit 1; }
desktop-file-validate /usr/share/applications/kel-host.desktop
appstreamcli validate --no-net --pedantic /usr/share/metainfo/invalid.kel.host.metainfo.xml
kel-host --version
# A dialog, found by the packages' registry; it ends with the signal.
timeout --preserve-status 5 kel-host --demo abrir --nodo 20 --accion agregar

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
INSIDE
printf 'Paquetes instalados, usados y quitados en una copia del sistema\n'
