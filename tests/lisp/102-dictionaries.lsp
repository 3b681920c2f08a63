;; args: --no-module
; The dictionary functions on the named object dictionary: walk, search, rename, remove, add.
(setq nod (namedobjdict))
(defun names (d / e out) (setq e (dictnext d t)) (while e (setq out (cons (cdr (assoc 5 e)) out) e (dictnext d))) (reverse out))
(prin1 (names nod)) (terpri)
(setq group (cdr (assoc -1 (dictsearch nod "acad_group"))))
(prin1 (list (dictrename nod "ACAD_GROUP" "KELVO_GROUPS") (dictsearch nod "ACAD_GROUP") (= (cdr (assoc -1 (dictsearch nod "KELVO_GROUPS"))) group))) (terpri)
(prin1 (list (dictrename nod "NOSUCH" "X") (dictremove nod "NOSUCH"))) (terpri)
(prin1 (= (dictremove nod "KELVO_GROUPS") group)) (terpri)
(prin1 (list (dictsearch nod "KELVO_GROUPS") (cdr (assoc 0 (entget group))))) (terpri)
(prin1 (= (dictadd nod "BACK" group) group)) (terpri)
(prin1 (list (dictadd nod "BACK" group) (cdr (assoc 0 (dictsearch nod "back"))))) (terpri)
(princ)
