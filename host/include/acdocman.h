// The host's document manager: the open drawings, the current one, and an iterator.
#pragma once

#include "adsdef.h"

class AcDbDatabase;

class KELVO_HOST_API AcApDocument {
public:
    virtual ~AcApDocument() = default;
    // The drawing's full file name; for a new, unsaved drawing "DrawingN.dwg".
    virtual const ACHAR* fileName() const = 0;
    virtual AcDbDatabase* database() const = 0;
};

class KELVO_HOST_API AcApDocumentIterator {
public:
    virtual ~AcApDocumentIterator() = default;
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual AcApDocument* document() = 0;
};

class KELVO_HOST_API AcApDocManager {
public:
    virtual ~AcApDocManager() = default;
    virtual AcApDocument* curDocument() const = 0;
    virtual AcApDocument* mdiActiveDocument() const = 0;
    virtual int documentCount() const = 0;
    // A new iterator over the open documents; the caller deletes it.
    virtual AcApDocumentIterator* newAcApDocumentIterator() = 0;
};

KELVO_HOST_API AcApDocManager* acDocManagerPtr();
