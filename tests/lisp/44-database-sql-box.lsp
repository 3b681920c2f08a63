; Failure mode 0 of kv_sql asks the user; on Yes the statement and the error are shown.
(defun show (label value) (princ label) (princ ": ") (prin1 value) (terpri))
(kv_create_db "box.mdb")
(kv_connect "box.mdb")
(kv_command "CREATE TABLE T (ixT COUNTER CONSTRAINT PrimaryKey PRIMARY KEY)")
(show "answer No" (kv_sql "SELECT * FROM Missing"))
(show "answer Yes" (kv_sql "SELECT * FROM Missing" 0))
(show "no rows never asks" (kv_sql "SELECT * FROM T"))
(kv_close_db)
