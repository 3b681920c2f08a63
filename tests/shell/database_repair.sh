#!/usr/bin/env bash
# A database file that is damaged, or that is not a database at all, goes through the
# product's repair function "compactDatabase" (defined here in LISP): the module calls
# it once with (path nil "Repair") and, when it answers non-nil, opens the file exactly
# once more.
host=$1 tests=$2
source "$tests/shell/assert.bash"

cat >make.lsp <<'LSP'
(kv_create_db "good.mdb")
(kv_connect "good.mdb")
(kv_command "CREATE TABLE Items (ixItem COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, sName TEXT(20))")
(kv_command "INSERT INTO Items (sName) VALUES ('survivor')")
(kv_close_db)
LSP
"$host" make.lsp >/dev/null 2>&1
cp good.mdb backup.mdb

# The repair: count the calls, show the arguments, then act as *mode* says: nil
# (give up), t (claim success without fixing), or fix (compact the file; when that
# fails too, put the last backup in its place).
cat >repair.lsp <<'LSP'
(setq *calls* 0)
(defun compactDatabase (path unused kind / result)
  (setq *calls* (1+ *calls*))
  (princ (strcat "\n[compactDatabase " path " " (vl-princ-to-string unused) " " kind "]"))
  (cond ((= *mode* "nil") nil)
        ((= *mode* "t") t)
        (t (setq result (kv_compact path "repaired.mdb"))
           (princ (strcat "\n[compact: " (vl-princ-to-string result) "]"))
           (kv_fdelete path)
           (if (equal result "OK")
             (kv_fmove "repaired.mdb" path)
             (kv_fcopy "backup.mdb" path))
           t)))
(defun try (file mode / answer)
  (setq *mode* mode *calls* 0)
  (setq answer (kv_connect file))
  (princ (strcat "\nconnect=" (vl-prin1-to-string answer) " calls=" (itoa *calls*)))
  (if answer (princ (strcat "\nrows=" (vl-prin1-to-string (kv_sql "SELECT sName FROM Items")))))
  (kv_close_db)
  (princ))
LSP

printf 'This is a text file, not a database.\n' >notdb.mdb
out=$("$host" repair.lsp -e '(try "notdb.mdb" "nil")' 2>&1)
expect_contains "not a database: repair called once with its arguments" \
  "[compactDatabase notdb.mdb nil Repair]" "$out"
expect_contains "repair answering nil: no reopen, nil" "connect=nil calls=1" "$out"
expect_eq "the error is printed once" 1 "$(grep -c "Kelvo Error: " <<<"$out")"
expect_contains "the engine's words" "Unrecognized database format" "$out"

out=$("$host" repair.lsp -e '(try "notdb.mdb" "t")' 2>&1)
expect_contains "repair claiming success: one reopen, still nil" "connect=nil calls=1" "$out"
expect_eq "still one error line" 1 "$(grep -c "Kelvo Error: " <<<"$out")"

out=$("$host" repair.lsp -e '(try "notdb.mdb" "fix")' 2>&1)
expect_contains "compaction of a non-database fails with its code" "[compact: 3343]" "$out"
expect_contains "repaired from the backup: connected" "connect=T calls=1" "$out"
expect_contains "the data is back" 'rows=((("sName" . "survivor")))' "$out"
expect_eq "only the failed compaction's error is printed" 1 "$(grep -c "Kelvo Error: " <<<"$out")"

# A damaged file: a real database whose header is overwritten.
cp good.mdb damaged.mdb
printf 'DAMAGED-HEADER!!' | dd of=damaged.mdb bs=1 seek=0 conv=notrunc status=none
out=$("$host" repair.lsp -e '(try "damaged.mdb" "fix")' 2>&1)
expect_contains "damaged: repair called" "[compactDatabase damaged.mdb nil Repair]" "$out"
expect_contains "damaged: connected after one repair" "connect=T calls=1" "$out"
expect_contains "damaged: data back" 'rows=((("sName" . "survivor")))' "$out"

# A truncated file.
cp good.mdb truncated.mdb
truncate -s 1000 truncated.mdb
out=$("$host" repair.lsp -e '(try "truncated.mdb" "nil")' 2>&1)
expect_contains "truncated: repair called" "[compactDatabase truncated.mdb nil Repair]" "$out"
expect_contains "truncated: nil without a fix" "connect=nil calls=1" "$out"

# A missing file is not repaired: one error, nil, with or without show-errors.
out=$("$host" repair.lsp -e '(kv_connect "missing.mdb")' -e '(kv_connect "missing.mdb" "w" t)' -e '*calls*' 2>&1)
expect_eq "missing file: two errors, one per call" 2 "$(grep -c "Kelvo Error: Could not find file" <<<"$out")"
expect_eq "missing file: never repaired" 0 "$(tail -n 1 <<<"$out")"

# Without a repair function the host's call fails: no reopen, one error.
printf 'Still not a database.\n' >other.mdb
out=$("$host" -e '(kv_connect "other.mdb")' 2>&1)
expect_contains "no repair function: nil" "nil" "$(tail -n 1 <<<"$out")"
expect_eq "no repair function: one error line" 1 "$(grep -c "Kelvo Error: " <<<"$out")"
finish
