#!/bin/sh
# Usage: exported_names.sh <nm> <library> <header>...
#
# The library exports the functions that the headers declare, those behind extern "C" by their plain names and the others
# decorated; the typeinfo of the classes that they mark, by which exceptions are caught; and nothing else.
nm=$1 library=$2
shift 2
directory=$(mktemp -d) || exit 1
trap 'rm -r "$directory"' EXIT

# Lines "C name" and "C++ name".
awk '
    /^extern "C" \{/ { language = "C" }
    /^\} \/\* extern "C"/ { language = "C++" }
    /^ORV_API/ { sub(/\(.*/, ""); print language, $NF }
    /^namespace / { space = space $2 "::" }
    /^\} \/\/ namespace / { sub($4 "::$", "", space) }
    /^class ORV_API/ { print "C++ typeinfo for " space $3 }' "$@" | sort > "$directory/declared"

# Exported functions and data; the absolute symbols are version names.
exports() {
    case $library in
    *.dll) "${nm%nm}objdump" -p "$library" | sed -n '/Name Pointer\] Table/,/^$/s/.*\[ *[0-9]*\] //p' ;;
    *) "$nm" -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' ;;
    esac
}
exports |
    while read -r name; do
        case $name in
        _Z*) echo "C++ $(c++filt "$name" | sed 's/(.*//')" ;;
        *) echo "C $name" ;;
        esac
    done | sort > "$directory/exported"

[ -s "$directory/declared" ] || { echo "no declarations found in $*"; exit 1; }
if diff -U0 "$directory/declared" "$directory/exported" > "$directory/difference"; then
    echo "$(wc -l < "$directory/exported") names are exported"
else
    echo "Declared (-) and exported (+) names differ:"
    grep '^[-+][^-+]' "$directory/difference"
    exit 1
fi

# Each name carries a version, so that programs say which library they were linked with. (Windows knows none.)
case $library in *.dll) ;; *) unversioned=$("$nm" -D --defined-only "$library" | awk '$2 != "A" && $3 !~ /@@ORVELLA_[0-9.]+$/ { print $3 }') ;; esac
[ -z "$unversioned" ] || { echo "without a symbol version: $unversioned"; exit 1; }

# Both faces are complete: a name more or less is a decision, not an accident.
for face in Orv:98 ZEB_:84; do
    found=$(grep -c " ${face%:*}" "$directory/exported")
    [ "$found" = "${face#*:}" ] || { echo "$found names begin with ${face%:*}, not ${face#*:}"; exit 1; }
done
