#!/usr/bin/env bash
# A published library exports the names that its headers mark, and nothing else: every symbol belongs to a marked class or
# function, and every marked one is there. Copies of the inline functions of the standard library and Qt, which any library
# may share, don't count.
# Usage: exported_symbols.sh LIBRARY HEADER...
set -euo pipefail

library=$1
shift
marked=$(sed -nE 's/^ *(class|struct) [A-Z]+_EXPORT (\w+).*/\2/p; s/^ *[A-Z]+_EXPORT [^(]*[ *&](\w+)\(.*/\1/p' "$@" | sort -u)
[ -n "$marked" ] || { echo "no header marks a name: $*"; exit 1; }

# Kind and qualified name, without what the compiler makes of a class, template arguments, parameters and result.
exported=$(nm -DC --defined-only "$library" | sed -E 's/^[0-9a-f]+ //
  s/ (vtable|typeinfo|typeinfo name|guard variable|non-virtual thunk|VTT) (for|to) / /
  :arguments
  s/<[^<>]*>//; t arguments
  s/\(.*//; s/\[abi:[^]]*\]//; s/^(.) (.* )?/\1 /' | grep -vE '^[WVu] (std::|__gnu_cxx::|[Qq]|operator)' | sort -u)

wrong=0
while read -r _ name; do
  tr -s : '\n' <<<"$name" | grep -qxFf <(printf '%s\n' "$marked") ||
    { echo "exported, but marked in no published header: $name"; wrong=1; }
done <<<"$exported"
for name in $marked; do
  grep -qE "[ :]$name(::|$)" <<<"$exported" || { echo "marked in a published header, but not exported: $name"; wrong=1; }
done
exit "$wrong"
