;; args: --no-module
;; Integer and real arithmetic as AutoLISP does it.
(print (list (+ 2147483647 1) (* 100000 100000) (- -2147483647 2)))
(print (list (/ 7 2) (/ -7 2) (/ 7 2.0) (/ 1 3.0)))
(print (list (rem 17 5) (rem -17 5) (rem 5.5 2)))
(print (list (fix 2.9) (fix -2.9) (float 7) (abs -4) (abs -4.5)))
(print (list (max 1 7 3) (min 1 7.0) (gcd 24 36) (expt 3 4) (expt 2 0.5)))
(print (list (logand 12 10) (logior 12 10) (~ 0) (lsh 3 2) (lsh 12 -2)))
(print (list (sqrt 2) (exp 1) (log 10) (sin (/ pi 6)) (cos pi) (atan 1.0 0.0)))
(print (list (= 2 2.0) (/= 1 2) (< 1 2 3) (> 3 1 2) (equal 1.0 1.0001 0.001)))
(print (list (zerop 0.0) (minusp -3) (numberp "3") (1+ 9) (1- 0.5)))
(print 9999999999)
(print (vl-catch-all-error-message (vl-catch-all-apply '/ '(5 0))))
(terpri)
