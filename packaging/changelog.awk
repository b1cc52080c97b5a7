# Makes Debian's changelog of CHANGELOG.md. The version that is not released yet is -v version=..., as
# of -v now=... in the seconds of Unix; -v maintainer=... signs every entry.
function wrapped(first, rest, text, words, count, line, i) {
  count = split(text, words, " ")
  line = first
  for (i = 1; i <= count; i++) {
    if (length(line " " words[i]) > 79) {
      print line
      line = rest
    }
    line = line " " words[i]
  }
  print line
}
function end_item() {
  if (item != "") wrapped("  *", "   ", item)
  item = ""
}
function end_entry() {
  end_item()
  if (date != "") print "\n -- " maintainer "  " date "\n"
}
function rfc_date(when, command, answer) {
  command = "LC_ALL=C date --utc --rfc-email --date=" when
  command | getline answer
  close(command)
  return answer
}
/^## / {
  end_entry()
  gsub(/[][]/, "")
  date = rfc_date($2 == "Unreleased" ? "@" now : $4)
  print "qbdiagnostics (" ($2 == "Unreleased" ? version : $2) ") unstable; urgency=medium"
}
/^### / {
  end_item()
  print "\n  [ " $2 " ]"
}
/^- / { end_item() }
/^(- |  )/ { item = item " " ($1 == "-" ? substr($0, 3) : $0) }
END { end_entry() }
