# fish completion for orvella. Commands, options and names are those that the program itself lists.

function __orvella_commands
    orvella --help | string match -rg '^  ([a-z]+) +(?=[A-Z])'
end
function __orvella_options
    set -l command (commandline -opc)[2]
    orvella $command --help | string match -rg '^  (-[-,a-z]+)' | string split ,
end
function __orvella_formats
    orvella formats | awk '/^Pixel formats/ { on = 1 } on && /^$/ { exit } on && /^  [A-Z]/ { print $1 }'
end
function __orvella_outputs
    orvella formats | sed -nE '/^Outputs/,/^$/s/^ +([0-9]+  )?([A-Za-z0-9_, -]*[^ ])  .*/\2/p' | tr -d , | tr ' ' '\n'
end
function __orvella_after
    contains -- (commandline -opc)[-1] $argv
end

complete -c orvella -n __fish_use_subcommand -f -a '(__orvella_commands)'
complete -c orvella -n 'not __fish_use_subcommand; and string match -q -- "-*" (commandline -ct)' -f -a '(__orvella_options)'
complete -c orvella -n '__orvella_after -f --format --from' -f -a '(__orvella_formats)'
complete -c orvella -n '__orvella_after -t --to' -f -a '(__orvella_outputs)'
complete -c orvella -n '__orvella_after --debayer' -f -a '2x2 3x3 lcaa lcaav yuv422'
complete -c orvella -n '__orvella_after --matrix' -f -a 'identity swap-red-blue grey'
complete -c orvella -n '__orvella_after --flip' -f -a 'h v 180 both'
complete -c orvella -n '__orvella_after --type' -f -a 'png tif tiff pgm ppm pnm raw'
