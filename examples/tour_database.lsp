;;; The database part of the tour, loaded by tour.lsp (it uses tour:step and tour:show).
;;; It works on the sample standards database, standards.mdb, which `make run` builds
;;; beside this file from examples/standards/*.sql. Each step says what it does.

(defun tour:field (name record) (cdr (assoc name record)))

;; Shows the named fields of a record, one per line.
(defun tour:fields (record names)
  (foreach name names
    (tour:show (strcat "  " name) (tour:field name record))))

(defun tour:database ()
  ;; ----------------------------------------------------------------------------------
  (tour:step "A standards database")
  (princ "  kv_connect opens an Access database file (here SQLite underneath) and makes\n")
  (princ "  it the current database; the mode \"w\" opens it for writing.\n")
  (tour:show "kv_connect \"standards.mdb\" \"w\"" (kv_connect "standards.mdb" "w"))
  (tour:show "kv_readonly" (kv_readonly))
  (tour:show "kv_exist \"tblLayerKey\"" (kv_exist "tblLayerKey"))

  ;; ----------------------------------------------------------------------------------
  (tour:step "Walking a table")
  (princ "  kv_table opens a table as a cursor, in the order of the index named;\n")
  (princ "  kv_top goes to the first record and kv_skip moves on, each returning the\n")
  (princ "  record as a list of (field name . value) pairs, until nil at the end.\n")
  (tour:show "kv_table \"tblLayerSystem\" \"ixLayerSystem\""
             (kv_table "tblLayerSystem" "ixLayerSystem"))
  (tour:show "kv_count" (kv_count))
  (setq tour:record (kv_top))
  (tour:show "first five pairs of kv_top"
             (list (nth 0 tour:record) (nth 1 tour:record) (nth 2 tour:record)
                   (nth 3 tour:record) (nth 4 tour:record)))
  (princ "  The layer systems, by kv_skip:\n")
  (while tour:record
    (princ (strcat "    " (itoa (tour:field "ixLayerSystem" tour:record)) "  "
                   (tour:field "sDescription" tour:record) "\n"))
    (setq tour:record (kv_skip)))
  (tour:show "kv_skip past the end" (kv_skip))

  ;; ----------------------------------------------------------------------------------
  (tour:step "Seeking by key")
  (princ "  kv_seek finds a record on the current index. Text keys compare without\n")
  (princ "  regard to case, as in Access.\n")
  (kv_table "tblLayer" "sName")
  (tour:show "kv_current_table" (kv_current_table))
  (tour:show "kv_current_index" (kv_current_index))
  (tour:fields (kv_seek "m-duct-supp")
               '("ixLayer" "sName" "bRGBColor" "iRed" "iGreen" "iBlue" "sLinetype"
                 "sLineweight" "bPlot"))
  (tour:show "kv_seek \"NO-SUCH-LAYER\"" (kv_seek "NO-SUCH-LAYER"))

  ;; ----------------------------------------------------------------------------------
  (tour:step "Seeking on two columns")
  (princ "  The index isxLayerSystemKey is on (ixLayerSystem, sKey): a list of two key\n")
  (princ "  values finds the key of one layer system. The same key name selects another\n")
  (princ "  layer in another system; nil for the system finds the key of the general\n")
  (princ "  layer system, whose ixLayerSystem is null.\n")
  (kv_table "tblLayerKey" "isxLayerSystemKey")
  (foreach key '((1 "Dimensions") (4 "Dimensions") (7 "Dimensions") (nil "Dimensions")
                 (2 "SupplyDuct"))
    (setq tour:record (kv_seek key))
    (kv_table "tblLayer" "ixLayer")
    (tour:show (strcat "  kv_seek " (vl-prin1-to-string key) " -> layer")
               (tour:field "sName" (kv_seek (tour:field "ixLayer" tour:record))))
    (kv_table "tblLayerKey"))

  ;; ----------------------------------------------------------------------------------
  (tour:step "A select")
  (princ "  kv_sql runs Access SQL and returns one record list per row.\n")
  (setq tour:rows
         (kv_sql "SELECT sName, iColor, sLinetype FROM tblLayer WHERE sName LIKE 'P-DOMW-*' AND sName NOT LIKE '*-DEMO' ORDER BY sName"))
  (tour:show "rows" (length tour:rows))
  (foreach row tour:rows (princ "    ") (prin1 row) (terpri))

  ;; ----------------------------------------------------------------------------------
  (tour:step "A stored query")
  (princ "  kv_query runs a query saved in the database, with its parameters given as\n")
  (princ "  name and value: here the labels of the fan schedule, in their order.\n")
  (foreach row (kv_query "qryLabelGroup" "pGroup" "FanSchedule")
    (princ (strcat "    " (itoa (tour:field "iSortOrder" row)) "  "
                   (tour:field "sLabel" row) "\n")))

  ;; ----------------------------------------------------------------------------------
  (tour:step "Changing a record")
  (princ "  kv_replace writes the named fields into the current record and returns the\n")
  (princ "  record as stored; kv_getrec reads it again. The tour then puts it back.\n")
  (kv_table "tblTextStyle" "sKey")
  (setq tour:record (kv_seek "DuctSize"))
  (setq tour:height (tour:field "dHeight" tour:record))
  (tour:fields tour:record '("sKey" "sStyleName" "dHeight"))
  (tour:show "kv_replace dHeight 0.125"
             (tour:field "dHeight" (kv_replace (list (cons "dHeight" 0.125)))))
  (tour:show "kv_getrec dHeight" (tour:field "dHeight" (kv_getrec)))
  (tour:show "put back" (tour:field "dHeight" (kv_replace (list (cons "dHeight" tour:height)))))

  ;; ----------------------------------------------------------------------------------
  (tour:step "Closing")
  (tour:show "kv_close_db" (kv_close_db))
  (tour:show "kv_mdb after closing" (kv_mdb)))

(if (findfile "standards.mdb")
  (tour:database)
  (princ "\n\n== A standards database ==\n  standards.mdb is not here: `make run` builds it.\n"))
(princ)
