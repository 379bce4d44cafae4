# Makes what ctest prints short: tests that passed become a line a group, and the ten
# slowest are listed. The rest stays as it is, ctest's closing lines at the end.
#
#   awk -f script/summary.awk details=1 LastTest.log details=0 CTEST-OUTPUT

details && /^\[  PASSED  \] [0-9]+ test/ { cases += $4 }
details && /^\[  SKIPPED \] [0-9]+ test/ { skipped += $4 }
details && /: [0-9]+ cases, [0-9]+ failed$/ { cases += $(NF - 3) - $(NF - 1) }
details { next }

/^ *Start +[0-9]+: / || /^Internal ctest/ || /^Test project/ { next }

/^ *[0-9]+\/[0-9]+ Test +#[0-9]+: .* Passed / {
  seconds[$4] = $(NF - 1)
  group = $4
  sub(/[._].*/, "", group)
  if (!(group in count)) groups[++group_count] = group
  count[group]++
  total[group] += $(NF - 1)
  next
}

/^[0-9]+% tests passed/ { summarise() }

{ print }

function summarise(  i) {
  for (i = 1; i <= group_count; i++)
    printf "%3d passed  %8.2f s  %s\n", count[groups[i]], total[groups[i]], groups[i]
  print "\nThe slowest:"
  for (i = 0; i < 10; i++) print_slowest()
  printf "\n%d test cases passed, %d skipped\n\n", cases, skipped
}

function print_slowest(  name, slowest) {
  for (name in seconds)
    if (slowest == "" || seconds[name] + 0 > seconds[slowest] + 0) slowest = name
  if (slowest == "") return
  printf "%8.2f s  %s\n", seconds[slowest], slowest
  delete seconds[slowest]
}
