;; args: --no-module
; Functions that programs written for a CAD host rely on: comparisons of any type, the
; shared namespaces across drawings, printing to a file, units, and a clear end where
; this host has no screen.
(prin1 (list (= (type "x") 'STR) (= 'a 'a) (= nil nil) (= "a" 1) (= 1 nil) (/= "a" "b"))) (terpri)
(prin1 (list (cvunit 12 "inch" "foot") (cvunit 1 "acre" "sq meter") (cvunit 1 "inch" "second"))) (terpri)
(prin1 (list (strcase "straße ändern") (strcase "ÉTÉ" t) (vl-sort '(5 3 5 1) '<))) (terpri)
; printing to a file: print starts a line and ends with a space, prin1 and princ add nothing
(setq f (open "framing.txt" "w"))
(print "a" f) (prin1 "b" f) (princ "c" f) (write-line "" f)
(close f)
(setq f (open "framing.txt" "r"))
(prin1 (list (read-line f) (read-line f) (read-line f))) (terpri)
(close f)
; values that reach every drawing
(setq shared-value '(1 2)) (vl-propagate 'shared-value)
(vl-bb-set 'board "on the blackboard")
(setq only-here t)
(host:new)
(prin1 (list shared-value (vl-bb-ref 'board) only-here (vl-doc-ref 'only-here))) (terpri)
(host:activate 0)
(prin1 (vl-catch-all-apply '(lambda () (vl-exit-with-value 'done) 'not-reached) nil)) (terpri)
(prin1 (list pause (vl-load-com) (gc))) (terpri)
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'vlax-get-acad-object nil))) (terpri)
(load_dialog "settings.dcl")
(princ "not reached")
