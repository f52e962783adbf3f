# Turns the plain comments of a header into comments that Doxygen reads:
#  - the comment at the top becomes the text of the file, and of a class that has the file to itself,
#  - a comment on lines of its own belongs to the declaration below it,
#  - a comment at the end of a line belongs to the declaration on that line.
# A comment with a line of dashes is a heading within a class and says nothing about one declaration.
function documented(line) {
  gsub(/[<#@\\]/, "\\\\&", line)
  sub(/\/\//, "///", line)
  return line
}

{ lines[NR] = $0 }

/^(class|struct) [A-Z_]* ?ZV[A-Za-z]+.*\{/ { ++classes }

END {
  top = 1
  while (lines[top] ~ /^\/\//) ++top
  print "/// @file"
  for (i = 1; i < top; ++i) print documented(lines[i])
  for (i = top; i <= NR; ++i) {
    line = lines[i]
    if (line ~ /^ *\/\/ ---/) {
      print line
    } else if (line ~ /^ *\/\//) {
      print documented(line)
    } else if (line ~ /[;{,)] *\/\/ /) {
      start = match(line, /\/\/ [^\/]*$/)
      comment = documented(substr(line, start))
      sub(/\/\/\//, "///<", comment)
      print substr(line, 1, start - 1) comment
    } else {
      if (classes == 1 && line ~ /^(class|struct) [A-Z_]* ?ZV[A-Za-z]+.*\{/ && lines[i - 1] !~ /^\/\//)
        for (j = 1; j < top; ++j) print documented(lines[j])
      print line
    }
  }
}
