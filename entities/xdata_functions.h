// The extended data functions of the database table: named values of an entity under the
// application "TARVIK". Each callback runs the database layer's per-call guard and the
// handler guard around its inner handler.
#pragma once

namespace kelvo {

// (kv_xdput-list ename ["key" value ...]) -> T: the list replaces all of the entity's
// values; a value is a text, a real or an integer; nil drops its key; no list clears.
int kvXdputList();
// (kv_xdget ename "key") -> the value of the first pair with that key, or nil.
int kvXdget();
// (kv_xdget-list ename ("key" ...)) -> ((key . value) ...) of the requested keys present,
// in stored order.
int kvXdgetList();
// (kv_xdget-all ename) -> ((key . value) ...) of every pair, in stored order.
int kvXdgetAll();

}  // namespace kelvo
