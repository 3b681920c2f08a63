#!/usr/bin/env bash
# The tour drawing round-trips through kelvo-host into other programs, its tag leaders
# drawn there by their proxy graphics; see dxf_roundtrip.bash.
host=$1 tests=$2
source "$tests/shell/assert.bash"
source "$tests/shell/dxf_roundtrip.bash"
round_trip_tour
finish
