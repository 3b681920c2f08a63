// The file and folder functions of the database table: kv_mkdir, kv_rmdir, kv_fdelete,
// kv_fdir, kv_fcopy, kv_fcopyIfChanged, kv_fmove. Paths are used as given (UTF-8 on
// disk), with no search and no normalisation. Failures of the file system are not
// reported in words: the function returns nil.
#pragma once

namespace kelvo {

// Callbacks registered in the database table.
int kvMkdir();
int kvRmdir();
int kvFdelete();
int kvFdir();
int kvFcopy();
int kvFcopyIfChanged();
int kvFmove();

}  // namespace kelvo
