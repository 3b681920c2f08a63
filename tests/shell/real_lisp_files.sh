#!/usr/bin/env bash
# Every real LISP file of the shared test data (the top-level .lsp files) loads in
# kelvo-host, or stops on exactly the error listed for it below, each for a reason a
# headless host cannot help (the README lists them too).
host=$1 tests=$2
source "$tests/shell/assert.bash"
data=${KELVO_TESTDATA:-$(cd "$tests/../.." && pwd)/shared/testdata}/lisp

# file name, then the error it stops on, then why
stops=(
  "autodesk-sample__chtext.lsp|; error: no function definition: AI_ABORT|looks for ai_utils.lsp, the CAD product's own dialog support file, which a headless host does not ship"
  "autolispext__autoIndentTestFile.lsp|; error: too few arguments|an editor's indentation sample, not a program: (defun foo) has no parameter list"
  "autolispext__comments.lsp|; error: bad function: (\"variables\" \"to\" \"test\")|an editor's formatting sample, not a program: it calls vl-sort with its arguments swapped"
  "autolispext__pdfMarkups.lsp|; error: bad function: (\"variables\" \"to\" \"test\")|an editor's formatting sample, not a program: it calls vl-sort with its arguments swapped"
  "autolispext__modelspace_utilities.lsp|; error: no function definition: LOADGLOBALVARIABLES|needs LoadGlobalVariables from a file of its project that is not in the test data"
  "civil-autolisp__DRAINAGE_-_Create_manhole_schedule.lsp|; error: LOAD failed: \"SortAlphanumeric.lsp\"|loads SortAlphanumeric.lsp, a file of its project that is not in the test data"
)

shopt -s nullglob
files=("$data"/*.lsp)
expect_eq "the shared LISP files are there" "yes" "$([ ${#files[@]} -ge 10 ] && echo yes || echo no)"

for file in "${files[@]}"; do
  name=$(basename "$file")
  want=""
  for entry in "${stops[@]}"; do
    [[ $entry == "$name|"* ]] && want=$(cut -d'|' -f2 <<<"$entry")
  done
  errors=$("$host" --no-module "$file" </dev/null 2>&1 >/dev/null)
  status=$?
  if [ -z "$want" ]; then
    expect_eq "$name loads" "0 " "$status $errors"
  else
    expect_eq "$name stops where listed" "1 $want" "$status $errors"
  fi
done
finish
