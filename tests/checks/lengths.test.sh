#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=lengths

lines() { awk -v count="$1" 'BEGIN { for (i = 1; i <= count; ++i) print "int a" i ";" }'; }

fresh
lines 600 >src/catalog/Long.cpp
passes "a file of 600 lines"

lines 601 >src/catalog/Long.cpp
finds "a file of 601 lines" src/catalog/Long.cpp:601 "split it"

put tests/checks/long-files.txt <<<$'# Excuses.\n\nsrc/catalog/Long.cpp: one table of numbers'
passes "a long file with a reason"

put tests/checks/long-files.txt <<<'src/catalog/Long.cpp:'
finds "a long file whose reason is empty" tests/checks/long-files.txt:1 "gives no reason"

put tests/checks/long-files.txt <<<'src/catalog/Long.cpp: one table of numbers'
lines 10 >src/catalog/Long.cpp
finds "an excuse that is no longer needed" tests/checks/long-files.txt:1 "take the line out"

fresh
lines 601 >driver/Long.cpp
passes "a long file outside of src"
finish
