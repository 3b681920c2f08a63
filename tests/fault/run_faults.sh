#!/usr/bin/env bash
# Fault injection over one scenario: kelvo-host-fault runs it once clean (counting its
# allocations and file calls), then again with the Nth allocation failing and with the
# Nth file call failing, for N sampled across the run. Every run must end with status 0
# or 1 (no crash, no abort), the sanitizers must stay silent (no leak: every path
# releases what it opened), a run whose output differs from the clean one must say what
# went wrong, and no error is reported twice in a row.
#
# Usage: run_faults.sh HOST-FAULT TESTS-DIR SCENARIO   (database, drawing or tour)
# FAULT_SAMPLES sets how many values of N each kind of fault tries (by default 8 for the
# database, 10 for the drawing and 2 for the tour, so that each test stays within a minute
# under the sanitizers on a busy machine).
host=$(realpath "$1") tests=$(realpath "$2") scenario=$3
declare -A defaultSamples=([database]=8 [drawing]=10 [tour]=2)
samples=${FAULT_SAMPLES:-${defaultSamples[$scenario]:-8}}
source "$tests/shell/assert.bash"

case $scenario in
  database) args=("$tests/fault/database.lsp") ;;
  drawing)  args=(--drawing "$tests/fault/drawing.dxf" "$tests/fault/drawing.lsp") ;;
  tour)
    bash "$tests/../examples/standards/build.sh" "$host" "$scratch/standards.mdb" >build.txt 2>&1
    expect_eq "sample database builds" 0 $?
    args=(--prefix "$tests/../examples" "$tests/../examples/tour.lsp") ;;
  *) echo "unknown scenario $scenario"; exit 2 ;;
esac

# One run in a fresh folder, run/; leaves out.txt and err.txt here and prints its status.
run() {
  rm -rf "$scratch/run" && mkdir -p "$scratch/run/tmp" || exit 2
  [ "$scenario" = tour ] && cp "$scratch/standards.mdb" "$scratch/run/"
  (cd "$scratch/run" &&
   env "$@" TMPDIR="$scratch/run/tmp" "$host" "${args[@]}" >"$scratch/out.txt" 2>"$scratch/err.txt" </dev/null)
  echo $?
}

status=$(run KELVO_FAULT_COUNT=1)
expect_eq "clean run status" 0 "$status"
expect_contains "clean run reaches its end" "End of the" "$(cat out.txt)"
clean=$(cat out.txt)
counts=$(grep -o '[0-9]* allocations, [0-9]* file calls' err.txt)
allocs=${counts%% allocations*}
files=${counts#*, } && files=${files%% file*}
expect_contains "the run was counted" "allocations" "$counts"
echo "clean run: $counts"

errorPattern='error|Error|cannot|Cannot|not enough|out of memory|disk I/O|failed|Failed'
hits=0 runs=0
# try KIND N: one run with the Nth call of KIND (ALLOC or IO) failing.
try() {
  local kind=$1 n=$2 status out err
  status=$(run KELVO_FAULT_$kind=$n)
  out=$(cat out.txt) err=$(cat err.txt)
  runs=$((runs + 1))
  [[ $err == *"kelvo-fault: failing"* ]] && hits=$((hits + 1))
  local what="$kind fault at $n"
  if [ "$status" != 0 ] && [ "$status" != 1 ]; then
    expect_eq "$what: exit status" "0 or 1" "$status ($(tail -c 600 err.txt))"
    return
  fi
  if [[ $err == *Sanitizer* ]]; then
    expect_eq "$what: sanitizer report" "" "$(grep -m3 -A8 Sanitizer err.txt)"
    return
  fi
  if [ "$out" != "$clean" ] && ! grep -Eq "$errorPattern" out.txt err.txt; then
    expect_eq "$what: a changed run says what went wrong" "an error message" \
      "$(diff <(echo "$clean") out.txt | head -6)"
  fi
  local twice
  twice=$(cat out.txt err.txt | grep -E "$errorPattern" | uniq -d | head -2)
  expect_eq "$what: no error reported twice in a row" "" "$twice"
}

# N across the whole run, by equal steps (the last call included).
sample() {
  local total=$1 count=$2 i
  [ "$total" -le 0 ] && return
  [ "$count" -gt "$total" ] && count=$total
  for ((i = 1; i <= count; i++)); do echo $(((total * i + count - 1) / count)); done | uniq
}
for n in $(sample "$allocs" "$samples"); do try ALLOC "$n"; done
for n in $(sample "$files" "$samples"); do try IO "$n"; done
echo "$scenario: $runs runs with a fault, $hits hit a call ($allocs allocations, $files file calls in the clean run)"
finish
