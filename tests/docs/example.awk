# Holds the example report of a page, its first argument, against an expected report, its second:
# each line but "..." stands there, in this order. What differs between servers and runs is masked.
function masked(line) {
  sub(/^[0-9-]+ [0-9:]+\t\([0-9]+:[0-9]+\)/, "<entry>", line)
  gsub(/-[0-9]+\.log|-<time>\.log/, "-<stamp>.log", line)
  gsub(/D:\\Domino\\Data|<server>\/data/, "<data>", line)
  gsub(/D:\\Domino|<server>\/program/, "<program>", line)
  gsub(/[\/\\]+/, "/", line)
  sub(/<CR>$/, "", line)
  return line
}
NR == FNR {
  if (/^    [0-9-]+ [0-9:]+\t\([0-9]+:[0-9]+\)\tSTARTING LOG$/) inside = 1
  if (inside && !/^    /) inside = $0 == "" ? inside : 0
  if (!inside && count) nextfile
  if (inside && $0 !~ /^[ \t]*(\.\.\.)?$/) example[++count] = masked(substr($0, 5))
  next
}
masked($0) == example[found + 1] { found++ }
END {
  if (found == count && count > 20) exit 0
  print "not in the expected report, or not behind the line before it: " example[found + 1]
  exit 1
}
