#!/usr/bin/env bash
# The reconnect-and-retry of the kv_sql family with a database file that goes away and
# comes back: one reconnect attempt, then the failure mode's answer; once the file is
# back, the retry reopens it on the same connection and the rows come through.
host=$1 tests=$2
source "$tests/shell/assert.bash"

cat >retry.lsp <<'LSP'
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))
(kv_create_db "sql.mdb")
(kv_connect "sql.mdb")
(kv_command "CREATE TABLE Fans (ixFan COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, sTag TEXT(10))")
(kv_command "INSERT INTO Fans (sTag) VALUES ('EF-1')")
(kv_table "Fans")
(kv_fmove "sql.mdb" "moved.mdb")
(show "unreachable, mode 2" (kv_sql-error "SELECT * FROM Nowhere"))
(show "unreachable, mode 1" (kv_sql-nil "SELECT * FROM Nowhere"))
(show "unreachable, mode 0" (kv_sql "SELECT * FROM Nowhere"))
(kv_fmove "moved.mdb" "sql.mdb")
(show "back: the retry reopens and answers" (kv_sql "SELECT sTag FROM Fans"))
(show "the connection's tables were closed" (kv_current_table))
(show "open again" (vl-filename-base (kv_mdb)))
(princ)
LSP
"$host" --ui-log ui.log retry.lsp >out.txt 2>&1
expect_eq "status" 0 $?
out=$(sed "s|$scratch/||g" out.txt)
expect_contains "mode 2: one reconnect, its error, then *ERROR*" \
  $'\nKelvo Error: Could not find file \'sql.mdb\'.\nunreachable, mode 2: "*ERROR*"' "$out"
expect_contains "mode 1: nil" $'\nKelvo Error: Could not find file \'sql.mdb\'.\nunreachable, mode 1: nil' "$out"
expect_contains "mode 0 after a failed reopen: bad data, no box" \
  $'\nKelvo Error: Could not find file \'sql.mdb\'.\nBad data passed .\n\nunreachable, mode 0: nil' "$out"
expect_eq "no message box" "" "$(cat ui.log 2>/dev/null)"
expect_contains "the rows after the file came back" \
  $'back: the retry reopens and answers: (((\"sTag\" . \"EF-1\")))' "$out"
expect_contains "tables closed" $'the connection\'s tables were closed: ""' "$out"
expect_contains "reopened" $'open again: "sql"' "$out"
expect_eq "three errors in all" 3 "$(grep -c "Kelvo Error" out.txt)"
finish
