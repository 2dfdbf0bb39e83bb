#!/usr/bin/env bash
# The kit as a host's author meets it: installed into a clean folder that the build tree knows nothing of, its headers
# compiled one by one, the example built by CMake, run, and its services verified.
# Usage: installed_tree.sh BUILD-FOLDER COMPILER FLAGS README
set -euo pipefail

build=$1
compiler=$2
flags=$3
readme=$4
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
kel=$place/kel

fail() {
  printf 'FAIL: %s\n' "$*" >&2
  exit 1
}

# quietly COMMAND...: its output only when it fails.
quietly() {
  "$@" >"$place/log" 2>&1 || {
    cat "$place/log" >&2
    fail "$*"
  }
}

quietly cmake --install "$build" --prefix "$kel"
! grep -rIl "$(dirname "$readme")" "$kel" || fail "the build tree is named in these files"
programs=$(find "$kel" -type f \( -name '*.so*' -o -path '*/bin/*' \))
# shellcheck disable=SC2086
searched=$(readelf -d $programs | sed -nE 's/.*r(un)?path: \[(.*)\]/\2/p' | tr : '\n')
[ "$(wc -l <<<"$searched")" -eq "$(wc -l <<<"$programs")" ] && ! grep -vE '^\$ORIGIN/' <<<"$searched" ||
  fail "libraries are looked for in these folders: $searched"

export PKG_CONFIG_PATH=$kel/lib/pkgconfig
options=$(pkg-config --cflags kel)
headers=$(cd "$kel/include/Kel" && find . -name '*.h' | sed 's|^\./||')
[ "$(wc -w <<<"$headers")" -ge 27 ] || fail "headers are missing: $headers"
# shellcheck disable=SC2016,SC2086
xargs -P 2 -I{} sh -c 'printf "#include <%s>\n#include <%s>\n" {} {} |
  "$0" -std=c++20 -fPIC -fsyntax-only -Wall -Wextra -Werror $1 -x c++ - || { echo "{} does not compile alone"; exit 255; }' \
  "$compiler" "$options" <<<"$headers"

# Every file that the contract's pages name is there: a header of the kit, or beside them.
pages=$kel/share/doc/libkel-dev
for cited in $(grep -ohE '`[A-Za-z/-]+\.(h|md|txt|cpp|py)`' "$pages"/*.md | tr -d '`' | sort -u); do
  [ -f "$kel/include/Kel/$cited" ] || [ -f "$pages/$cited" ] || [ -n "$(find "$kel/include" "$pages/examples" -name "$cited")" ] ||
    fail "a page names a file that the kit lacks: $cited"
done

# By pkg-config, and by CMake.
printf '%s\n' '#include <database/Database.h>' '#include <documents/letter/Paper.h>' \
  'int main() { return database::CreateConnection({}) && documents::UsualPaper().width > 0 ? 0 : 1; }' >"$place/one.cpp"
# shellcheck disable=SC2046,SC2086
quietly "$compiler" -std=c++20 -fPIC $flags "$place/one.cpp" -o "$place/one" $(pkg-config --cflags --libs kel)
printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(One LANGUAGES CXX)' 'find_package(Kel 1 CONFIG REQUIRED)' \
  'add_executable(one one.cpp)' 'target_link_libraries(one Kel::Datos Kel::Documentos)' >"$place/CMakeLists.txt"
quietly cmake -S "$place" -B "$place/built" -G Ninja -DCMAKE_PREFIX_PATH="$kel" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_CXX_FLAGS="$flags -fPIC"
quietly cmake --build "$place/built"
cp -r "$kel/share/doc/libkel-dev/examples" "$place/examples"
quietly cmake -S "$place/examples/minimal-host" -B "$place/host" -G Ninja -DCMAKE_PREFIX_PATH="$kel" \
  -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags -Wall -Wextra -Wpedantic -Werror"
quietly cmake --build "$place/host"

unset KEL_CLASES
export LC_ALL=C.UTF-8 HOME=$place XDG_CONFIG_HOME=$place XDG_DATA_HOME=$place XDG_DATA_DIRS=$kel/share QT_QPA_PLATFORM=offscreen
cd "$place"
quietly timeout 60 "$place/host/minimal-host" --demostrar
said=$(grep -E '^(contract|the newest)' "$place/log" || true)
[ "$said" = $'contract 1.0\nthe newest country is Atlántida' ] || fail "the example says: $said"
for class in cPrincipal cListas; do
  quietly timeout 60 "$kel/bin/kel-host" verificar-servicios "$place/host/libminimal-services.so" "Oficina.$class"
done

# A host that was written for the first release.
rm oficina.db
quietly cmake -S "$(dirname "$0")/host-1.0" -B "$place/old" -G Ninja -DCMAKE_PREFIX_PATH="$kel" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_CXX_FLAGS="$flags"
quietly cmake --build "$place/old"
quietly timeout 60 "$place/old/host-1.0" --demostrar
grep -q 'the newest country is Atlántida' "$place/log" || fail "the host of the first release says: $(cat "$place/log")"

# What the README shows is the example, to the letter.
shown=$(awk '/^```cpp$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$readme")
[ -n "$shown" ] && [[ $(<"$place/examples/minimal-host/main.cpp") == *"$shown"* ]] || fail "the README's host is another one"
