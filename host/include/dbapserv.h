// The host application's services to the drawing database: the working database and
// the search for support files.
#pragma once

#include "acdb.h"
#include "adsdef.h"

class AcDbDatabase;

class KELVO_HOST_API AcDbHostApplicationServices {
public:
    enum FindFileHint { kDefault = 0, kFontFile, kCompiledShapeFile, kTrueTypeFontFile,
                        kEmbeddedImageFile, kXRefDrawing, kPatternFile, kARXApplication };
    virtual ~AcDbHostApplicationServices() = default;

    // Finds `fileName` (as given when it has a folder, else along the host's support
    // folders, ACADPREFIX, then the current drawing's folder) and writes the full path
    // into pcFullPathOut. eFileNotFound when it is nowhere; eBufferTooSmall when the
    // path does not fit nBufferLength characters (with the terminator).
    virtual Acad::ErrorStatus findFile(ACHAR* pcFullPathOut, int nBufferLength,
                                       const ACHAR* pcFilename, AcDbDatabase* pDb = nullptr,
                                       FindFileHint hint = kDefault);
    // The database of the current document (null when no drawing is open), unless another
    // was set.
    virtual AcDbDatabase* workingDatabase() const;
    virtual void setWorkingDatabase(AcDbDatabase* pDatabase);
    virtual const ACHAR* program() const;
    virtual const ACHAR* product() const;
};

KELVO_HOST_API AcDbHostApplicationServices* acdbHostApplicationServices();
