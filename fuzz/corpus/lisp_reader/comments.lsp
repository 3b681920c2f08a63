;| a block comment
   over lines |; (list 1 -2 +3 1.5e3 .5 -0.25E-2 "str") ; trailing
;|unclosed at the end
