; Unloading the module leaves the names defined in the open drawing; calling one then
; is an error, since its callback went with the module.
(prin1 (kv_getVersion))
(terpri)
(arxunload "KelvoBrx15.arx")
(prin1 (kv_getVersion))
