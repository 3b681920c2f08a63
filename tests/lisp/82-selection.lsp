;; args: --no-module
; ssget "X" with filters, and the selection-set functions.
(defun types (ss / i out)
  (setq i 0)
  (if ss
    (repeat (sslength ss)
      (setq out (cons (cdr (assoc 0 (entget (ssname ss i)))) out) i (1+ i))))
  (reverse out))
(regapp "TARVIK")
(entmake '((0 . "LINE") (8 . "Ducts") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0) (62 . 1)))
(entmake '((0 . "CIRCLE") (8 . "Ducts-Supply") (10 5.0 5.0 0.0) (40 . 2.0)))
(entmake '((0 . "CIRCLE") (8 . "Pipes") (10 50.0 5.0 0.0) (40 . 8.0)
           (-3 ("TARVIK" (1000 . "tag") (1000 . "P1")))))
(entmake '((0 . "TEXT") (8 . "Notes") (10 0.0 20.0 0.0) (40 . 2.5) (1 . "Room 101")))

(prin1 (types (ssget "X"))) (terpri)
(prin1 (types (ssget "X" '((0 . "CIRCLE"))))) (terpri)
(prin1 (types (ssget "X" '((8 . "ducts*"))))) (terpri)              ; wildcards, any case
(prin1 (types (ssget "X" '((0 . "CIRCLE,LINE") (8 . "Ducts*"))))) (terpri)
(prin1 (types (ssget "X" '((-4 . ">") (40 . 5.0))))) (terpri)        ; relational test
(prin1 (types (ssget "X" '((62 . 256))))) (terpri)                   ; colour by layer
(prin1 (types (ssget "X" '((-4 . "<OR") (0 . "TEXT") (62 . 1) (-4 . "OR>"))))) (terpri)
(prin1 (types (ssget "X" '((-4 . "<NOT") (0 . "CIRCLE") (-4 . "NOT>"))))) (terpri)
(prin1 (types (ssget "X" '((-4 . ">,<,*") (10 1.0 10.0 0.0))))) (terpri)   ; per coordinate
(prin1 (types (ssget "X" '((-3 ("TARVIK")))))) (terpri)              ; extended data
(prin1 (ssget "X" '((0 . "ARC")))) (terpri)                          ; nothing: nil
(prin1 (vl-catch-all-error-message
         (vl-catch-all-apply 'ssget '("X" ((-4 . "<OR") (0 . "TEXT")))))) (terpri)
(prin1 (types (ssget "L"))) (terpri)

; building sets by hand
(setq s (ssadd))
(prin1 (sslength s)) (terpri)
(ssadd (entlast) s)
(ssadd (entlast) s)                       ; once only
(ssadd (entnext) s)
(prin1 (types s)) (terpri)
(prin1 (equal (ssmemb (entnext) s) (entnext))) (terpri)
(ssdel (entnext) s)
(prin1 (types s)) (terpri)
(prin1 (ssname s 5)) (terpri)
(prin1 (ssget "W" '(0 0) '(1 1))) (terpri)
(princ)
