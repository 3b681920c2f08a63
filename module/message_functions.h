// The beep, message box, random number and version functions of the database table:
// kv_beep, kv_message_beep, kv_message_box, kv_random, kv_getVersion.
#pragma once

namespace kelvo {

// Callbacks registered in the database table.
int kvBeep();
int kvMessageBeep();
int kvMessageBox();
int kvRandom();
int kvGetVersion();

}  // namespace kelvo
