#!/bin/sh
# Writes the manual pages of the converter, made from its --help by help2man.
#
#     man.sh PROGRAM DIRECTORY     orvella.1 and orvella-COMMAND.1 for each of its commands
set -eu
program=$1
directory=$2
page=$(mktemp)
trap 'rm -f "$page"' EXIT
export LC_ALL=C

commands=$("$program" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')

# What help2man runs: the program with a command, its help as GNU programs write it.
cat >"$page" <<END
#!/bin/sh
[ "\$1" = --version ] && exec "$program" --version
"$program" \${COMMAND-} --help | sed 's/^       orvella/  or:  orvella/; s/^\(  -.\),--/\1, --/; s/,--/, --/
    s/^\(  orvella [a-z]*\)  */\1 /'
END
chmod +x "$page"

make_page() { # name, see also
    what=$("$page" --help | sed 's/^./\L&/; s/^turns/turn/; s/\.$//; q')
    printf '[see also]\n%s\n' "$2" >"$page.more"
    help2man --no-info --section=1 --manual='Orvella' --name="$what" --include="$page.more" "$page" |
        sed "s/^\.TH [^ ]* \"1\" \"[^\"]*\"/.TH $(echo "$1" | tr '[:lower:]' '[:upper:]') \"1\" \"\"/; s/^orvella \\\\-/$1 \\\\-/" >"$directory/$1.1"
    rm "$page.more"
}
pages=
for command in $commands; do pages="$pages${pages:+, }.BR orvella-$command (1)"; done
make_page orvella "$(echo "$pages" | sed 's/, /,\n/g; s/(1),/(1) ,/g')"
for command in $commands; do
    COMMAND=$command
    export COMMAND
    make_page "orvella-$command" '.BR orvella (1)'
done
