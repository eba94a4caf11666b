#!/bin/sh
# Usage: interface.sh <baseline> <library with debug information> [--renew]
#
# What programs are linked with is what it was: functions with their arguments, records with their members, symbols with
# their versions. A change is a decision: --renew writes the baseline anew. (Debian package abigail-tools.)
baseline=$1 library=$2
describe="--no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --exported-interfaces-only"
if [ "$3" = --renew ]; then
    abidw $describe "$library" >"$baseline"
    exit
fi
functions=$(abidw $describe "$library" | grep -c "<function-decl.* elf-symbol-id='\(Orv\|ZEB_\|_Z\)") # 0: nothing to compare
echo "$functions functions are described"
[ "$functions" = "$(grep -c '<elf-symbol .*func-type' "$baseline")" ] || exit 1
abidiff --no-show-locs "$baseline" "$library"
