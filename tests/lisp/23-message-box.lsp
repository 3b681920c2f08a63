; Message boxes answer with the pressed button's name; keywords set buttons, icon and
; default button, and a button keyword replaces what came before it.
(defun show (value) (prin1 value) (terpri))
(show (kv_message_box "Tarvik" "Save changes?" "YESNO" "?"))
(show (kv_message_box "Tarvik" "Icon lost" "?" "YESNO"))
(show (kv_message_box "Tarvik" "In a list" '("OKCANCEL" "!" "DEF2")))
(show (kv_message_box "Tarvik" "Three buttons" "ABORT" "STOP" "DEF3"))
(show (kv_message_box "Tarvik" "Unknown words ignored" "yesno" "Maybe"))
(show (kv_message_box "Tarvik" "No answer left" "RETRYCANCEL" "i"))
