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
void openUnitsLib(Interp& in);     // distof, angtof, cvunit
void openSystemLib(Interp& in);    // gc, mem, vl-load-com, the registry ..., and the
                                   // functions a host without a screen does not have
// vl-bb-*, vl-doc-*, vl-propagate, vl-load-all, vl-exit-with-value; opened last (it
// loads vl-load-all's files), closed when the interpreter ends.
void openNamespaceLib(Interp& in);
void closeNamespaceLib(Interp& in);

}  // namespace lisp
