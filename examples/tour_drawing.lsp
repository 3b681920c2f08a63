;;; The drawing part of the tour, loaded by tour.lsp (it uses tour:step and tour:show).
;;; Tag leaders (TVLeader entities) carry a tag block at their end; the module finds a
;;; block the drawing lacks as the file NAME.dwg on the support path, which ends with the
;;; drawing's own folder. The tour saves the drawing in a folder of its own, writes two
;;; small tag blocks there (as DXF text, which the host's drawing reader accepts), and at
;;; the end leaves the drawing (DXF) and its picture (PNG) there.

(defun tour:write-lines (file lines / f)
  (setq f (open file "w"))
  (foreach line lines (write-line line f))
  (close f))

;; A block file: a circle of radius 1 about the origin (the tag's unit size) and the
;; extra groups given.
(defun tour:tag-block (file extra)
  (tour:write-lines file
    (append '("0" "SECTION" "2" "ENTITIES"
              "0" "CIRCLE" "8" "0" "10" "0.0" "20" "0.0" "30" "0.0" "40" "1.0")
            extra
            '("0" "ENDSEC" "0" "EOF"))))

(defun tour:drawing (/ dir supply return leader)
  (tour:step "Tag leaders")
  (setq dir (strcat (cond ((getenv "TMPDIR")) ("/tmp")) "/kelvo-tour-drawing"))
  (kv_mkdir dir)
  (host:saveas (strcat dir "/tour-drawing.dxf"))
  (tour:tag-block (strcat dir "/TAG-SUPPLY.dwg")
                  '("0" "TEXT" "8" "0" "10" "-0.35" "20" "-0.5" "30" "0.0" "40" "1.0"
                    "1" "S"))
  (tour:tag-block (strcat dir "/TAG-RETURN.dwg")
                  '("0" "TEXT" "8" "0" "10" "-0.35" "20" "-0.5" "30" "0.0" "40" "1.0"
                    "1" "R"))
  (princ "  tv_tv-leader-insert takes the start, elbow and end points, a layer, a tag\n")
  (princ "  block and a scale (multiplied by DIMSCALE).\n")
  (setq supply (tv_tv-leader-insert '((0 0) (10 10) (20 10)) "0" "TAG-SUPPLY" 1.5))
  (setq return (tv_tv-leader-insert '((0 -4) (10 -14) (20 -14)) "0" "TAG-RETURN" 1.5))
  (setq leader (tv_tv-leader-insert '((30 0) (30 8) (34 12)) "0" "TAG-SUPPLY" 1))
  (tour:show "three leaders" (mapcar 'type (list supply return leader)))
  (tour:show "tv_tv-leader-setPoints" (tv_tv-leader-setPoints leader '((30 0) (30 8) (38 8))))
  (tour:show "tv_tv-leader-setBlock" (tv_tv-leader-setBlock leader "TAG-RETURN"))
  (tour:show "tv_tv-leader-setOffset" (tv_tv-leader-setOffset leader 2))

  (tour:step "Named values on entities")
  (princ "  kv_xdput-list stores (key value ...) in the entity's extended data under the\n")
  (princ "  application TARVIK; the kv_xdget functions read them back.\n")
  (tour:show "kv_xdput-list"
             (kv_xdput-list supply '("System" "Supply" "Flow" 450.5 "Outlets" 3)))
  (kv_xdput-list return '("System" "Return" "Flow" 420.0))
  (tour:show "kv_xdget \"Flow\"" (kv_xdget supply "Flow"))
  (tour:show "kv_xdget-list" (kv_xdget-list supply '("Outlets" "System")))
  (tour:show "kv_xdget-all" (kv_xdget-all return))

  (tour:step "The drawing as a file and a picture")
  (foreach name '("TAG-SUPPLY.dwg" "TAG-RETURN.dwg") (kv_fdelete (strcat dir "/" name)))
  (tour:show "host:saveas" (vl-filename-base (host:saveas (strcat dir "/tour-drawing.dxf"))))
  (tour:show "host:render" (vl-filename-base (host:render (strcat dir "/tour-drawing.png"))))
  (princ (strcat "  The drawing and its picture are in " dir "\n")))

(tour:drawing)
