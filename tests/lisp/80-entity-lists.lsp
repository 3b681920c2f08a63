;; args: --no-module
; Entities as group lists: entmake of each kind, entget back, entmod, entdel, entnext.
(defun show (e)
  ; the entity's groups without its name, owner and handle (they differ per run)
  (prin1 (vl-remove-if '(lambda (g) (member (car g) '(-1 330 5))) (entget e)))
  (terpri))
(defun make (l) (entmake l) (show (entlast)))

(make '((0 . "LINE") (10 1.0 2.0 0.0) (11 4.0 6.0 0.0)))
(make '((0 . "CIRCLE") (8 . "Pipes") (10 5.0 5.0 0.0) (40 . 2.5) (62 . 3)))
(make '((0 . "ARC") (10 0.0 0.0 0.0) (40 . 1.0) (50 . 0.0) (51 . 1.5708)))
(make '((0 . "POINT") (10 7.0 8.0 9.0)))
(make '((0 . "TEXT") (10 1.0 1.0 0.0) (40 . 2.5) (1 . "Supply air") (50 . 0.5)))
(make '((0 . "MTEXT") (10 0.0 20.0 0.0) (40 . 2.0) (41 . 30.0) (1 . "First line\\PSecond")))
(make '((0 . "LWPOLYLINE") (90 . 3) (70 . 1) (10 0.0 0.0) (10 10.0 0.0) (42 . 1.0) (10 10.0 10.0)))
(make '((0 . "3DFACE") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0) (12 1.0 1.0 0.0) (13 0.0 1.0 0.0) (70 . 4)))
(make '((0 . "LEADER") (71 . 1) (10 0.0 0.0 0.0) (10 5.0 5.0 0.0) (10 10.0 5.0 0.0)))

; a layer named by a new entity is made with it
(prin1 (cdr (assoc 2 (tblsearch "LAYER" "Pipes")))) (terpri)
; a type the host does not know, and a block that does not exist, make nothing
(prin1 (entmake '((0 . "WIDGET") (10 0.0 0.0 0.0)))) (terpri)
(prin1 (entmake '((0 . "INSERT") (2 . "NOBLOCK") (10 0.0 0.0 0.0)))) (terpri)
; a bad group is an error the script can catch
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'entmake '(((0 . "LINE") (10 . "x")))))) (terpri)

; entmod changes what the list gives and keeps the rest
(setq c (entnext (entnext)))
(entmod (subst '(40 . 4.0) (assoc 40 (entget c)) (entget c)))
(show c)
(prin1 (entmod '((0 . "CIRCLE")))) (terpri)   ; no entity name: nothing
; an entity cannot change its type
(prin1 (entmod (subst '(0 . "LINE") '(0 . "CIRCLE") (entget c)))) (terpri)

; entdel erases, a second entdel brings it back
(entdel c)
(prin1 (entget c)) (terpri)
(entdel c)
(prin1 (cdr (assoc 40 (entget c)))) (terpri)

; a 2D polyline: POLYLINE, its vertices, SEQEND; entnext walks into it
(entmake '((0 . "POLYLINE") (66 . 1) (70 . 0)))
(entmake '((0 . "VERTEX") (10 0.0 0.0 0.0)))
(entmake '((0 . "VERTEX") (10 3.0 4.0 0.0) (42 . 0.5)))
(entmake '((0 . "SEQEND")))
(setq p (entlast))
(prin1 (cdr (assoc 0 (entget p)))) (terpri)
(setq v (entnext p))
(while v
  (prin1 (list (cdr (assoc 0 (entget v))) (cdr (assoc 10 (entget v))) (cdr (assoc 42 (entget v)))))
  (terpri)
  (setq v (entnext v)))
; a VERTEX without its POLYLINE is refused
(prin1 (entmake '((0 . "VERTEX") (10 0.0 0.0 0.0)))) (terpri)
; the handle finds the entity again
(prin1 (equal (handent (cdr (assoc 5 (entget p)))) p)) (terpri)
(prin1 (handent "FFFFFF")) (terpri)
(princ)
