;; args: --no-module
; Header variables through setvar: values out of each variable's range and values of the
; wrong type are refused, and the variable keeps what it had.
(defun try (name value / r)
  (setq r (vl-catch-all-apply 'setvar (list name value)))
  (list name (if (vl-catch-all-error-p r) "refused" r) (getvar name)))
(prin1 (try "DIMSCALE" 48)) (terpri)
(prin1 (try "DIMSCALE" 0)) (terpri)         ; zero is a valid scale
(prin1 (try "DIMSCALE" -1.0)) (terpri)
(prin1 (try "DIMSCALE" "2")) (terpri)
(prin1 (try "LTSCALE" 0.0)) (terpri)
(prin1 (try "LTSCALE" 2.5)) (terpri)
(prin1 (try "TEXTSIZE" -3)) (terpri)
(prin1 (try "DIMTXT" 0)) (terpri)
(prin1 (try "DIMASZ" 0)) (terpri)
(prin1 (try "LUNITS" 9)) (terpri)
(prin1 (try "LUNITS" 4)) (terpri)
(prin1 (try "LUPREC" 9)) (terpri)
(prin1 (try "LUPREC" 2.0)) (terpri)         ; an integer variable takes no real
(prin1 (try "AUNITS" -1)) (terpri)
(prin1 (try "CECOLOR" 300)) (terpri)
(prin1 (try "ORTHOMODE" 2)) (terpri)
(prin1 (try "ORTHOMODE" 1)) (terpri)
(prin1 (try "FILLETRAD" -0.5)) (terpri)
(prin1 (try "CELWEIGHT" 7)) (terpri)       ; not one of the standard weights
(prin1 (try "CELWEIGHT" 35)) (terpri)
(prin1 (try "CELWEIGHT" -2)) (terpri)
(prin1 (try "INSBASE" '(1.0 2.0))) (terpri)
(prin1 (try "INSBASE" 5)) (terpri)
(prin1 (try "TEXTSTYLE" "NOSUCH")) (terpri)
(prin1 (try "CLAYER" 0)) (terpri)
(princ)
