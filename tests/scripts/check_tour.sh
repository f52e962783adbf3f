#!/usr/bin/env bash
# The README's tour is the program that is built, and the program does what the README says.
# Usage: check_tour.sh TOUR SOURCE_FOLDER
set -uo pipefail
tour=$1
source=$2

# block LANGUAGE N: the N-th fenced block of that language in the README.
block() {
  awk -v open="\`\`\`$1" -v want="$2" '
    inside && /^```$/ { inside = 0; next }
    inside { print }
    !inside && $0 == open && ++n == want { inside = 1 }' "$source/README.md"
}

cmp <(block cpp 1) "$source/examples/tour/tour.cpp" || exit 1
cmp <(block oml 1) "$source/examples/tour/map.oml" || exit 1
[ "$("$tour" "$source/examples/tour/map.oml" out.oml)" = "Ashford - Brill: 12.5 miles" ] || exit 1
tr -d '\r' <out.oml | diff - <(printf '%s\n' 'map:' '{' $'\ttown: 1 { title: "Ashford" people: 4200 }' \
  $'\ttown: 2 { title: "Brill" people: 1000 }' $'\troad: { from: 1 to: 2 miles: 12.500000 }' '}') || exit 1

# refused PATTERN INPUT OUTPUT: the call fails with status 1 and says why.
refused() {
  local message
  message=$("$tour" "$2" "$3" 2>&1)
  [ $? -eq 1 ] && grep -q "$1" <<<"$message" && return
  echo "tour $2 $3: no failure with '$1' but: $message"
  exit 1
}
refused 'Error #029 .* missing attribute `TITLE' <(echo 'map: { town: 1 { people: 1 } }') out.oml
refused 'null: no map' /dev/null out.oml
refused '/: no map' / out.oml
refused 'full: cannot be written' "$source/examples/tour/map.oml" /dev/full
