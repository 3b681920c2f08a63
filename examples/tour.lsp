;;; A short tour of Kelvo, run by `make run`.
;;; kelvo-host has loaded the module KelvoBrx15.arx and opened a drawing; the module
;;; answered by defining its LISP functions in that drawing. Each step says what it does.

(defun tour:step (title)
  (princ (strcat "\n\n== " title " ==\n")))

(defun tour:show (label value)
  (princ (strcat "  " label ": "))
  (prin1 value)
  (princ "\n"))

;;; ------------------------------------------------------------------------------------
(tour:step "The module and the drawing")
(tour:show "loaded modules" (arx))
(tour:show "open drawings" (host:documents))
(tour:show "kv_getVersion (always -1)" (kv_getVersion))
(tour:show "type of kv_fdir" (type kv_fdir))

;;; ------------------------------------------------------------------------------------
(tour:step "Folders and files")
(setq tour:dir (strcat (cond ((getenv "TMPDIR")) ("/tmp")) "/kelvo-tour"))
(kv_fdelete (strcat tour:dir "/standards.txt"))
(kv_fdelete (strcat tour:dir "/standards-copy.txt"))
(kv_fdelete (strcat tour:dir "/standards-moved.txt"))
(kv_rmdir tour:dir)
(tour:show "kv_mkdir" (kv_mkdir tour:dir))
(setq f (open (strcat tour:dir "/standards.txt") "w"))
(write-line "HVAC supply duct, layer M-DUCT-SUPP" f)
(close f)
(tour:show "kv_fcopy" (kv_fcopy (strcat tour:dir "/standards.txt")
                                (strcat tour:dir "/standards-copy.txt")))
(tour:show "kv_fcopyIfChanged (copy is as new as its source)"
           (kv_fcopyIfChanged (strcat tour:dir "/standards.txt")
                              (strcat tour:dir "/standards-copy.txt")))
(tour:show "kv_fcopyIfChanged (never creates a file)"
           (kv_fcopyIfChanged (strcat tour:dir "/standards.txt")
                              (strcat tour:dir "/nothing-here.txt")))
(tour:show "kv_fdir *.txt" (kv_fdir (strcat tour:dir "/*.txt")))
(tour:show "kv_fmove" (kv_fmove (strcat tour:dir "/standards-copy.txt")
                                (strcat tour:dir "/standards-moved.txt")))
(tour:show "kv_fdir after the move" (kv_fdir (strcat tour:dir "/standards*")))
(tour:show "kv_rmdir on a folder that is not empty" (kv_rmdir tour:dir))
(foreach name (kv_fdir (strcat tour:dir "/*.txt"))
  (kv_fdelete (strcat tour:dir "/" name)))
(tour:show "kv_rmdir once emptied" (kv_rmdir tour:dir))

;;; ------------------------------------------------------------------------------------
(tour:step "Messages")
(princ "  A message box answers with the name of the button pressed; here, with no\n")
(princ "  one at the keyboard, it answers its default button (the second: NO).\n")
(tour:show "kv_message_box"
           (kv_message_box "Tarvik" "Replace the layer standards?" '("YESNO" "?" "DEF2")))
(tour:show "kv_message_beep \"!\"" (kv_message_beep "!"))
(tour:show "kv_random" (numberp (kv_random)))

;;; ------------------------------------------------------------------------------------
(tour:step "Argument checking")
(princ "  Every function checks its arguments the same way: one message, and nil.\n")
(princ "  (kv_fcopy \"a\") gives:")
(prin1 (kv_fcopy "a"))
(terpri)
(princ "  (kv_mkdir 12) gives:")
(prin1 (kv_mkdir 12))
(terpri)

;;; ------------------------------------------------------------------------------------
(tour:step "Functions not built yet")
(princ "  A registered function that this build does not provide says so and gives nil.\n")
(princ "  (kv_modify_table \"tblLayer\") gives:")
(setq tour:result (kv_modify_table "tblLayer"))
(princ "\n  and returns ")
(prin1 tour:result)
(terpri)

;;; ------------------------------------------------------------------------------------
(tour:step "Several drawings")
(princ "  Each drawing has its own LISP names; the module defines its functions in\n")
(princ "  every drawing that opens. A script's next top-level form runs in the drawing\n")
(princ "  that is current then, so this step is one form.\n")
(progn
  (setq tour:new (host:new))
  (terpri)
  (tour:show "host:new" tour:new)
  (tour:show "open drawings" (host:documents))
  (tour:show "host:close" (host:close))
  (tour:show "open drawings" (host:documents)))
(load "tour_database.lsp")
(load "tour_drawing.lsp")
(princ "\nEnd of the tour.\n")
(princ)
