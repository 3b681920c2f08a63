(defun scale-it (x / y)
  (setq y (* x 2.5))   ; doubled and a half
  (princ "a\"b\n")
  (list 'sym y (quote (1 2 . 3))))
