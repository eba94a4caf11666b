#!/bin/sh
# Usage: unaligned_moves.sh <objdump> <object>...
#
# On Windows the stack is aligned to 16 bytes, which g++ forgets: no move of a vector of 32 bytes or more may ask for more.
objdump=$1
shift
[ $# -gt 0 ] || { echo "no objects given"; exit 1; }
listing=$("$objdump" -d "$@") || exit 1
moves=$(echo "$listing" | grep -Ec 'vmov(dqu|up)[^,]*.*%[yz]mm')
aligned=$(echo "$listing" | grep -E 'vmov(dqa|ap|ntdq|ntp).*%[yz]mm.*\(|vmov(dqa|ap|ntdq|ntp).*\(.*%[yz]mm')
[ -z "$aligned" ] || { echo "aligned moves:"; echo "$aligned" | head; exit 1; }
[ "$moves" -gt 0 ] || { echo "no vectors of 32 bytes in $# objects"; exit 1; }
echo "$moves moves of vectors, none aligned"
