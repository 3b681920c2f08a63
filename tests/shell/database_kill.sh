#!/usr/bin/env bash
# Processes killed with SIGKILL in the middle of writing leave nothing broken behind:
# - a host appending rows one statement at a time: the file opens again, passes its
#   check, and holds every row the host knew to be committed (and at most one more);
# - a host compacting a database: the destination is either absent or complete (never a
#   partial file), and the next compaction to it succeeds.
host=$1 tests=$2
source "$tests/shell/assert.bash"

# --- Appending -------------------------------------------------------------------------
cat >setup.lsp <<'LSP'
(kv_create_db "rows.mdb")
(kv_connect "rows.mdb" "w")
(kv_command "CREATE TABLE r (id COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, s TEXT(200))")
(kv_close_db)
LSP
"$host" setup.lsp >/dev/null 2>&1

cat >writer.lsp <<'LSP'
; Appends rows for ever; after each committed row, writes how many there are.
(kv_connect "rows.mdb" "w")
(setq i 0)
(while T
  (if (= 1 (kv_command "INSERT INTO r (s) VALUES ('a row that takes a little room in the file')"))
    (progn
      (setq i (1+ i))
      (setq f (open "committed.tmp" "w"))
      (write-line (itoa i) f)
      (close f)
      (vl-file-delete "committed")
      (vl-file-rename "committed.tmp" "committed"))))
LSP
for round in 1 2 3; do
  "$host" writer.lsp >writer.out 2>&1 &
  pid=$!
  for _ in $(seq 100); do [ -f committed ] && break; sleep 0.05; done
  sleep 0.$((3 * round))
  kill -9 $pid
  wait $pid 2>/dev/null
  known=$(cat committed 2>/dev/null || echo 0)
  count=$("$host" -e '(progn (kv_connect "rows.mdb" "w") (length (kv_sql "SELECT id FROM r")))' 2>&1 | tail -n 1)
  total=$((${total:-0} + known))
  expect_eq "round $round: the file opens and counts its rows" "yes" \
    "$([[ $count =~ ^[0-9]+$ ]] && echo yes || echo "no: $count")"
  if [[ $count =~ ^[0-9]+$ ]]; then
    expect_eq "round $round: no committed row lost" "yes" "$([ "$count" -ge "$total" ] && echo yes || echo "no: $count < $total")"
    expect_eq "round $round: no row from nowhere" "yes" "$([ "$count" -le $((total + 1)) ] && echo yes || echo "no: $count > $total + 1")"
    total=$count
  fi
  rm -f committed committed.tmp
done

# --- Compacting ------------------------------------------------------------------------
cat >big.lsp <<'LSP'
(kv_create_db "big.mdb")
(kv_connect "big.mdb" "w")
(kv_command "CREATE TABLE b (s TEXT(255))")
(kv_command "INSERT INTO b (s) VALUES ('0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789')")
(repeat 17 (kv_command "INSERT INTO b (s) SELECT s FROM b"))
(princ (strcat "\nrows " (itoa (fix (cdr (assoc "c" (car (kv_sql "SELECT count(*) AS c FROM b"))))))))
(kv_close_db)
(princ)
LSP
"$host" big.lsp >big.out 2>&1
expect_contains "the big database is made" "rows 131072" "$(cat big.out)"

"$host" -e '(kv_compact "big.mdb" "small.mdb")' >compact.out 2>&1 &
pid=$!
# Kill it as soon as the copy has begun: the destination or a file on its way to it.
for _ in $(seq 2000); do
  compgen -G "small.mdb" >/dev/null || compgen -G ".small.mdb.*" >/dev/null && break
  sleep 0.005
done
kill -9 $pid
wait $pid 2>/dev/null
echo "killed while copying: $(compgen -G ".small.mdb.*" >/dev/null && echo yes || echo no)"
if [ -e small.mdb ]; then
  out=$("$host" -e '(progn (kv_connect "small.mdb") (fix (cdr (assoc "c" (car (kv_sql "SELECT count(*) AS c FROM b"))))))' 2>&1 | tail -n 1)
  expect_eq "a destination left behind is complete" "131072" "$out"
  rm -f small.mdb
fi
expect_eq "the next compaction succeeds" '"OK"' "$("$host" -e '(kv_compact "big.mdb" "small.mdb")' 2>&1 | tail -n 1)"
out=$("$host" -e '(progn (kv_connect "small.mdb") (fix (cdr (assoc "c" (car (kv_sql "SELECT count(*) AS c FROM b"))))))' 2>&1 | tail -n 1)
expect_eq "the compacted copy holds every row" "131072" "$out"
finish
