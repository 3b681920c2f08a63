// The LISP result type that a value of each DXF group code is given when it is read back
// from entity data or extended data.
#pragma once

namespace kelvo {

// 0-9 RTSTR; 10-17 RT3DPOINT; 38-59 RTREAL; 60-79 RTSHORT; 90-99 RTLONG; 100, 101, 102,
// 105 RTSTR; 110-112 RTSTR; 140-149 RTREAL; 170-179 RTSHORT; 210-219 RT3DPOINT; 270-299
// RTSHORT; 300-309 RTSTR; 310-369 RTENAME; 370-389 RTSHORT; 390-399 RTENAME; 400-409
// RTSHORT; 410-419 RTSTR; 1004 stays 1004; 999-1009 RTSTR; 1010-1013 RT3DPOINT; 1038-1059
// RTREAL; 1060-1070 RTSHORT; 1071 RTLONG; a negative code or one of 5000 and above is
// returned as it is; any other code gives RTNONE.
int lispTypeOfGroupCode(int code);

}  // namespace kelvo
