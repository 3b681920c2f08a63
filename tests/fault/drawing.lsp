; A drawing opened from DXF (--drawing), added to, saved in the binary format, opened
; again and saved as DXF. Run with faults injected by run_faults.sh.
(defun show (label value) (princ label) (princ ": ") (prin1 value) (terpri))
(show "entities read" (sslength (ssget "X")))
(entmake '((0 . "LINE") (8 . "PIPES") (10 0.0 0.0 0.0) (11 10.0 5.0 0.0)))
(entmake '((0 . "CIRCLE") (8 . "0") (10 2.0 2.0 0.0) (40 . 1.5)
           (-3 ("TARVIK" (1000 . "size") (1040 . 12.5)))))
(regapp "TARVIK")
(entmake '((0 . "TEXT") (8 . "0") (10 1.0 1.0 0.0) (40 . 2.5) (1 . "Pump P-1")))
(show "saved" (not (null (host:saveas "faults.dwg"))))
(show "opened" (host:open "faults.dwg"))
(defun show (label value) (princ label) (princ ": ") (prin1 value) (terpri))   ; a new drawing
(show "entities back" (sslength (ssget "X")))
(show "saved as DXF" (not (null (host:saveas "faults.dxf"))))
(princ "End of the run.")
