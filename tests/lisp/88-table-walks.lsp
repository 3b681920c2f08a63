;; args: --no-module
; Table walks: each table keeps its own place, tblsearch with its third argument moves it,
; rewinding starts again, records made and changed through entmake/entmod are found, and
; a record's list from tblobjname round trips.
(defun names (table / r out)
  (setq r (tblnext table T))
  (while r (setq out (cons (cdr (assoc 2 r)) out) r (tblnext table)))
  (reverse out))
(foreach n '("Walls" "Ducts" "Pipes")
  (entmake (list '(0 . "LAYER") (cons 2 n) '(70 . 0) '(62 . 1))))
(entmake '((0 . "STYLE") (2 . "Notes") (70 . 0) (40 . 0.0) (41 . 0.9) (3 . "txt")))
(regapp "TARVIK")
(prin1 (names "LAYER")) (terpri)
(prin1 (names "style")) (terpri)
(prin1 (names "APPID")) (terpri)

; two tables walked at once keep their own places
(tblnext "LAYER" T)
(tblnext "STYLE" T)
(prin1 (cdr (assoc 2 (tblnext "LAYER")))) (terpri)
(prin1 (cdr (assoc 2 (tblnext "STYLE")))) (terpri)
(prin1 (cdr (assoc 2 (tblnext "LAYER")))) (terpri)
; tblsearch without its third argument leaves the place alone, with it moves it
(tblsearch "LAYER" "Walls")
(prin1 (cdr (assoc 2 (tblnext "LAYER")))) (terpri)
(tblsearch "LAYER" "walls" T)
(prin1 (cdr (assoc 2 (tblnext "LAYER")))) (terpri)
; at the end, nil until rewound
(tblsearch "LAYER" "Pipes" T)
(prin1 (list (tblnext "LAYER") (tblnext "LAYER"))) (terpri)
(prin1 (cdr (assoc 2 (tblnext "LAYER" T)))) (terpri)
; a failed search does not move the place
(tblsearch "LAYER" "NOSUCH" T)
(prin1 (cdr (assoc 2 (tblnext "LAYER")))) (terpri)

; a layer changed through entmod of its record: colour, and off as a negative colour
(setq r (tblobjname "LAYER" "Ducts"))
(entmod (subst '(62 . -5) (assoc 62 (entget r)) (entget r)))
(prin1 (cdr (assoc 62 (tblsearch "LAYER" "Ducts")))) (terpri)
; a record's name cannot be taken by another record
(prin1 (entmod (subst '(2 . "Pipes") (assoc 2 (entget r)) (entget r)))) (terpri)
(prin1 (names "LAYER")) (terpri)
; renamed to a free name, the old name is gone and the new one found
(entmod (subst '(2 . "Air") (assoc 2 (entget r)) (entget r)))
(prin1 (list (tblsearch "LAYER" "Ducts") (cdr (assoc 2 (tblsearch "LAYER" "air"))))) (terpri)
(princ)
