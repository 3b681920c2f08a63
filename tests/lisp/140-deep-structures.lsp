; Lists nested far deeper than any program writes by hand: built, printed, read back,
; compared, copied by subst, handed to a module function and released, all without
; running out of stack.
(setq depth 100000)
(setq deep nil)
(repeat depth (setq deep (list deep)))

; Printing: depth opening parentheses, "nil", depth closing ones.
(setq text (vl-prin1-to-string deep))
(princ (strcat "\nprinted " (itoa (strlen text)) " characters"))
(princ (strcat "\nstarts " (substr text 1 5) " ends " (substr text (- (strlen text) 4))))

; Reading the text back gives an equal list; one difference at the bottom is found.
(setq again (read text))
(princ (strcat "\nread back equal: " (vl-prin1-to-string (equal deep again))))
(setq other 0)
(repeat depth (setq other (list other)))
(princ (strcat "\nwith 0 at the bottom equal: " (vl-prin1-to-string (equal deep other))))
(setq other (subst nil 0 other))
(princ (strcat "\nafter subst equal: " (vl-prin1-to-string (equal deep other))))
(princ (strcat "\nsubst kept the depth: "
               (itoa (strlen (vl-prin1-to-string other)))))

; A module function receives the list (converted to a value list on the way) and answers
; as it does for any argument it does not take.
(setq answer (vl-catch-all-apply 'kv_random (list deep)))
(princ (strcat "\nmodule call answered: "
               (if (vl-catch-all-error-p answer) "an error" (vl-prin1-to-string (type answer)))))

; A deep dotted tail and a deep car chain print and compare too.
(setq pairs 1)
(repeat depth (setq pairs (cons pairs 2)))
(princ (strcat "\ndotted: " (substr (vl-prin1-to-string pairs) 1 8)))
(princ (strcat "\ndotted equal: " (vl-prin1-to-string (equal pairs (read (vl-prin1-to-string pairs))))))

; Releasing them.
(setq deep nil again nil other nil pairs nil)
(princ "\nreleased")

(princ)
