#!/usr/bin/env bash
# The test drawings (share 4 of 10) round-trip through kelvo-host into other programs; see
# dxf_roundtrip.bash.
host=$1 tests=$2
source "$tests/shell/assert.bash"
source "$tests/shell/dxf_roundtrip.bash"
round_trip_part 4 10
finish
