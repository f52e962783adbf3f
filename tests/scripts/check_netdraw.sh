#!/usr/bin/env bash
# netdraw as a person calls it: its exit status and what it says. Usage: check_netdraw.sh NETDRAW DATA
set -uo pipefail
netdraw=$1
data=$2
earlier=$(dirname "$0")/../data/earlier
failures=0

# expect STATUS PATTERN ARGUMENT...: the call ends with that status and prints a line that matches.
expect() {
  local status=$1 pattern=$2 output actual
  shift 2
  output=$("$netdraw" "$@" 2>&1)
  actual=$?
  if [ $actual -ne "$status" ] || ! grep -qE -- "$pattern" <<<"$output"; then
    echo "netdraw $*: status $actual for $status, and no line like '$pattern' in:"
    echo "$output"
    failures=$((failures + 1))
  fi
}

expect 0 'Exit status' --help
expect 0 '--same' check --help
expect 2 'subcommand' # none given
expect 2 'text,binary' info --from octal "$data/git.oml"
expect 2 'required' convert "$data/git.oml"

expect 0 '50 nodes, 126 edges' import "$data/git.plain" --output new.oml
printf 'graph 1 9 9\nnode "a \\" \303\251" 1 1 1 1 "b\\\\" s box red4 ""\n' >quoted.plain
expect 0 '1 node, 0 edges' import quoted.plain -o quoted.oml
expect 0 '"a " é"' path quoted.oml 'a " é' 'a " é'
expect 1 'line 2: .* is no x' import <(printf 'graph 1 2 3\nnode a one 2 3 4 l s box c f\n') -o bad.oml
expect 1 'cannot be opened' import missing.plain -o bad.oml
expect 1 '^/: cannot be read' import / -o bad.oml
expect 1 'holds no graph line' import /dev/null -o bad.oml
expect 1 'folder.oml: cannot be opened' import "$data/git.plain" -o no/such/folder.oml
expect 1 '^/dev/full: cannot be written' convert new.oml -o /dev/full
expect 1 '^/: cannot be read' convert / -o bad.oml
[ ! -e bad.oml ] || { echo "a failed import left a file"; failures=$((failures + 1)); }

expect 0 'same drawing' check -s "$data/git.oml" new.oml
expect 1 'title differs' check --same "$data/git.oml" <(sed 's/"git"/"got"/' new.oml)
expect 1 'cannot open' info missing.oml
expect 1 'holds no drawing' info /dev/null
expect 0 'written as binary' convert new.oml -o new.omb
expect 0 'references  252 of 252' info --from binary new.omb
expect 1 'errors' info -f text new.omb
expect 1 'looks like the binary form' info -f text new.omb
expect 1 'looks like the text form' check -f binary new.oml
expect 0 '126 edges' info <(cat new.oml)
expect 0 'colours +4, shared by 50 nodes and 126 edges' info new.omb
expect 0 'shapes +4, shared by 50 nodes' info new.omb

expect 0 '252 of 252 edge ends on an outline, 50 of 50 labels' draw "$data/git.oml" -o git.svg
expect 0 '482 of 482 edge ends on an outline, 83 of 83 labels' draw -d "$data/graphviz.oml" -o graphviz.svg
expect 0 'drawn' gallery -o gallery.svg
expect 1 'cannot be written' gallery -o /dev/full
for picture in git graphviz gallery; do
  command -v xmllint >/dev/null && { xmllint --noout $picture.svg || failures=$((failures + 1)); }
  cmp $picture.svg "$data/../../../docs/images/$picture.svg" || failures=$((failures + 1))
done

# The standard output may be the file that is written: nothing else goes there.
for form in oml svg; do
  [ $form = oml ] && call=(convert) kept=new.oml || call=(draw) kept=git.svg
  "$netdraw" "${call[@]}" new.oml -o /dev/stdout >out.$form 2>out.err || failures=$((failures + 1))
  cmp out.$form $kept || failures=$((failures + 1))
  "$netdraw" "${call[@]}" new.oml -o /dev/stdout 2>out.err | cmp - $kept || failures=$((failures + 1))
done
expect 2 'written over the input' draw new.oml -o ./new.oml
cp "$data/git.plain" same.plain
expect 2 'written over the input' import same.plain -o same.plain

# What stands in a binary file is read by later forms of this program: names keep their numbers.
[ "$(cksum <new.omb)" = '3963566080 23897' ] || { echo "the binary form changed"; failures=$((failures + 1)); }

# Files of the earlier form, with colours and shapes named in each object, come out in the present one.
for form in oml omb; do
  expect 0 'same drawing' check -s new.oml "$earlier/git.$form"
  expect 0 'written as text' convert "$earlier/git.$form" -o present.oml
  cmp new.oml present.oml || failures=$((failures + 1))
done
expect 0 'drawn' draw "$earlier/git.omb" -o present.svg
cmp git.svg present.svg || failures=$((failures + 1))

# varied SCRIPT [FILE]: a copy of the drawing, or of that file, as sed changes it.
varied() {
  sed -e "$1" "${2:-new.oml}" >varied.oml
  cmp -s "${2:-new.oml}" varied.oml && { echo "nothing is varied by $1"; failures=$((failures + 1)); }
}

# Tables may stand behind the objects that refer to them, in parts, and tell an entry twice.
for script in '/^\tcolors/,/^\t}/{H;d};/^}/{H;x}' '/red: 173/s/^/} colors: {/' \
  's/^\t\trgb: { red: 173/\t\trgb: { red: 0 green: 0 blue: 0 }\n&/;s/fillIndex: 3/fillIndex: 4/;s/fillIndex: 2/fillIndex: 3/'; do
  varied "$script"
  expect 0 'same drawing' check -s new.oml varied.oml
  expect 0 'written as text' convert varied.oml -o present.oml
  cmp new.oml present.oml || failures=$((failures + 1))
done

# Colours that nothing uses stay in the drawing.
varied 's/^\t\trgb: { red: 173/\t\trgb: { red: 1 green: 2 blue: 3 transparent: true }\r\n&/;s/fillIndex: 3/fillIndex: 4/;s/fillIndex: 2/fillIndex: 3/'
expect 0 'colours +4,' info varied.oml
expect 0 'written as binary' convert varied.oml -o present.omb
expect 0 'written as text' convert present.omb -o present.oml
cmp varied.oml present.oml || failures=$((failures + 1))

# mistake MESSAGE SCRIPT [FILE]: the copy is refused.
mistake() {
  varied "$2" "${@:3}"
  expect 1 "#$1 !" draw varied.oml -o bad.svg
}
mistake '103 .*:52:62. index 4 is outside the table of 4 colours' '0,/fillIndex: 1/s//fillIndex: 4/'
mistake '103 .* index -1 is outside the table of 4 shapes' 's/shapeIndex: 1/shapeIndex: -1/'
mistake '103 .* index 4 is outside the table of 4 colours' 's/{ colorIndex: 0/{ colorIndex: 4/'
mistake '103 .* index 0 is outside the table of 0 colours' '/^\t\trgb/d'
mistake '101 .*:10:12. a colour has channels from 0 to 255' 's/red: 173/red: 256/'
mistake '029 .* missing attribute .GREEN.' 's/ green: 216//'
mistake '102 .* a polygon needs three vertices' 's/kind: ellipse/kind: polygon/'
mistake '102 .* only a polygon has vertices' '0,/kind: polygon/s//kind: box/'
mistake '102 .* a shape has coordinates from -1000 to 1000' 's/vertex: { x: -500/vertex: { x: -1500/'
mistake '102 .* the text box is flat' 's/right: 707/right: -707/'
mistake '101 .* .mauve. names no colour' '0,/"lightblue"/s//"mauve"/' "$earlier/git.oml"
mistake '101 .* .#12345. names no colour' '0,/color: "black"/s//color: "#12345"/' "$earlier/git.oml"
expect 1 "line 2: .mauve. is no fill colour" import \
  <(printf 'graph 1 2 3\nnode a 1 2 3 4 l s box black mauve\n') -o bad.oml

# Earlier files may name a colour in either case and as a number; pictures take its name if it has one.
varied '0,/"lightblue"/s//"#ADD8E6"/;0,/"lightblue"/s//"LightBlue"/' "$earlier/git.oml"
expect 0 'same drawing' check -s new.oml varied.oml
varied '0,/"lightblue"/s//"none"/;0,/"lightblue"/s//"#abc"/' "$earlier/git.oml"
expect 1 'node 2: fill colour differs' check -s new.oml varied.oml
expect 0 'drawn' draw varied.oml -o varied.svg
for fill in none '#aabbcc'; do
  grep -qF "fill=\"$fill\" stroke" varied.svg || { echo "no colour $fill"; failures=$((failures + 1)); }
done

rm -f all.trc
expect 0 '50 of 50 nodes fitted' fit new.omb -o fitted.oml --trace all.trc
expect 0 '252 of 252 edge ends on an outline, 50 of 50 labels' draw fitted.oml -o fitted.svg
sizes=$(grep -o 'font-size="[0-9.]*"' fitted.svg | sort -u)
[ "$sizes" = 'font-size="12.96"' ] || { echo "labels do not fit: $sizes"; failures=$((failures + 1)); }
expect 0 '1 note$' note new.oml 'Seen "twice"' -o noted.omb
expect 0 '2 notes' --trace all.trc note noted.omb 'Für später' -o noted.oml
expect 0 'note +Seen "twice"$' info noted.oml
expect 0 'note +Für später$' info noted.oml
expect 0 'written as binary' convert noted.oml -o noted.omb
expect 0 'same drawing' check -s noted.oml noted.omb
expect 1 'number of notes differs' check -s new.oml noted.oml
expect 2 'TEXT is required' note new.oml -o noted.oml
expect 1 'cannot be opened for the trace' --trace no/such/folder.trc info new.oml
expect 1 'trace cannot be written' --trace /dev/full info new.oml
tr -d '\r' <all.trc | grep -vE '^fit ([^g]|g[^i]|git-)' >all.txt
diff - all.txt <<'END' || failures=$((failures + 1))
netdraw fit new.omb -o fitted.oml --trace all.trc
read new.omb as binary: good, 0 errors, 0 warnings
fit git: 750 x 500 becomes 316 x 290
write fitted.oml as text: good, 0 errors, 0 warnings
netdraw --trace all.trc note noted.omb Für später -o noted.oml
read noted.omb as binary: good, 0 errors, 0 warnings
write noted.oml as text: good, 0 errors, 0 warnings
END

# Four nodes in a row, one above the second, and one that lies on the last and in the way of e -> d. The edge
# a -> d runs through b and c.
cat >row.plain <<'END'
graph 1 10 4
node a 1 1 1 0.5 a solid box black white
node b 3 1 1 0.5 b solid box black white
node c 5 1 1 0.5 c solid box black white
node d 7 1 1 0.5 d solid box black white
node e 3 3 1 0.5 e solid box black white
node f 7.4 1.2 1 0.5 f solid box black white
edge a d 0 solid black
edge a e 0 solid black
edge e d 0 solid black
edge b a 0 solid black
stop
END
expect 0 '6 nodes, 4 edges' import row.plain -o row.omb
expect 0 '--most' overlaps --help
expect 0 '1 overlapping pair of nodes, 2 of 4 edges across' overlaps row.omb
expect 0 '"d" and "f" overlap' overlaps --from binary row.omb
expect 0 '"a" -> "d" crosses "b"' overlaps row.omb --most 1
expect 0 'and 1 more' overlaps -f binary row.omb -m 0
expect 2 'most' overlaps row.omb -m -1
expect 1 'cannot open' overlaps missing.oml

"$netdraw" overlaps row.omb >/dev/full 2>/dev/null && { echo "lost output is called good"; failures=$((failures + 1)); }

expect 0 '--both-ways' path --help
expect 0 '1 edge, 6.000 inches' path row.omb a d
expect 0 '2 edges, 4.828 inches' path --from binary row.omb e b -b
expect 1 'no route leads from "a" to "b"' path row.omb a b
expect 0 '1 edge, 2.000 inches' path row.omb a b --both-ways
expect 0 '0 edges, 0.000 inches' path row.omb f f
expect 1 'holds no node "g"' path row.omb a g
expect 2 'END' path row.omb a
expect 1 'errors' path -f text row.omb a d

expect 0 '--compare' order --help
[ "$("$netdraw" order row.omb | tr '\n' ' ')" = "e f a b c d " ] || {
  echo "the order is another one:"
  "$netdraw" order row.omb
  failures=$((failures + 1))
}
expect 0 '"f" stands before "a"' order -f binary row.omb -c f a
expect 0 '"d" stands behind "c"' order row.omb --compare d c
expect 0 '"d" stands in the place of "d"' order row.omb --compare d d
expect 1 'holds no node' order row.omb -c a g
expect 2 'compare' order row.omb -c a
expect 1 'holds no drawing' order /dev/null

cp new.omb unnamed
expect 0 'written as text' convert -f binary unnamed -t text -o back.omb
cmp new.oml back.omb || failures=$((failures + 1))

[ $failures -eq 0 ] && echo "netdraw: all calls as expected"
exit $((failures > 0))
