#!/usr/bin/env bash
# kelvo-host's command line: options, output and exit status, the function tables as
# the module defines them, module loading and refusal, the interactive command line.
host=$1 tests=$2
source "$tests/shell/assert.bash"

# The function tables: every name in order with its code, both tables.
"$host" --functions | grep -v -e "^$" -e "^Loading Tarvik Kelvo (Direct)$" >functions.txt
expect_eq "--functions lists both tables in order" "" "$(diff "$tests/shell/functions.expected" functions.txt)"
expect_eq "no module, no functions" "" "$("$host" --no-module --functions)"

# -e prints each value as prin1 does; files run before expressions.
printf '(setq x 40)\n(princ "loaded")\n' >a.lsp
out=$("$host" --no-module a.lsp -e '(+ x 2)' -e '"s"')
expect_eq "-e values after files, each on its own line" $'loaded\n42\n"s"' "$out"
expect_eq "(princ) is not echoed" "" "$("$host" --no-module -e '(princ)')"

# A LISP error: the message on standard error, exit status 1, the rest not run.
"$host" --no-module -e '(car 1)' -e '(princ "after")' >out.txt 2>err.txt
expect_eq "error status" 1 $?
expect_eq "error ends the run" "" "$(cat out.txt)"
expect_contains "error message" "; error: bad argument type" "$(cat err.txt)"

# A user *error* handler replaces the message.
out=$("$host" --no-module -e '(defun *error* (m) (princ (strcat "caught: " m)))' -e '(/ 1 0)' 2>&1)
expect_eq "*error* handler" $'caught: divide by zero' "$(printf '%s' "$out" | tail -n 1)"

# alert shows a box on the host's user interface; --ui-log records it.
"$host" --no-module --ui-log ui.log -e '(alert "Duct \"A\"\nsized")' >/dev/null
expect_eq "alert logged" 'messagebox caption="kelvo-host" text="Duct \"A\"\nsized" style=0x0 answer=OK' "$(cat ui.log)"

# Bad usage and missing files.
"$host" --bogus >/dev/null 2>err.txt
expect_eq "unknown option status" 2 $?
"$host" --no-module missing.lsp 2>err.txt
expect_eq "missing file status" 1 $?
expect_contains "missing file message" "LOAD failed: missing.lsp" "$(cat err.txt)"
"$host" --ui qt -e 1 >/dev/null 2>err.txt
expect_eq "qt backend not in this build" 2 $?

# The interactive command line, fed from a pipe: values echoed, forms across lines.
out=$(printf '(+ 1 2)\n(list 1\n 2)\n' | "$host" --no-module)
expect_eq "command line" $'Command: (+ 1 2)\n3\nCommand: (list 1\n 2)\n(1 2)\nCommand: ' "$out"

# ACADPREFIX: from --prefix, else the environment; read-only for LISP.
expect_eq "prefix option" '"/a;/b"' "$(ACADPREFIX=/env "$host" --no-module --prefix '/a;/b' -e '(getvar "ACADPREFIX")')"
expect_eq "prefix environment" '"/env"' "$(ACADPREFIX=/env "$host" --no-module -e '(getvar "acadprefix")')"
mkdir -p support && echo '(princ "found")' >support/lib.lsp
expect_eq "load along the support path" 'found' "$("$host" --no-module --prefix "/nowhere;$PWD/support" -e '(progn (load "lib.lsp") (princ))')"

# Modules: load, list, unload; a locked or missing module is refused with a reason.
bin=$(dirname "$host")
out=$("$host" --no-module -e "(arxload \"$bin/KelvoBrx15.arx\")" -e '(arx)' -e '(arxunload "KelvoBrx15.arx")' -e '(arx)' -e '(type kv_getVersion)' 2>&1)
expect_contains "arxload returns its argument" "KelvoBrx15.arx\"" "$out"
expect_contains "arx lists the module" '("KelvoBrx15.arx")' "$out"
expect_contains "names stay defined after unload" "EXRXSUBR" "$out"
out=$("$host" --no-module -e "(arxload \"$bin/KelvoBrx15.arx\")" -e '(arxunload "KelvoBrx15.arx")' -e '(kv_getVersion)' 2>&1)
expect_contains "a callback is gone with its module" "kv_getVersion: the module that defined it is not loaded" "$out"
expect_eq "arxload failure value" '"no"' "$("$host" --no-module -e '(arxload "nothere.arx" "no")')"
"$host" --no-module -e '(arxload "nothere.arx")' >out.txt 2>err.txt
expect_contains "arxload failure message" "nothere.arx: module not found" "$(cat out.txt)"
expect_contains "arxload failure error" "; error: ARXLOAD failed" "$(cat err.txt)"
echo "not a library" >notalibrary.arx
"$host" --no-module -e '(arxload "notalibrary.arx")' >out.txt 2>&1
expect_contains "a file that is no library is refused" "notalibrary.arx: " "$(cat out.txt)"
libm=$(ldd "$host" | awk '/libm\.so/ { print $3 }')
cp "$libm" notamodule.arx
"$host" --no-module -e '(arxload "notamodule.arx")' >out.txt 2>&1
expect_contains "a library without an entry point is refused" "notamodule.arx: not a module (no acrxEntryPoint)" "$(cat out.txt)"

finish
