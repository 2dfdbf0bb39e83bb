#!/usr/bin/env bash
# A published library exports the names that its headers mark, and nothing else: every symbol belongs to a marked class or
# function, and every marked one is there. Instances of other libraries' templates, which any library may share, are nobody's.
# Usage: exported_symbols.sh LIBRARY HEADER...
set -euo pipefail

library=$1
shift
marked=$(sed -nE 's/^ *(class|struct) [A-Z]+_EXPORT (\w+).*/\2/p; s/^ *[A-Z]+_EXPORT [^(]* [*&]?(\w+)\(.*/\1/p' "$@" | sort -u)
[ -n "$marked" ] || { echo "no header marks a name: $*"; exit 1; }

namespaces=$(sed -nE 's/^namespace (\w+) \{.*/\1/p' "$@" | sort -u | paste -sd '|')
symbols=$(nm -DC --defined-only "$library" | sed -E 's/^[0-9a-f]* //' |
  grep -E "^[^VWu] |^[VWu] ((vtable|typeinfo|typeinfo name|guard variable) for )?($namespaces)::" |
  grep -vxE '. (__bss_start|_edata|_end)') # The linker's own.
# What a symbol is called: without its kind, its parameters and what the compiler makes of a class.
called=$(sed -E 's/^. //; s/^(vtable|typeinfo|typeinfo name|guard variable|non-virtual thunk|VTT) (for|to) //; s/\(.*//' \
  <<<"$symbols" | grep -oE '[^ ]+$')

wrong=0
while read -r name; do
  tr -s : '\n' <<<"$name" | sed 's/\[abi.*//' | grep -qxFf <(printf '%s\n' "$marked") ||
    { echo "exported, but in no published header: $name"; wrong=1; }
done <<<"$called"
for name in $marked; do
  grep -qE "(^|::)$name(::|\[|$)" <<<"$called" || { echo "in a published header, but not exported: $name"; wrong=1; }
done
exit "$wrong"
