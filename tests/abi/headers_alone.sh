#!/usr/bin/env bash
# Usage: headers_alone.sh <include directory>...
#
# Each public header compiles by itself, in every language that it is for, by g++ and clang, with every warning an error.
set -uo pipefail
includes=("${@/#/-I}")
directory=$1/orvella
compilations=0 failures=0
alone() { # standard, header, compiler...
    local standard=$1 header=$2 language=c++
    shift 2
    [[ $standard = c++* ]] || language=c
    compilations=$((compilations + 1))
    echo "#include \"$header\"" | "$@" -x $language -std="$standard" -fsyntax-only -Werror "${includes[@]}" - ||
        { echo "$header, $standard, by $1"; failures=$((failures + 1)); }
}
gnu=(-Wall -Wextra -pedantic -Wconversion -Wsign-conversion -Wshadow -Wundef -Wcast-align -Wcast-qual -Wformat=2
    -Wdouble-promotion -Wredundant-decls -Wmissing-declarations -Wlogical-op -Wduplicated-cond -Wduplicated-branches
    -Wnull-dereference)
gnu_c=("${gnu[@]}" -Wstrict-prototypes -Wc++-compat)
# Not -Wuseless-cast: what is useless here is none where size_t has 32 bits.
gnu_cpp=("${gnu[@]}" -Wold-style-cast -Wextra-semi -Wzero-as-null-pointer-constant -Wnon-virtual-dtor
    -Woverloaded-virtual -Wsuggest-override)
# Not warnings about what older standards do not have, about padding, or that a class has its functions in the header.
clang=(-Weverything -Wno-c++98-compat -Wno-c++98-compat-pedantic -Wno-pre-c++17-compat -Wno-pre-c++20-compat
    -Wno-padded -Wno-weak-vtables -Wno-declaration-after-statement)

for name in orv.h zeb.h; do
    for standard in c99 c11 c17; do
        alone $standard "$directory/$name" gcc "${gnu_c[@]}"
        alone $standard "$directory/$name" clang-14 "${clang[@]}"
    done
done
for header in "$directory"/*.h* "$directory"/cpp/*.hpp; do
    case ${header#"$directory"/} in
    orvella.hpp | cpp/*) standards=(20 2b) ;;
    *) standards=(11 14 17 20 2b) ;;
    esac
    for standard in "${standards[@]}"; do
        alone "c++$standard" "$header" g++ "${gnu_cpp[@]}"
        alone "c++$standard" "$header" clang++-14 "${clang[@]}"
    done
done
echo "$compilations compilations, $failures failures"
[ $compilations -gt 0 ] && exit $((failures > 0))
