#!/usr/bin/env bash
# The tour that `make run` shows runs to its end without an error, and leaves nothing
# behind in the temporary folder it uses.
host=$1 tests=$2
source "$tests/shell/assert.bash"
TMPDIR=$scratch "$host" "$tests/../examples/tour.lsp" >out.txt 2>err.txt
expect_eq "tour exit status" 0 $?
expect_eq "tour prints no error" "" "$(cat err.txt)"
expect_contains "tour reaches its end" "End of the tour." "$(cat out.txt)"
expect_contains "tour made and removed its folder" "kv_rmdir once emptied: T" "$(cat out.txt)"
expect_eq "tour leaves nothing behind" "" "$(ls "$scratch/kelvo-tour" 2>/dev/null)"
finish
