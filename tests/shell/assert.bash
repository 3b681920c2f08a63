# Shared by the shell tests: a scratch folder and checks that report what differed.
# Usage: source "$tests/shell/assert.bash"; each check prints FAIL lines; finish exits.
set -u
failures=0
checks=0
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 2

# expect_eq NAME EXPECTED ACTUAL
expect_eq() {
  checks=$((checks + 1))
  if [ "$2" != "$3" ]; then
    failures=$((failures + 1))
    printf 'FAIL %s\n  expected: %s\n  actual:   %s\n' "$1" "$2" "$3"
  fi
}

# expect_contains NAME NEEDLE HAYSTACK
expect_contains() {
  checks=$((checks + 1))
  if [[ "$3" != *"$2"* ]]; then
    failures=$((failures + 1))
    printf 'FAIL %s\n  expected to contain: %s\n  actual: %s\n' "$1" "$2" "$3"
  fi
}

finish() {
  echo "$((checks - failures)) passed, $failures failed"
  [ "$failures" -eq 0 ]
  exit $?
}
