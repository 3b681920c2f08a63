// Sub-entities: the attributes of a block reference and the vertices of a 2D polyline,
// owned by it and ended by a SEQEND.

#include "runtime/drawing/drawing_internal.h"

namespace kelvo::drawing {
namespace {

template <class Owner, class Part>
void addPending(Owner& owner, AcArray<Part*>& pending, AcDbObjectIdArray& ids, AcDbObjectId& seqend) {
    AcDbDatabase* db = owner.database();
    for (Part* part : pending) {
        AcDbObjectId id;
        if (addObject(*db, part, id) != Acad::eOk) {
            delete part;
            continue;
        }
        ObjectAccess::setOwner(*part, owner.objectId());
        if (part->layerId().isNull()) part->setPropertiesFrom(&owner);
        ids.append(id);
        part->close();
    }
    pending.removeAll();
    if (seqend.isNull()) {
        auto* end = new AcDbSequenceEnd();
        end->setPropertiesFrom(&owner);
        addObject(*db, end, seqend);
        ObjectAccess::setOwner(*end, owner.objectId());
        end->close();
    }
}

}  // namespace

// The classes are looked up by name so that this bookkeeping does not depend on the
// entity classes' own code.
void materializeSubentities(AcDbObject& owner) {
    AcRxClass* cls = owner.isA();
    static AcRxClass* const referenceClass = acrxFindClass(L"AcDbBlockReference");
    static AcRxClass* const polylineClass = acrxFindClass(L"AcDb2dPolyline");
    if (!cls) return;
    if (referenceClass && cls->isDerivedFrom(referenceClass)) {
        auto* ref = static_cast<AcDbBlockReference*>(&owner);
        if (ObjectAccess::pending(*ref).isEmpty() && ObjectAccess::attributes(*ref).isEmpty()) return;
        addPending(*ref, ObjectAccess::pending(*ref), ObjectAccess::attributes(*ref),
                   ObjectAccess::seqend(*ref));
    } else if (polylineClass && cls->isDerivedFrom(polylineClass)) {
        auto* pline = static_cast<AcDb2dPolyline*>(&owner);
        if (ObjectAccess::pending(*pline).isEmpty() && ObjectAccess::vertices(*pline).isEmpty()) return;
        addPending(*pline, ObjectAccess::pending(*pline), ObjectAccess::vertices(*pline),
                   ObjectAccess::seqend(*pline));
    }
}

}  // namespace kelvo::drawing
