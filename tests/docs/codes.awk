# Holds the codes of a manual page, its second argument, against the chapters of the page of findings,
# its first: each of them stands there with its severity, in this order, and no others.
NR == FNR {
  if (/^-+$/) code[++count] = before
  if (sub(/^Severity: /, "")) severity[count] = $0
  before = $0
  next
}
/^\.SH CODES/ { inside = 1 }
/^\.SH OUTPUT/ { inside = 0 }
inside && /^\.BR / {
  gsub(/\\/, "")
  ++found
  if ($0 != ".BR " code[found] " \" (" severity[found] ")\"") wrong = wrong $0 "\n"
}
END {
  if (found == count && count > 20 && !wrong) exit 0
  print "not as in the page of findings, or not all of them:\n" wrong
  exit 1
}
