#!/usr/bin/env bash
# Runs one folder of the shared AutoLISP conformance suite through kelvo-host.
#   $1  path to kelvo-host      $2  the project's tests folder      $3  the suite's folder
# Every file of the folder runs in a fresh kelvo-host (no module). The suite ships without
# its registration helpers, so the harness below defines them as the suite's README
# describes: deftest (result equal to the expected value), deftest-eq (eq), deftest-pred
# (the predicate form true with *RESULT* bound to the result), deftest-error (an error),
# deftest-skip (not run), and *autolisp-test-root*, a scratch folder for the file tests.
#
# Profile: the suite tags each case STRICT, AUTOCAD or BRICSCAD; this host answers as the
# AUTOCAD profile, so STRICT and AUTOCAD cases run and BRICSCAD cases are counted as
# skipped.
#
# listed-cases.tsv names, one per line with the reason, every case this host answers
# differently on purpose; such a case counts as "listed". A listed case that passes is a
# failure too, so the list stays true. Anything else that fails fails the folder.
# The suite is read in place at test time and never copied into the project.
set -u
host=$1
tests=$2
folder=$3
testdata=${KELVO_TESTDATA:-$(cd "$tests/.." && pwd)/../shared/testdata}
suite=$testdata/lisp/clautolisp-tests
if [ ! -d "$suite/$folder" ]; then
  echo "FAIL: no conformance folder at $suite/$folder (the shared test data belongs beside the project)"
  exit 1
fi
mapfile -t files < <(cd "$suite" && find "$folder" -name '*.lsp' | sort)
if [ ${#files[@]} -eq 0 ]; then echo "FAIL: no test files in $suite/$folder"; exit 1; fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/results"
# The listed cases as a LISP list of names.
{
  printf '(setq *aut-listed* (quote ('
  cut -f1 "$tests/conformance/listed-cases.tsv" | grep -v '^#' | grep -v '^$' |
    sed 's/\\/\\\\/g; s/"/\\"/g; s/.*/"&"/' | tr '\n' ' '
  printf ')))\n'
  printf '(setq *autolisp-test-root* "%s/")\n' "$work"
} >"$work/harness.lsp"
cat >>"$work/harness.lsp" <<'LSP'
(setq *aut-pass* 0 *aut-fail* 0 *aut-listed-count* 0 *aut-skip* 0)
(defun aut-outcome (r)
  (vl-prin1-to-string (if (vl-catch-all-error-p r) (strcat "error: " (vl-catch-all-error-message r)) r)))
(defun aut-runs-p (meta / profile)
  (setq profile (cdr (assoc 'profile meta)))
  (if (eq profile 'bricscad) (progn (setq *aut-skip* (1+ *aut-skip*)) nil) t))
(defun aut-report (name ok r)
  (cond ((member name *aut-listed*)
         (if ok
           (progn (setq *aut-fail* (1+ *aut-fail*))
                  (princ (strcat "LISTED BUT PASSES " name "\n")))
           (setq *aut-listed-count* (1+ *aut-listed-count*))))
        (ok (setq *aut-pass* (1+ *aut-pass*)))
        (t (setq *aut-fail* (1+ *aut-fail*))
           (princ (strcat "FAIL " name " => " (aut-outcome r) "\n")))))
(defun aut-eval (form) (vl-catch-all-apply 'eval (list form)))
(defun deftest (name meta form expected / r)
  (if (aut-runs-p meta)
    (progn (setq r (aut-eval form))
           (aut-report name (and (not (vl-catch-all-error-p r)) (equal r expected)) r))))
(defun deftest-eq (name meta form expected / r)
  (if (aut-runs-p meta)
    (progn (setq r (aut-eval form))
           (aut-report name (and (not (vl-catch-all-error-p r)) (eq r expected)) r))))
(defun deftest-pred (name meta form pred / r *result* ok)
  (if (aut-runs-p meta)
    (progn (setq r (aut-eval form) *result* r ok (aut-eval pred))
           (aut-report name (and ok (not (vl-catch-all-error-p ok))) r))))
(defun deftest-error (name meta form kind / r)
  (if (aut-runs-p meta)
    (progn (setq r (aut-eval form))
           (aut-report name (vl-catch-all-error-p r) r))))
(defun deftest-skip (name meta form why) (setq *aut-skip* (1+ *aut-skip*)) nil)
LSP
fail=0
for f in "${files[@]}"; do
  {
    cat "$work/harness.lsp"
    printf '(setq *aut-load* (vl-catch-all-apply (quote load) (list "%s")))\n' "$suite/$f"
    printf '(if (vl-catch-all-error-p *aut-load*) (progn (setq *aut-fail* (1+ *aut-fail*)) (princ (strcat "FAIL loading: " (vl-catch-all-error-message *aut-load*) "\\n"))))\n'
    printf '(princ (strcat "%s: " (itoa *aut-pass*) " passed, " (itoa *aut-fail*) " failed, " (itoa *aut-listed-count*) " listed, " (itoa *aut-skip*) " skipped\\n"))\n' "$f"
    printf '(if (> *aut-fail* 0) (exit))\n'
  } >"$work/run.lsp"
  (cd "$work" && "$host" --no-module "$work/run.lsp" </dev/null) || fail=1
done
exit $fail
