#!/usr/bin/env bash
# Two hosts update the same record of one database file at the same time: each seeks
# the record and replaces its own counter field, and appends a row to a shared table,
# N times, with a little work between steps as a user's command has. Their writes
# collide on the file's lock; the lock-conflict retry absorbs the conflicts: no write
# fails, none is lost. (Without the pause, a host that writes back to back can hold the
# lock for most of the time, and the other's 20 attempts may all find it taken.)
host=$1 tests=$2
source "$tests/shell/assert.bash"
n=40

cat >setup.lsp <<'LSP'
(kv_create_db "shared.mdb")
(kv_connect "shared.mdb")
(kv_command "CREATE TABLE Counter (ixCounter LONG CONSTRAINT PrimaryKey PRIMARY KEY, lA LONG, lB LONG)")
(kv_command "INSERT INTO Counter (ixCounter, lA, lB) VALUES (1, 0, 0)")
(kv_command "CREATE TABLE Log (ixLog COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, sWho TEXT(1))")
(kv_close_db)
LSP
"$host" setup.lsp >setup.out 2>&1
expect_eq "setup prints nothing" "Loading Tarvik Kelvo (Direct)" "$(tr -d '\n' <setup.out)"

cat >worker.lsp <<'LSP'
; Increments its own counter field n times and logs each step; answers the failures.
; Both hosts connect first and then start together, so that the writes overlap.
(defun run (field who n / i rec failures f)
  (kv_connect "shared.mdb")
  (kv_table "Log")
  (kv_table "Counter" "PrimaryKey")
  (setq f (open (strcat "ready-" who) "w"))
  (close f)
  (while (not (findfile "go")))
  (setq i 0 failures 0)
  (while (< i n)
    (setq rec (kv_seek 1))
    (if (not (and rec (kv_replace (list (cons field (1+ (cdr (assoc field rec))))))))
      (setq failures (1+ failures)))
    (kv_table "Log")
    (if (not (kv_append (list (cons "sWho" who)))) (setq failures (1+ failures)))
    (kv_table "Counter")
    (repeat 15000 (setq f (1+ i)))
    (setq i (1+ i)))
  (kv_close_db)
  failures)
LSP
"$host" worker.lsp -e "(run \"lA\" \"A\" $n)" >a.out 2>&1 &
a=$!
"$host" worker.lsp -e "(run \"lB\" \"B\" $n)" >b.out 2>&1 &
b=$!
for _ in $(seq 100); do [ -f ready-A ] && [ -f ready-B ] && break; sleep 0.1; done
touch go
wait "$a"; expect_eq "first host's status" 0 $?
wait "$b"; expect_eq "second host's status" 0 $?
expect_eq "first host: no failed write" "0" "$(tail -n 1 a.out)"
expect_eq "second host: no failed write" "0" "$(tail -n 1 b.out)"
expect_eq "no error printed" "" "$(grep -h "Error" a.out b.out)"

cat >check.lsp <<'LSP'
(kv_connect "shared.mdb")
(kv_table "Counter" "PrimaryKey")
(setq rec (kv_seek 1))
(princ (strcat "\nA=" (itoa (cdr (assoc "lA" rec))) " B=" (itoa (cdr (assoc "lB" rec)))))
(princ (strcat "\nlog=" (itoa (length (kv_sql "SELECT ixLog FROM Log")))))
(princ (strcat "\nlogA=" (itoa (length (kv_sql "SELECT ixLog FROM Log WHERE sWho = 'A'")))))
(kv_close_db)
(princ)
LSP
out=$("$host" check.lsp 2>&1)
expect_contains "both counters complete" "A=$n B=$n" "$out"
expect_contains "every append kept" "log=$((2 * n))" "$out"
expect_contains "each host's appends kept" "logA=$n" "$out"
finish
