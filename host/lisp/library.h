// The openers of the built-in libraries; Interp's constructor calls each in turn.
#pragma once

#include "interp.h"

namespace lisp {

void openSpecialForms(Interp& in);
void openCoreLib(Interp& in);      // eval, set, type, predicates, errors
void openListLib(Interp& in);
void openMathLib(Interp& in);
void openStringLib(Interp& in);
void openPrintLib(Interp& in);     // princ, prin1, print, terpri, prompt, read
void openFileLib(Interp& in);      // open, close, read-line ..., load, findfile
void openInputLib(Interp& in);     // initget and the get* functions
void openGeomLib(Interp& in);      // polar, distance, angle, inters
void openFilenameLib(Interp& in);  // vl-filename-*
void openVlFileLib(Interp& in);    // vl-file-*, vl-directory-files, vl-mkdir

}  // namespace lisp
