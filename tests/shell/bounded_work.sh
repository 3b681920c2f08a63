#!/usr/bin/env bash
# Work that could run without end is bounded: an integer power with a huge exponent,
# copying or reading a device as if it were a file, reading a device as a drawing or a
# database. Each call answers at once (within a few seconds even on a loaded machine).
host=$1 tests=$2
source "$tests/shell/assert.bash"

run() { timeout 10 "$host" "$@" 2>&1; }

expect_eq "(expt 2 2147483647) wraps at once" "0" "$(run -e '(expt 2 2147483647)' | tail -n 1)"
expect_eq "(expt 3 2147483647) wraps at once" "-1431655765" "$(run -e '(expt 3 2147483647)' | tail -n 1)"
expect_eq "(expt -1 2147483647)" "-1" "$(run -e '(expt -1 2147483647)' | tail -n 1)"
expect_eq "(expt 7 13) as repeated multiplication wraps" "-1895237401" "$(run -e '(expt 7 13)' | tail -n 1)"
expect_eq "copying a device is refused" "nil" "$(run -e '(vl-file-copy "/dev/zero" "z")' | tail -n 1)"
expect_eq "and leaves no destination" "no" "$([ -e z ] && echo yes || echo no)"
expect_eq "a device does not open for reading" "nil" "$(run -e '(open "/dev/zero" "r")' | tail -n 1)"
expect_eq "loading a device is an error" "; error: cannot read file: /dev/zero is not a regular file" \
  "$(run -e '(load "/dev/zero")' | tail -n 1)"
out=$(run --drawing /dev/zero)
expect_contains "a device is not a drawing" "cannot open drawing /dev/zero: it is not a regular file" "$out"
out=$(run -e '(kv_connect "/dev/zero")')
expect_eq "a device is not a database" "nil" "$(tail -n 1 <<<"$out")"
finish
