#!/bin/sh
# Usage: kernel_objects.sh <nm> <readelf> <object>...
#
# A kernel object is compiled for one instruction-set level, so nothing in it may be used at another: it defines one
# external symbol, a table in the namespace of its level; nothing weak, of which the linker keeps any copy; and no code
# that runs when the library is loaded.
nm=$1 readelf=$2
shift 2
failures=0
fail() {
    echo "$object: $*"
    failures=$((failures + 1))
}

for object; do
    level=$(expr "$object" : '.*orvella_kernels_\([a-z0-9]*\)')
    defined=$("$nm" -gC --defined-only "$object" | cut -d" " -f2-)
    case $defined in
    "D kel::$level::"* | "R kel::$level::"*) ;;
    *) fail "does not begin with a table in kel::$level:" $defined ;;
    esac
    [ "$(echo "$defined" | wc -l)" = 1 ] || fail "defines more than its table:" $defined

    foreign=$("$nm" -u "$object" | grep -Evw 'U (memcpy|memmove|memset|_GLOBAL_OFFSET_TABLE_|_ZN3kel(13prefetchAhead|9pacedFrom|13planeProducts|16rgb8ToY8Products)E)')
    [ -z "$foreign" ] || fail "needs code from elsewhere:" $foreign

    "$readelf" -SW "$object" | grep -E '\.(init_array|ctors|preinit_array)' && fail "runs code at load time"
done
[ $# -gt 0 ] || { echo "no objects given"; exit 1; }
echo "$# kernel objects, $failures faults"
exit $((failures > 0))
