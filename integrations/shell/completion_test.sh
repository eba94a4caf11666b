#!/usr/bin/env bash
# What the shells offer after a line that was begun, in each shell that is there.
#     completion_test.sh FOLDER-OF-THE-PROGRAM
set -euo pipefail
PATH=$1:$PATH
cd "$(dirname "$0")"
failures=0

in_bash() {
    # shellcheck disable=SC2016
    bash -c 'source ./orvella.bash
        read -ra COMP_WORDS <<<"$1"
        [[ $1 == *" " ]] && COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        _orvella
        printf "%s\n" "${COMPREPLY[@]-}"' bash "$1"
}
# Without the completion system: what would be added, by prefix.
in_zsh() {
    # shellcheck disable=SC2016
    zsh -fc 'compadd() { [ "$1" = -- ] && shift; print -l -- $@ | grep -- "^${PREFIX}" }
        _describe() { compadd -- ${${(P)2}%%:*} }
        _files() { }
        _message() { }
        words=(${=1})
        [[ $1 == *" " ]] && words+=("")
        CURRENT=$#words
        PREFIX=$words[CURRENT]
        source ./_orvella' zsh "$1"
}
in_fish() { fish --no-config -c "source ./orvella.fish; complete -C'$1'" | cut -f1; }

for shell in bash zsh fish; do
    command -v $shell >/dev/null || { echo "skipped: $shell is not installed"; continue; }
    while IFS='|' read -r line wanted; do
        got=$(in_$shell "$line" | sort | xargs)
        [ "$got" = "$wanted" ] && continue
        echo "$shell: '$line' offers '$got', not '$wanted'"
        failures=$((failures + 1))
    done <<'TABLE'
orvella con|convert
orvella convert -f BayerRG12|BayerRG12 BayerRG12Packed BayerRG12p
orvella convert --to UY|UYVY
orvella convert -t planes|planes planes-y
orvella convert --debayer lc|lcaa lcaav
orvella chart --tru|--truth
orvella convert --matrix g|grey
TABLE
done
exit $((failures > 0))
