#!/usr/bin/env bash
# File names are bytes: folders and files named in UTF-8 outside ASCII work everywhere a
# name is taken (LISP file functions, drawings, modules, options, the database
# functions), in the C locale as in any other, and nothing ends the host.
host=$1 tests=$2
source "$tests/shell/assert.bash"
export LC_ALL=C
unset LANG LANGUAGE

dir="Größe ünd 日本"
mkdir "$dir"
printf '(princ "\\nloaded from the folder")\n' >"$dir/hallo.lsp"

cat >names.lsp <<LSP
(princ (strcat "\nfindfile: " (vl-filename-base (findfile "hallo.lsp"))))
(load "$dir/hallo.lsp")
(load "hallo")
(setq f (open "$dir/Notiz ä.txt" "w"))
(write-line "Grüße" f)
(close f)
(princ (strcat "\nsize: " (itoa (vl-file-size "$dir/Notiz ä.txt"))))
(princ (strcat "\ncopied: " (itoa (vl-file-copy "$dir/Notiz ä.txt" "$dir/Kopie ö.txt"))))
(princ (strcat "\nlisted: " (vl-prin1-to-string (vl-directory-files "$dir" "*.txt" 1))))
(princ (strcat "\ncreated: " (vl-prin1-to-string (kv_create_db "$dir/Größe.mdb"))))
(princ (strcat "\nconnected: " (vl-prin1-to-string (kv_connect "$dir/Größe.mdb" "w"))))
(kv_command "CREATE TABLE Maße (Länge LONG)")
(kv_command "INSERT INTO Maße (Länge) VALUES (7)")
(princ (strcat "\nrows: " (vl-prin1-to-string (kv_sql "SELECT Länge FROM Maße"))))
(princ (strcat "\ncompacted: " (vl-prin1-to-string (kv_compact "$dir/Größe.mdb" "$dir/Kleiner.mdb"))))
(kv_close_db)
(princ (strcat "\nsaved: " (vl-filename-base (host:saveas "$dir/Zeichnung ß.dxf"))))
(princ (strcat "\nopened: " (itoa (host:open "$dir/Zeichnung ß.dxf"))))
(princ (strcat "\nsaved again: " (vl-filename-base (host:save))))
(princ (strcat "\nas dwg: " (vl-filename-base (host:saveas "$dir/Zeichnung ß.dwg"))))
(princ (strcat "\nrendered: " (vl-filename-base (host:render "$dir/Bild ü.svg"))))
(princ (strcat "\narxload: " (arxload "$dir/Modul ä.arx" "not loaded")))
(princ (strcat "\narxunload: " (arxunload "Modul ä.arx" "not loaded")))
(princ)
LSP
out=$("$host" --prefix "$dir" names.lsp 2>&1)
status=$?
expect_eq "the script runs to its end" 0 $status
expect_eq "what it prints" "Loading Tarvik Kelvo (Direct)
findfile: hallo
loaded from the folder
loaded from the folder
size: 8
copied: 8
listed: (\"Kopie ö.txt\" \"Notiz ä.txt\")
created: T
connected: T
rows: (((\"Länge\" . 7)))
compacted: \"OK\"
saved: Zeichnung ß
Loading Tarvik Kelvo (Direct)
opened: 1
saved again: Zeichnung ß
as dwg: Zeichnung ß
rendered: Bild ü
arxload: not loaded
arxunload: not loaded" "$(sed '/^$/d' <<<"$out")"

# A name that is not UTF-8 at all (Latin-1 bytes) is listed, and the name listed opens,
# copies and deletes the file it came from.
printf 'x\n' >"$dir/caf$(printf '\351').txt"
cat >latin1.lsp <<LSP
(setq name (car (vl-directory-files "$dir" "caf*" 1)))
(princ (strcat "\nsize: " (itoa (vl-file-size (strcat "$dir/" name)))))
(princ (strcat "\ncopied: " (itoa (vl-file-copy (strcat "$dir/" name) "copy.txt"))))
(princ (strcat "\nread: " (read-line (setq f (open (strcat "$dir/" name) "r")))))
(close f)
(princ (strcat "\ndeleted: " (vl-prin1-to-string (vl-file-delete (strcat "$dir/" name)))))
(princ)
LSP
out=$("$host" latin1.lsp 2>&1)
expect_eq "a name that is not UTF-8 round-trips" "Loading Tarvik Kelvo (Direct)
size: 2
copied: 2
read: x
deleted: T" "$(sed '/^$/d' <<<"$out")"

# The command-line options take such names too.
out=$("$host" --drawing "$dir/Zeichnung ß.dwg" --save "$dir/Neu ø.dxf" --render "$dir/Neu ø.png" \
  -e '(vl-filename-base (getvar "DWGNAME"))' 2>&1)
expect_eq "--drawing, --save and --render" 0 $?
expect_contains "the drawing's name" '"Zeichnung ß"' "$out"
expect_eq "the saved and rendered files" "yes yes" \
  "$([ -s "$dir/Neu ø.dxf" ] && echo yes) $([ -s "$dir/Neu ø.png" ] && echo yes)"
out=$("$host" --drawing "$dir/Fehlt ß.dwg" 2>&1)
expect_eq "a missing drawing is an error, not a crash" 1 $?
expect_contains "and says which" "cannot open drawing $dir/Fehlt ß.dwg: no such file" "$out"
out=$("$host" --module "$dir/Modul ä.arx" -e '(+ 1 2)' 2>&1)
expect_contains "a missing module with such a name is reported" "Modul ä.arx: module not found" "$out"
finish
