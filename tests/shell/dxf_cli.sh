#!/usr/bin/env bash
# kelvo-host's drawing-file options: --drawing opens a file as the first drawing, --save
# and --render write the current drawing when the run ends without error; the files
# written read back, and the pictures show the drawing.
host=$1 tests=$2
source "$tests/shell/assert.bash"
data=$(cd "$tests/../../shared/testdata/dxf" && pwd)

# A test drawing opened, saved in both formats and pictured.
"$host" --no-module --drawing "$data/libredwg__sample_2000.dxf" -e '(getvar "DWGNAME")' \
  --save plan.dwg --render plan.svg >out.txt 2>err.txt
expect_eq "runs" 0 $?
expect_eq "DWGNAME is the file opened" "\"$data/libredwg__sample_2000.dxf\"" "$(cat out.txt)"
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
