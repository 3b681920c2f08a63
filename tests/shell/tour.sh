#!/usr/bin/env bash
# The tour that `make run` shows runs to its end without an error, and leaves nothing
# behind in the temporary folder it uses.
host=$1 tests=$2
source "$tests/shell/assert.bash"
# The tour's files are found along the support path, and its database part works on a
# copy of the sample standards database made in the working folder.
bash "$tests/../examples/standards/build.sh" "$host" "$scratch/standards.mdb" >build.txt 2>&1
expect_eq "sample database builds" 0 $?
TMPDIR=$scratch "$host" --prefix "$tests/../examples" "$tests/../examples/tour.lsp" >out.txt 2>err.txt
expect_eq "tour exit status" 0 $?
expect_eq "tour prints no error" "" "$(cat err.txt)"
expect_contains "tour reaches its end" "End of the tour." "$(cat out.txt)"
expect_contains "tour made and removed its folder" "kv_rmdir once emptied: T" "$(cat out.txt)"
expect_contains "tour walks the sample database" "9  Electrical Demolition" "$(cat out.txt)"
expect_contains "tour closes the sample database" "kv_mdb after closing: nil" "$(cat out.txt)"
expect_eq "tour leaves nothing behind" "" "$(ls "$scratch/kelvo-tour" 2>/dev/null)"
finish
