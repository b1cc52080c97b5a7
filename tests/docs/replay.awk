# Holds the page of the support library, the first argument, against the examples and the public headers
# behind it: each example stands there whole and nothing else as code, each header is in one of them, and
# the tree of errors has the names that the headers' classes give themselves, and no others.
FNR == 1 {
  file = FILENAME
  kind = file ~ /\.md$/ ? "page" : file ~ /\.cpp$/ ? "example" : "header"
  sub(/.*\/examples\//, "examples/", file)
  sub(/.*\/lib\//, "", file)
  if (kind == "example") examples[file]
  if (kind == "header") headers[file]
}
kind == "page" {
  if (/^`examples\/.*`:$/) name = substr($0, 2, length($0) - 3)
  if (/^```/) inside = !inside
  if (/^```cpp$/) ++blocks
  else if (/^```/) name = ""
  else if (inside && name) shown[name] = shown[name] $0 "\n"
  else if (inside && $1 ~ /::/ && NF == 2 && ++classes) tree = tree "." $2 "\n"
}
kind == "example" {
  code[file] = code[file] $0 "\n"
  if (gsub(/^#include "|"$/, "")) used[$0]
}
kind == "header" && match($0, /append_name\("[^"]*"/) {
  word = substr($0, RSTART + 13, RLENGTH - 14)
  ++words
  if (!index(tree, "." word "\n")) wrong = wrong "the class that gives itself the name " word "\n"
}
END {
  for (file in examples) if (shown[file] != code[file]) wrong = wrong file "\n"
  for (file in headers) if (!(file in used)) wrong = wrong "an example of " file "\n"
  if (blocks == length(examples) && classes == words && words > 30 && !wrong) exit 0
  print "not on the page as it is:\n" wrong "blocks of code: " blocks ", classes: " classes " of " words
  exit 1
}
