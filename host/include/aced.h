// The host's editor and its reactors. The editor is reached through the system
// registry under "AcEditor".
#pragma once

#include "rxobject.h"

class AcDbDatabase;

class KELVO_HOST_API AcEditorReactor : public AcRxObject {
public:
    ~AcEditorReactor() override;
    // Sent after a drawing was written; actualName is the file name actually written.
    virtual void saveComplete(AcDbDatabase* db, const ACHAR* actualName);
    virtual void beginSave(AcDbDatabase* db, const ACHAR* intendedName);
    virtual void beginClose(AcDbDatabase* db);
};

class KELVO_HOST_API AcEditor : public AcRxObject {
public:
    static AcEditor* cast(AcRxObject* object);
    virtual void addReactor(AcEditorReactor* reactor) = 0;
    virtual void removeReactor(AcEditorReactor* reactor) = 0;
};
