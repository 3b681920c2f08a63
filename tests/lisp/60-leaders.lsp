;; args: --prefix .
;; The leader functions and the TARVIK extended data in a drawing of the host. The tag
;; block comes from the file TAG60.dwg on the support path (the working folder), written
;; here as DXF text, which the host's drawing reader accepts.
(setq f (open "TAG60.dwg" "w"))
(foreach line '("0" "SECTION" "2" "ENTITIES"
                "0" "CIRCLE" "8" "0" "10" "0.0" "20" "0.0" "30" "0.0" "40" "1.0"
                "0" "ENDSEC" "0" "EOF")
  (write-line line f))
(close f)
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))

(setvar "DIMSCALE" 4.0)
(setq leader (tv_tv-leader-insert '((0 0) (10 10) (20 10)) "0" "TAG60" 2))
(show "insert" (type leader))
(show "unknown layer" (tv_tv-leader-insert '((0 0) (1 1) (2 1)) "NOLAYER" "TAG60" 1))
(show "unknown block" (tv_tv-leader-insert '((0 0) (1 1) (2 1)) "0" "NOTAG" 1))
(show "setPoints" (tv_tv-leader-setPoints leader '((0 0) (5 0) (5 4))))
(show "setOffset" (tv_tv-leader-setOffset leader 0.5))
(show "setBlock unknown" (tv_tv-leader-setBlock leader "NOTAG"))
(show "explode" (mapcar 'type (tv_tv-leader-explode leader)))
(show "bad arguments" (tv_tv-leader-setPoints leader '((0 0) (5 0))))

(show "xdput-list" (kv_xdput-list leader '("Size" "12x8" "Flow" 450.5 "Count" 3 "Gone" nil)))
(show "xdget Size" (kv_xdget leader "Size"))
(show "xdget size" (kv_xdget leader "size"))
(show "xdget-list" (kv_xdget-list leader '("Count" "Size" "None")))
(show "xdget-all" (kv_xdget-all leader))
(show "refused value" (kv_xdput-list leader '("Point" (1.0 2.0 3.0))))
(show "still" (kv_xdget-all leader))
(show "cleared" (kv_xdput-list leader))
(show "after clearing" (kv_xdget-all leader))
(princ "\n")
(princ)
