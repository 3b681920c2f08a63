;; args: --no-module
; xdsize: the bytes extended data takes in an object; xdroom: what an object can still take.
(regapp "KELVO")
(entmake '((0 . "POINT") (10 0 0 0) (-3 ("KELVO" (1000 . "abc") (1070 . 1)))))
(prin1 (list (xdsize '((-3 ("KELVO" (1000 . "abc") (1070 . 1)))))
             (xdsize '(("KELVO" (1040 . 1.0) (1010 1.0 2.0 3.0))))
             (xdsize '((-3 ("KELVO" (1070 . "not a number")))))))
(terpri)
(setq e (entlast))
(prin1 (list (xdroom e) (+ (xdroom e) (xdsize (cdr (assoc -3 (entget e '("KELVO")))))))) (terpri)
(princ)
