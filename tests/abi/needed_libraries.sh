#!/bin/sh
# Usage: needed_libraries.sh <readelf> <library>
#
# The library needs those of the language at run time, and no other.
needed=$("$1" -d "$2" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
[ -n "$needed" ] || { echo "no dependencies found in $2"; exit 1; }
foreign=$(echo "$needed" | grep -Evx 'lib(stdc\+\+\.so\.6|m\.so\.6|gcc_s\.so\.1|c\.so\.6)|ld-linux-(x86-64|aarch64)\.so\.[12]')
[ -z "$foreign" ] || { echo "$2 needs" $foreign; exit 1; }
echo "needs only" $needed
