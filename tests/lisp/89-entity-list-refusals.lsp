;; args: --no-module
; Lists the host refuses: a refused entmod leaves the entity as it was, a list whose type
; is not first makes nothing, a reference to a space is not made, and entities the
; filters cannot find stay out of the walk.
(defun strip (l) (vl-remove-if '(lambda (g) (member (car g) '(-1 330 5))) l))
(entmake '((0 . "CIRCLE") (10 1.0 1.0 0.0) (40 . 2.0) (62 . 3)))
(setq c (entlast) before (entget c))
; a bad radius, a colour out of range, an unknown linetype, a bad point: each refused,
; and the circle keeps every group it had
(foreach change (list '(40 . -1.0) '(62 . 300) '(6 . "NOSUCH") '(10 . "here"))
  (prin1 (list change
               (vl-catch-all-error-p (vl-catch-all-apply 'entmod (list (list (cons -1 c) '(10 7.0 7.0 0.0) change))))
               (equal (strip before) (strip (entget c)))))
  (terpri))
; the same change alone is taken
(prin1 (cdr (assoc 10 (progn (entmod (list (cons -1 c) '(10 7.0 7.0 0.0))) (entget c))))) (terpri)

; the entity type comes first, or second after an entity name
(prin1 (entmake '((10 0.0 0.0 0.0) (0 . "LINE") (11 1.0 1.0 0.0)))) (terpri)
(prin1 (cdr (assoc 0 (entget (entlast))))) (terpri)
(prin1 (not (null (entmake (list (cons -1 c) '(0 . "POINT") '(10 0.0 0.0 0.0)))))) (terpri)

; model and paper space are not blocks to insert
(prin1 (entmake '((0 . "INSERT") (2 . "*Model_Space") (10 0.0 0.0 0.0)))) (terpri)
(prin1 (entmake '((0 . "INSERT") (2 . "*PAPER_SPACE") (10 0.0 0.0 0.0)))) (terpri)
(prin1 (cdr (assoc 0 (entget (entlast))))) (terpri)

; a reference with attributes, refused a block that does not exist, keeps its place, its
; block and its attributes
(entmake '((0 . "BLOCK") (2 . "TAG") (70 . 2) (10 0.0 0.0 0.0)))
(entmake '((0 . "ATTDEF") (10 0.0 2.0 0.0) (40 . 0.5) (1 . "") (3 . "Name?") (2 . "NAME") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "INSERT") (66 . 1) (2 . "TAG") (10 10.0 10.0 0.0)))
(entmake '((0 . "ATTRIB") (10 10.0 12.0 0.0) (40 . 1.0) (1 . "AHU-1") (2 . "NAME") (70 . 0)))
(entmake '((0 . "SEQEND")))
(setq i (entlast) before (entget i))
(prin1 (entmod (list (cons -1 i) '(10 50.0 50.0 0.0) '(2 . "NOPE")))) (terpri)
(prin1 (equal (strip before) (strip (entget i)))) (terpri)
(prin1 (mapcar '(lambda (e) (cdr (assoc 0 (entget e)))) (list (entnext i) (entnext (entnext i))))) (terpri)
(princ)
