;;; Builds the sample standards database from its Access SQL, through the module's own
;;; database functions: kv_create_db makes the file, kv_connect opens it, and kv_command
;;; runs each statement of schema.sql, data.sql and queries.sql in turn.
;;;
;;; Run by kelvo-host with the module loaded:
;;;   KELVO_STANDARDS_DB=<file to make>  KELVO_STANDARDS_SQL=<folder of the .sql files>
;;;   kelvo-host build.lsp
;;; Defaults: standards.mdb and the folder standards, both relative to the working folder.
;;; An existing file of that name is replaced. A statement that fails stops the build with
;;; the statement shown, the database closed and the partial file deleted, and the run
;;; ends in an error (exit status 1).

(defun standards:setting (name default / value)
  (setq value (getenv name))
  (if (and value (/= value "")) value default))

(setq standards:db (standards:setting "KELVO_STANDARDS_DB" "standards.mdb"))
(setq standards:sql (standards:setting "KELVO_STANDARDS_SQL" "standards"))
(setq standards:count 0)

(defun standards:fail (message)
  (princ (strcat "\nStandards database not built: " message "\n"))
  (kv_close_db)
  (kv_fdelete standards:db)
  (exit))

;; A line that holds only blanks, or a note for the reader ("--" first), is skipped.
(defun standards:skip-line-p (line / trimmed)
  (setq trimmed (vl-string-trim " \t\r" line))
  (or (= trimmed "") (= (substr trimmed 1 2) "--")))

;; The statement is complete when its last line ends with ";".
(defun standards:ends-statement-p (line / trimmed)
  (setq trimmed (vl-string-right-trim " \t\r" line))
  (and (> (strlen trimmed) 0) (= (substr trimmed (strlen trimmed)) ";")))

(defun standards:run (statement / affected)
  (setq affected (kv_command statement))
  (if (not (numberp affected))
    (standards:fail (strcat "this statement failed:\n" statement)))
  (setq standards:count (1+ standards:count)))

;; Runs every statement of one file, in order.
(defun standards:run-file (name / path file line statement)
  (setq path (strcat standards:sql "/" name))
  (if (not (setq file (open path "r")))
    (standards:fail (strcat "cannot read " path)))
  (setq statement nil)
  (while (setq line (read-line file))
    (setq line (vl-string-right-trim "\r" line))
    (cond
      ((and (null statement) (standards:skip-line-p line)))
      (t
       (setq statement (if statement (strcat statement "\n" line) line))
       (if (standards:ends-statement-p line)
         (progn (standards:run statement) (setq statement nil))))))
  (close file)
  (if statement (standards:fail (strcat path " ends inside a statement:\n" statement))))

(progn
  (kv_fdelete standards:db)
  (if (not (kv_create_db standards:db))
    (standards:fail (strcat "cannot create " standards:db)))
  (if (not (kv_connect standards:db "w"))
    (standards:fail (strcat "cannot open " standards:db)))
  (foreach name '("schema.sql" "data.sql" "queries.sql")
    (standards:run-file name))
  (kv_close_db)
  (princ (strcat "\nBuilt " standards:db " with " (itoa standards:count) " statements.\n"))
  (princ))
