;; args: --no-module
; The drawing's header variables through getvar and setvar, one set per drawing.
(prin1 (getvar "DIMSCALE")) (terpri)
(setvar "DIMSCALE" 48)
(prin1 (getvar "dimscale")) (terpri)
(prin1 (getvar "CLAYER")) (terpri)
(entmake '((0 . "LAYER") (2 . "Ducts") (70 . 0)))
(setvar "CLAYER" "Ducts")
(prin1 (getvar "CLAYER")) (terpri)
; a new entity takes the current layer
(entmake '((0 . "POINT") (10 0.0 0.0 0.0)))
(prin1 (cdr (assoc 8 (entget (entlast))))) (terpri)
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'setvar '("CLAYER" "NOSUCH")))) (terpri)
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'setvar '("DIMSCALE" "big")))) (terpri)
(setvar "INSBASE" '(1 2 3))
(prin1 (getvar "INSBASE")) (terpri)
; another drawing has its own values
(host:new)
(prin1 (getvar "DIMSCALE")) (terpri)
(host:activate 0)
(prin1 (getvar "DIMSCALE")) (terpri)
(princ)
