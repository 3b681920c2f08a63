;; args: --functions
; The external functions of a drawing, code and name, as module start defines them.
