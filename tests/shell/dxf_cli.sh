#!/usr/bin/env bash
# kelvo-host's drawing-file options: --drawing opens a file as the first drawing, --save
# and --render write the current drawing when the run ends without error; the files
# written read back, and the pictures show the drawing.
host=$1 tests=$2
source "$tests/shell/assert.bash"
data=$(cd "$tests/../../shared/testdata/dxf" && pwd)

# A test drawing opened, saved in both formats and pictured.
"$host" --no-module --drawing "$data/libredwg__sample_2000.dxf" -e '(strcat (getvar "DWGPREFIX") (getvar "DWGNAME"))' \
  --save plan.dwg --render plan.svg >out.txt 2>err.txt
expect_eq "runs" 0 $?
expect_eq "DWGPREFIX and DWGNAME are the file opened" "\"$data/libredwg__sample_2000.dxf\"" "$(cat out.txt)"
expect_eq "the binary file's signature" "KELVODWG" "$(head -c 8 plan.dwg)"
expect_contains "an SVG picture" "<svg" "$(cat plan.svg)"
count='(progn (setq n 0 e (entnext)) (while e (setq n (1+ n) e (entnext e))) n)'
expect_eq "the saved drawing has the entities" "6" "$("$host" --no-module --drawing plan.dwg -e "$count")"
"$host" --no-module --drawing plan.dwg -e '(princ)' --save plan.dxf --render plan.png
expect_eq "saved again as DXF" "AC1015" "$(grep -A2 -m1 'ACADVER' plan.dxf | tail -n 1 | tr -d '\r')"
expect_eq "a PNG picture" "PNG" "$(head -c 4 plan.png | tail -c 3)"
expect_eq "the DXF copy has the entities" "6" "$("$host" --no-module --drawing plan.dxf -e "$count")"

# Types the host does not keep are reported once, with their counts.
out=$("$host" --no-module --drawing "$data/ezdxf__hatches_1.dxf" -e '(princ)')
expect_contains "skipped types reported" "; kept as proxies 10 HATCH" "$out"

# A custom entity read where its class is not known is kept as a proxy, with its class in
# CLASSES, and is the module's entity again where the module is loaded.
"$host" --no-module -e '(entmake (list (cons 0 "CIRCLE") (list 10 0.0 0.0 0.0) (cons 40 1.0)))' \
  --save TAG.dwg >/dev/null
"$host" --prefix . -e '(tv_tv-leader-insert (list (list 0 0) (list 10 10) (list 20 10)) "0" "TAG" 2)' \
  --save leader.dxf >/dev/null
kind='(cdr (assoc 0 (entget (entnext))))'
expect_eq "without the module: a proxy under its own name" $'\n; kept as proxies 1 TVLEADER\n"TVLEADER"' \
  "$("$host" --no-module --drawing leader.dxf -e "$kind" --save proxy.dxf)"
expect_contains "its class kept" "TVLeader" "$(tr -d '\r' <proxy.dxf | grep -A4 '^CLASS$')"
expect_eq "with the module: the leader again" '"TVLEADER"' "$("$host" --drawing proxy.dxf -e "$kind" | tail -n 1)"
expect_eq "and its points" "(12 20.0 10.0 0.0)" \
  "$("$host" --drawing proxy.dxf -e '(assoc 12 (entget (entnext)))' | tail -n 1)"

# A drawing that cannot be opened: the message, exit status 1, no script run.
"$host" --no-module --drawing absent.dxf -e '(princ "ran")' >out.txt 2>err.txt
expect_eq "open failure status" 1 $?
expect_eq "open failure message" "; error: cannot open drawing absent.dxf: no such file" "$(cat err.txt)"
expect_eq "nothing ran" "" "$(cat out.txt)"

# An error in the run: nothing is saved or pictured.
"$host" --no-module -e '(car 1)' --save never.dxf --render never.png 2>/dev/null
expect_eq "error status" 1 $?
expect_eq "not saved after an error" "no" "$([ -e never.dxf ] || [ -e never.png ] && echo yes || echo no)"

# A save that cannot be written: the message and exit status 1.
"$host" --no-module -e '(princ)' --save no/such/folder.dxf 2>err.txt
expect_eq "save failure status" 1 $?
expect_contains "save failure message" "; error: cannot save drawing no/such/folder.dxf:" "$(cat err.txt)"
"$host" --no-module -e '(princ)' --render plan.bmp 2>err.txt
expect_contains "render failure message" "; error: cannot render to plan.bmp" "$(cat err.txt)"

finish
