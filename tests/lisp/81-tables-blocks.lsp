;; args: --no-module
; Table entries: tblsearch, tblnext, regapp, layers and blocks made by entmake.
(prin1 (tblsearch "LAYER" "0")) (terpri)
(prin1 (tblsearch "layer" "NOSUCH")) (terpri)
(prin1 (tblsearch "STYLE" "standard")) (terpri)
(prin1 (tblsearch "VIEW" "x")) (terpri)          ; a table this host does not keep

; a layer record from a list
(prin1 (entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord")
                  (2 . "Ducts") (70 . 0) (62 . 5) (6 . "Continuous"))))
(terpri)
(prin1 (entmake '((0 . "LAYER") (2 . "Ducts") (70 . 0)))) (terpri)   ; the name is taken
(prin1 (entmake '((0 . "LAYER") (2 . "a<b") (70 . 0)))) (terpri)     ; not a valid name

; tblnext walks the table in order; rewind starts again
(setq names nil)
(setq r (tblnext "LAYER" T))
(while r (setq names (cons (cdr (assoc 2 r)) names) r (tblnext "LAYER")))
(prin1 (reverse names)) (terpri)
(prin1 (cdr (assoc 2 (tblnext "LAYER" T)))) (terpri)
; tblsearch with setnext makes tblnext continue after the entry found
(tblsearch "LTYPE" "ByLayer" T)
(prin1 (cdr (assoc 2 (tblnext "LTYPE")))) (terpri)

; registered applications
(prin1 (regapp "TARVIK")) (terpri)
(prin1 (regapp "TARVIK")) (terpri)    ; already there
(prin1 (cdr (assoc 2 (tblsearch "APPID" "tarvik")))) (terpri)

; a block definition: BLOCK, its entities, ENDBLK answers the name
(prin1 (entmake '((0 . "BLOCK") (2 . "TAG") (70 . 0) (10 1.0 1.0 0.0)))) (terpri)
(entmake '((0 . "CIRCLE") (10 1.0 1.0 0.0) (40 . 1.0)))
(entmake '((0 . "LINE") (10 0.0 1.0 0.0) (11 2.0 1.0 0.0)))
(prin1 (entmake '((0 . "ENDBLK")))) (terpri)
(setq b (tblsearch "BLOCK" "TAG"))
(prin1 (vl-remove-if '(lambda (g) (= (car g) -2)) b)) (terpri)
; the block's entities, from its first one
(setq e (cdr (assoc -2 b)))
(while e (prin1 (cdr (assoc 0 (entget e)))) (terpri) (setq e (entnext e)))
; block entities are not in model space
(prin1 (entnext)) (terpri)
; ENDBLK without BLOCK, and a second block of the same name, are refused
(prin1 (entmake '((0 . "ENDBLK")))) (terpri)
(prin1 (entmake '((0 . "BLOCK") (2 . "TAG") (10 0.0 0.0 0.0)))) (terpri)
; tblnext does not list model and paper space
(prin1 (cdr (assoc 2 (tblnext "BLOCK" T)))) (terpri)
(prin1 (tblnext "BLOCK")) (terpri)

; an insertion with attributes: INSERT (66 . 1), ATTRIB ..., SEQEND
(entmake '((0 . "INSERT") (66 . 1) (2 . "TAG") (10 10.0 10.0 0.0) (41 . 2.0) (42 . 2.0) (43 . 2.0)))
(entmake '((0 . "ATTRIB") (10 10.0 12.0 0.0) (40 . 1.0) (1 . "AHU-1") (2 . "NAME") (70 . 0)))
(entmake '((0 . "SEQEND")))
(setq i (entlast))
(prin1 (list (cdr (assoc 0 (entget i))) (cdr (assoc 2 (entget i))) (cdr (assoc 66 (entget i))))) (terpri)
(setq a (entnext i))
(prin1 (list (cdr (assoc 0 (entget a))) (cdr (assoc 2 (entget a))) (cdr (assoc 1 (entget a))))) (terpri)
(prin1 (cdr (assoc 0 (entget (entnext a))))) (terpri)
(prin1 (entnext (entnext a))) (terpri)
(princ)
