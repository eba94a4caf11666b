#!/bin/sh
# Usage: needed_libraries.sh <readelf, or objdump for Windows> <library>
#
# The library needs those of the language at run time, and no other. It asks for memory in three ways only, which the tests
# without memory know how to refuse. (A DLL has the language's libraries in it.)
case $2 in
*.dll) needed=$("$1" -p "$2" | sed -n 's/.*DLL Name: //p') allowed='KERNEL32\.dll|msvcrt\.dll' ;;
*)
    needed=$("$1" -d "$2" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
    allowed='lib(stdc\+\+\.so\.6|m\.so\.6|gcc_s\.so\.1|c\.so\.6)|ld-linux-(x86-64|aarch64)\.so\.[12]'
    ;;
esac
[ -n "$needed" ] || { echo "no dependencies found in $2"; exit 1; }
foreign=$(echo "$needed" | grep -Evx "$allowed")
[ -z "$foreign" ] || { echo "$2 needs" $foreign; exit 1; }
echo "needs only" $needed
case $2 in *.dll) exit ;; esac
memory=$("$1" --dyn-syms -W "$2" | grep ' UND ' | grep -Eo ' (_Zn[aw][A-Za-z0-9_]*|[a-z]*(alloc|memalign|mmap|sbrk))\b' | sort)
[ "$(echo $memory)" = "_ZnamRKSt9nothrow_t _Znwm malloc" ] || { echo "$2 asks for memory by" $memory; exit 1; }
