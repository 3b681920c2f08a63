#!/usr/bin/env bash
# Runs one golden transcript: kelvo-host on NAME.lsp, output compared with NAME.out.
#   NAME.lsp      the script; a first line ";; args: ..." adds host options
#   NAME.out      standard output and standard error, as printed
#   NAME.in       answers to prompts (--input), when present
#   NAME.answers  answers to message boxes (--answers), when present
#   NAME.uilog    expected user-interface log (--ui-log), when present
#   NAME.status   expected exit status (default 0)
# The script runs in a fresh temporary folder, which it may use freely; the variable
# KELVO_TESTDATA names the shared test data folder.
set -u
host=$1 script=$2
base=${script%.lsp}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
args=()
first=$(head -n 1 "$script")
if [[ $first == ";; args:"* ]]; then
  read -r -a args <<<"${first#;; args:}"
fi
[ -f "$base.in" ] && args+=(--input "$base.in")
[ -f "$base.answers" ] && args+=(--answers "$base.answers")
[ -f "$base.uilog" ] && args+=(--ui-log "$work/ui.log")
src_dir=$(cd "$(dirname "$script")/../.." && pwd)
export KELVO_TESTDATA=${KELVO_TESTDATA:-$src_dir/../shared/testdata}
cd "$work" || exit 2
"$host" "${args[@]}" "$script" >"$work/actual.out" 2>&1
status=$?
want_status=0
[ -f "$base.status" ] && want_status=$(cat "$base.status")
fail=0
if ! diff -u "$base.out" "$work/actual.out"; then fail=1; fi
if [ -f "$base.uilog" ] && ! diff -u "$base.uilog" "$work/ui.log"; then fail=1; fi
if [ "$status" != "$want_status" ]; then
  echo "exit status $status, expected $want_status"; fail=1
fi
exit $fail
