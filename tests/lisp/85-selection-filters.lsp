;; args: --no-module
; ssget "X" filters beyond the simple ones: nested logical groups, relational tests on
; reals, integers and point coordinates, wildcard forms, the layout group, and the forms
; the host refuses. Erased entities are not selected and handent still finds them.
(defun types (ss / i out)
  (setq i 0)
  (if ss
    (repeat (sslength ss)
      (setq out (cons (cdr (assoc 0 (entget (ssname ss i)))) out) i (1+ i))))
  (reverse out))
(defun try (filter / r)
  (setq r (vl-catch-all-apply 'ssget (list "X" filter)))
  (if (vl-catch-all-error-p r) (vl-catch-all-error-message r) (types r)))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0) (62 . 1)))
(entmake '((0 . "CIRCLE") (10 5.0 5.0 0.0) (40 . 2.0) (62 . 3)))
(entmake '((0 . "CIRCLE") (8 . "Pipes") (10 50.0 5.0 0.0) (40 . 8.0)))
(entmake '((0 . "TEXT") (10 0.0 20.0 0.0) (40 . 2.5) (1 . "Room 101")))
(entmake '((0 . "ARC") (10 0.0 0.0 0.0) (40 . 1.0) (50 . 0.0) (51 . 1.5708)))

; logical groups, nested
(prin1 (try '((-4 . "<AND") (0 . "CIRCLE") (-4 . "<=") (40 . 2.0) (-4 . "AND>")))) (terpri)
(prin1 (try '((-4 . "<XOR") (0 . "CIRCLE") (8 . "Pipes") (-4 . "XOR>")))) (terpri)
(prin1 (try '((-4 . "<OR") (-4 . "<AND") (0 . "CIRCLE") (40 . 8.0) (-4 . "AND>") (0 . "LINE") (-4 . "OR>")))) (terpri)
(prin1 (try '((-4 . "<NOT") (-4 . "<OR") (0 . "CIRCLE") (0 . "LINE") (-4 . "OR>") (-4 . "NOT>")))) (terpri)
; relational tests: only entities that have the group take part
(prin1 (try '((-4 . "/=") (40 . 2.0)))) (terpri)
(prin1 (try '((-4 . "*") (40 . 0.0)))) (terpri)
(prin1 (try '((-4 . ">=") (40 . 2.5) (-4 . "<") (40 . 8.0)))) (terpri)
(prin1 (try '((-4 . "&") (62 . 2)))) (terpri)
(prin1 (try '((-4 . "&=") (62 . 3)))) (terpri)
(prin1 (try '((-4 . "<") (62 . 256)))) (terpri)
(prin1 (try '((-4 . ">=,>=,*") (10 5.0 5.0 0.0)))) (terpri)
(prin1 (try '((-4 . "<,*,*") (10 5.0 0.0 0.0)))) (terpri)
; wildcards: negation, one digit, a set, an escaped star
(prin1 (try '((0 . "~CIRCLE")))) (terpri)
(prin1 (try '((0 . "[AC]*")))) (terpri)
(prin1 (try '((1 . "Room ###")))) (terpri)
(prin1 (try '((1 . "Room`*")))) (terpri)
; the layout group: every entity here is in model space
(prin1 (try '((410 . "model")))) (terpri)
(prin1 (try '((410 . "Layout1")))) (terpri)
; refused forms
(prin1 (try '((-4 . "<NOT") (0 . "CIRCLE") (0 . "LINE") (-4 . "NOT>")))) (terpri)
(prin1 (try '((-4 . "<XOR") (0 . "CIRCLE") (-4 . "XOR>")))) (terpri)
(prin1 (try '((-4 . "AND>")))) (terpri)
(prin1 (try '((-4 . "=>") (40 . 1.0)))) (terpri)
(prin1 (try '((-4 . ">")))) (terpri)

; erased entities are not selected; handent still names them and entdel brings them back
(setq c (ssname (ssget "X" '((0 . "CIRCLE") (8 . "Pipes"))) 0))
(setq h (cdr (assoc 5 (entget c))))
(entdel c)
(prin1 (try '((0 . "CIRCLE")))) (terpri)
(prin1 (equal (handent h) c)) (terpri)
(prin1 (entget (handent h))) (terpri)
(entdel (handent h))
(prin1 (try '((0 . "CIRCLE")))) (terpri)
; a set made before the erasure keeps its count; ssname still answers the name
(setq all (ssget "X"))
(entdel c)
(prin1 (sslength all)) (terpri)
(prin1 (equal (ssname all 2) c)) (terpri)
(princ)
