;; args: --no-module
; Extended data through entmake, entmod and entget: the -3 group forms, the application
; list, and the limits the host keeps (string length, balanced braces, total size).
(defun xd (e apps) (cdr (assoc -3 (entget e apps))))
(defun repeat-string (s n / out) (setq out "") (repeat n (setq out (strcat out s))) out)
(regapp "TARVIK")
(regapp "OTHER")

; every item kind comes back as it went in
(entmake '((0 . "POINT") (10 1.0 2.0 0.0)
           (-3 ("TARVIK" (1000 . "tag") (1002 . "{") (1040 . 2.5) (1070 . 7) (1071 . 123456)
                         (1002 . "}") (1010 1.0 2.0 3.0) (1041 . 4.0) (1042 . 0.5))
               ("OTHER" (1000 . "second")))))
(setq p (entlast))
(prin1 (xd p '("TARVIK"))) (terpri)
; the application list: names by wildcard, without regard to case; none asked, none given
(prin1 (xd p '("other"))) (terpri)
(prin1 (mapcar 'car (xd p '("*")))) (terpri)
(prin1 (xd p '("NOSUCH"))) (terpri)
(prin1 (assoc -3 (entget p))) (terpri)

; entmod replaces one application's part and keeps the other's
(entmod (list (cons -1 p) '(-3 ("TARVIK" (1000 . "changed")))))
(prin1 (xd p '("*"))) (terpri)
; an application named without data drops its part
(entmod (list (cons -1 p) '(-3 ("OTHER"))))
(prin1 (xd p '("*"))) (terpri)

; refused: an application not registered, braces that do not balance, a string over 255
(prin1 (entmake '((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("NOTREG" (1000 . "x")))))) (terpri)
(prin1 (entmake '((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("TARVIK" (1002 . "{") (1000 . "x")))))) (terpri)
(prin1 (entmake '((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("TARVIK" (1002 . "}") (1002 . "{")))))) (terpri)
(prin1 (entmake '((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("TARVIK" (1002 . "(")))))) (terpri)
(prin1 (entmake '((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("TARVIK" (1005 . "not-hex")))))) (terpri)
(prin1 (entmake '((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("TARVIK" (1005 . "1F")))))) (terpri)
; a 16-bit integer that does not fit is an error, not a different number
(prin1 (vl-catch-all-error-message
         (vl-catch-all-apply 'entmake '(((0 . "POINT") (10 0.0 0.0 0.0) (-3 ("TARVIK" (1070 . 70000))))))))
(terpri)
(prin1 (vl-catch-all-error-message
         (vl-catch-all-apply 'entmake '(((0 . "LWPOLYLINE") (90 . 3.0e9) (10 0.0 0.0) (10 1.0 0.0))))))
(terpri)
(prin1 (strlen (cdr (cadr (cadr (assoc -3 (entmake (list '(0 . "POINT") '(10 0.0 0.0 0.0)
         (list -3 (list "TARVIK" (cons 1000 (repeat-string "x" 255))))))))))))
(terpri)
(prin1 (entmake (list '(0 . "POINT") '(10 0.0 0.0 0.0)
                      (list -3 (list "TARVIK" (cons 1000 (repeat-string "x" 256))))))) (terpri)

; the whole of an entity's extended data is limited: 60 strings of 200 fit, 60 more do not,
; and the refused entmod leaves what was there
(setq chunk (repeat-string "y" 200) items nil)
(repeat 30 (setq items (cons (cons 1000 chunk) items)))
(entmake (list '(0 . "POINT") '(10 0.0 0.0 0.0) (cons -3 (list (cons "TARVIK" items) (cons "OTHER" items)))))
(setq big (entlast))
(prin1 (mapcar '(lambda (a) (length (cdr a))) (xd big '("*")))) (terpri)
(prin1 (entmod (list (cons -1 big) (list -3 (cons "OTHER" (append items items items)))))) (terpri)
(prin1 (mapcar '(lambda (a) (length (cdr a))) (xd big '("*")))) (terpri)
(prin1 (entmake (list '(0 . "POINT") '(10 0.0 0.0 0.0)
                      (list -3 (cons "TARVIK" (append items items items items)))))) (terpri)

; extended data is kept through entdel and its undo
(entdel p)
(entdel p)
(prin1 (xd p '("TARVIK"))) (terpri)
; ssget finds by application, by wildcard
(prin1 (sslength (ssget "X" '((-3 ("TAR*")))))) (terpri)
(prin1 (sslength (ssget "X" '((-3 ("OTHER")))))) (terpri)
(princ)
