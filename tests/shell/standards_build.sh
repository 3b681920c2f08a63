#!/usr/bin/env bash
# The sample standards database builds from its Access SQL through the module, from
# scratch, and holds what the SQL says: every row, the columns in their order, the named
# indexes (seeks on one and two columns), the stored queries, texts that need quoting or
# are not ASCII. Expected counts are read from the SQL itself.
host=$1 tests=$2
source "$tests/shell/assert.bash"
standards="$tests/../examples/standards"
db="$scratch/standards.mdb"

bash "$standards/build.sh" "$host" "$db" >build.txt 2>&1
expect_eq "build exit status" 0 $?
expect_contains "build reports the file" "Made $db." "$(cat build.txt)"
expect_eq "no partial file left" "" "$(ls "$scratch" | grep building)"

inserts() { grep -c "^INSERT INTO $1 " "$standards/data.sql"; }
# Column names of a table in schema.sql, in order, as a LISP list of strings.
columns() {
  awk -v t="$1" '$0 ~ "^CREATE TABLE " t " \\(" {on=1; next} on && /^\);/ {on=0}
                 on {print $1}' "$standards/schema.sql" |
    awk 'BEGIN {printf "("} {printf "%s\"%s\"", (NR>1?" ":""), $1} END {printf ")"}'
}

cat >check.lsp <<EOF
(defun show (label value) (princ (strcat "\n" label "=")) (prin1 value))
(defun rows (table) (cdar (car (kv_sql (strcat "SELECT Count(*) AS n FROM " table)))))
(defun field (name record) (cdr (assoc name record)))
(kv_connect "$db")
(foreach table '("tblGlobal" "tblLayer" "tblLayerSystem" "tblLayerKey" "tblTextStyle" "tblLabelGroup")
  (show (strcat "rows " table) (rows table)))
(show "general keys" (cdar (car (kv_sql "SELECT Count(*) AS n FROM tblLayerKey WHERE ixLayerSystem Is Null"))))
(foreach table '("tblGlobal" "tblLayer" "tblLayerSystem" "tblLayerKey" "tblTextStyle" "tblLabelGroup")
  (kv_table table)
  (show (strcat "columns " table) (mapcar 'car (kv_top))))
(kv_table "tblLayer" "sName")
(show "seek sName" (field "sName" (kv_seek "m-duct-supp")))
(setq supply (field "ixLayer" (kv_getrec)))
(kv_table "tblLayerKey" "isxLayerSystemKey")
(show "seek isxLayerSystemKey" (= supply (field "ixLayer" (kv_seek '(1 "SupplyDuct")))))
(show "seek isxLayerSystemKey, other system" (field "ixLayerSystem" (kv_seek '(7 "Equipment"))))
(kv_table "tblGlobal" "sKey")
(show "seek tblGlobal sKey" (field "sText" (kv_seek "CompanyName")))
(kv_table "tblTextStyle" "sKey")
(show "quoted text" (field "sKey" (kv_seek "Owner's Notes")))
(show "null height" (field "dHeight" (kv_getrec)))
(show "not ASCII" (field "sLabel" (car (kv_sql "SELECT sLabel FROM tblLabelGroup WHERE sKey = 'EnteringAir'"))))
(show "keys of system 1" (length (kv_query "qryLayerKeysOfSystem" "pSystem" 1)))
(show "labels of a group" (mapcar '(lambda (r) (field "iSortOrder" r)) (kv_query "qryLabelGroup" "pGroup" "PanelSchedule")))
(show "systems" (length (kv_query "qryLayerSystems")))
(kv_close_db)
(princ "\nend\n")
EOF
"$host" check.lsp >check.txt 2>&1
expect_eq "check exit status" 0 $?
out=$(cat check.txt)
expect_contains "check runs to its end" "end" "$out"
for table in tblGlobal tblLayer tblLayerSystem tblLayerKey tblTextStyle tblLabelGroup; do
  expect_contains "rows of $table" "rows $table=$(inserts $table)" "$out"
  expect_contains "columns of $table" "columns $table=$(columns $table)" "$out"
done
expect_contains "general layer system keys" \
  "general keys=$(grep -c '^INSERT INTO tblLayerKey .*VALUES (Null,' "$standards/data.sql")" "$out"
expect_contains "seek on sName ignores case" 'seek sName="M-DUCT-SUPP"' "$out"
expect_contains "two-column seek finds the key's layer" "seek isxLayerSystemKey=T" "$out"
expect_contains "two-column seek keeps the system" "seek isxLayerSystemKey, other system=7" "$out"
expect_contains "seek on tblGlobal" 'seek tblGlobal sKey="Tarvik Example Engineering"' "$out"
expect_contains "a quote in a text" "quoted text=\"Owner's Notes\"" "$out"
expect_contains "a null double" "null height=nil" "$out"
expect_contains "text that is not ASCII" 'not ASCII="EAT (°F)"' "$out"
expect_contains "stored query with a number parameter" \
  "keys of system 1=$(grep -c '^INSERT INTO tblLayerKey .*VALUES (1,' "$standards/data.sql")" "$out"
expect_contains "stored query with a text parameter, in order" \
  "labels of a group=($(seq -s ' ' 1 "$(grep -c "^INSERT INTO tblLabelGroup .*VALUES ('PanelSchedule'" "$standards/data.sql")"))" "$out"
expect_contains "stored query without parameters" \
  "systems=$(inserts tblLayerSystem)" "$out"

bash "$standards/build.sh" "$host" "$db" >again.txt 2>&1
expect_contains "a second build finds the file up to date" "is up to date." "$(cat again.txt)"
finish
