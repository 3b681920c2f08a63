#!/usr/bin/env bash
# Four hosts add 1 to the same field of one record of one file, 250 times each, with
# kv_command and nothing between the statements: every statement that finds the file
# busy waits and is tried again, so the count ends at exactly 1000 and no host reports a
# failure or prints an error.
host=$1 tests=$2
source "$tests/shell/assert.bash"
hosts=4 each=250

cat >setup.lsp <<'LSP'
(kv_create_db "shared.mdb")
(kv_connect "shared.mdb" "w")
(kv_command "CREATE TABLE t (id LONG CONSTRAINT PrimaryKey PRIMARY KEY, n LONG)")
(kv_command "INSERT INTO t (id, n) VALUES (1, 0)")
(kv_close_db)
LSP
"$host" setup.lsp >setup.out 2>&1
expect_eq "setup prints nothing" "Loading Tarvik Kelvo (Direct)" "$(tr -d '\n' <setup.out)"

cat >worker.lsp <<'LSP'
; Connects, says it is ready, waits for the others, then updates k times; the number of
; statements that failed is its value.
(defun run (who k / i failures f)
  (kv_connect "shared.mdb" "w")
  (setq f (open (strcat "ready-" who) "w"))
  (close f)
  (while (not (findfile "go")))
  (setq i 0 failures 0)
  (while (< i k)
    (if (/= 1 (kv_command "UPDATE t SET n = n + 1 WHERE id = 1"))
      (setq failures (1+ failures)))
    (setq i (1+ i)))
  (kv_close_db)
  failures)
LSP
pids=()
for w in $(seq $hosts); do
  "$host" worker.lsp -e "(run \"$w\" $each)" >"w$w.out" 2>&1 &
  pids+=($!)
done
for _ in $(seq 200); do
  ready=$(ls ready-* 2>/dev/null | wc -l)
  [ "$ready" -eq $hosts ] && break
  sleep 0.1
done
start=$(date +%s.%N)
touch go
for w in $(seq $hosts); do
  wait "${pids[$((w - 1))]}"
  expect_eq "host $w's status" 0 $?
  expect_eq "host $w: no failed statement" "0" "$(tail -n 1 "w$w.out")"
done
end=$(date +%s.%N)
expect_eq "no error printed" "" "$(grep -h -i "error\|locked" w*.out)"

out=$("$host" -e '(progn (kv_connect "shared.mdb") (cdr (assoc "n" (car (kv_sql "SELECT n FROM t")))))' 2>&1)
expect_eq "every update counted" "$((hosts * each))" "$(tail -n 1 <<<"$out")"
echo "$((hosts * each)) updates by $hosts hosts in $(awk -v a="$start" -v b="$end" 'BEGIN { print b - a }') s"
finish
