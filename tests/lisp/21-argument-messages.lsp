; Argument failures print one of the three messages and give nil; functions that are
; registered but not built say so and give nil.
(prin1 (kv_fcopy "only-one"))
(prin1 (kv_fcopy))
(prin1 (kv_mkdir 12))
(prin1 (kv_message_box "caption only"))
(prin1 (asin 2.0))
(prin1 (tv::pow -8.0 0.5))
(prin1 (kv_modify_table "tblLayer"))
(prin1 (kv_link_table "tblLayer"))
(prin1 (tv_tv-multiMoveJig "Move" '(0.0 0.0) nil))
(prin1 (AcDbCurve::getLength))
(terpri)
