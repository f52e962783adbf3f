#!/usr/bin/env bash
# The man page and --help tell the same: the commands with their one line, and the options of each.
# Usage: check_man.sh NETDRAW MANPAGE
set -uo pipefail
netdraw=$1
page=$2

# The option names in a text, one a line.
options() { grep -oE -- '(^|[ ,"])--?[a-zA-Z][-a-z]*' | tr -d ' ,"' | sort -u; }
# The part of the page for one command, or its OPTIONS for none, without the formatter's marks.
section() {
  awk -v name="$1" '
    /^\.S[HS]/ { on = name == "" ? /^\.SH OPTIONS/ : $2 == "\"netdraw" && ($3 == name || $3 == name "\"") }
    on { gsub(/\\-/, "-"); print }' "$page"
}

help=$("$netdraw" --help)
commands=$(sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\{1,\}\) .*/\1/p' <<<"$help")
[ "$(wc -w <<<"$commands")" -gt 5 ] || { echo "no commands in --help"; exit 1; }
failures=0
for command in "" $commands; do
  if ! diff <("$netdraw" $command --help | grep -E '^ +-' | options) \
    <({ [ -z "$command" ] || printf -- '-h\n--help\n'; section "$command" | grep '^\.BR' | options; } | sort -u); then
    echo "the options of 'netdraw $command' differ (< --help, > man page)"
    failures=$((failures + 1))
  fi
  [ -z "$command" ] && continue
  if ! section "$command" | grep -qxF "$("$netdraw" $command --help | head -1)."; then
    echo "the man page says something else about '$command'"
    failures=$((failures + 1))
  fi
done
told=$(sed -n 's/^\.SS "netdraw \([a-z]*\).*/\1/p' "$page")
[ "$(sort <<<"$told")" = "$(tr ' ' '\n' <<<"$commands" | sort)" ] || { echo "other commands in the man page"; failures=1; }
[ $failures -eq 0 ] && echo "the man page agrees with --help"
exit $((failures > 0))
