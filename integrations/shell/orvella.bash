# bash completion for orvella. Commands, options and names are those that the program itself lists.

_orvella_commands() {
    orvella --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'
}
_orvella_options() {
    orvella "$1" --help | sed -n '/^  -/p' | grep -oE '^ +[-,a-z]+' | tr ',' '\n'
}
_orvella_formats() {
    orvella formats | awk '/^Pixel formats/ { on = 1 } on && /^$/ { exit } on && /^  [A-Z]/ { print $1 }'
}
_orvella_outputs() {
    orvella formats | sed -nE '/^Outputs/,/^$/s/^ +([0-9]+  )?([A-Za-z0-9_, -]*[^ ])  .*/\2/p' | tr -d ','
}

_orvella() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words
    if [ "$COMP_CWORD" -eq 1 ]; then
        words="$(_orvella_commands) --help --version"
    else
        case $previous in
        -f | --format | --from) words=$(_orvella_formats) ;;
        -t | --to) words=$(_orvella_outputs) ;;
        --debayer) words='2x2 3x3 lcaa lcaav yuv422' ;;
        --matrix) words='identity swap-red-blue grey' ;;
        --flip) words='h v 180 both' ;;
        --type) words='png tif tiff pgm ppm pnm raw' ;;
        -s | --size | -n | --frames | --bits-used) return ;;
        *)
            [[ $current == -?* ]] || return # a file
            words=$(_orvella_options "${COMP_WORDS[1]}")
            ;;
        esac
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -o default -F _orvella orvella
