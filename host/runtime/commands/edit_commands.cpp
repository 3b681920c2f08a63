// The commands that change what is drawn: ERASE, MOVE, COPY, ROTATE, SCALE, MIRROR and
// EXPLODE. Objects come from "Select objects:" (see Context::select).

#include <cmath>

#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "runtime/commands/command_input.h"
#include "runtime/commands/command_support.h"
#include "runtime/commands/command_table.h"
#include "runtime/commands/prompts.h"

namespace kelvo::commands {
namespace {

using namespace prompt;

AcGeVector3d between(const AcGePoint3d& a, const AcGePoint3d& b) {
    return b - a;
}

void eraseCommand(Context& c) {
    for (AcDbObjectId id : c.select()) eraseEntity(id);
}

// The base point and the displacement of MOVE (and the first copy of COPY): a second
// point, or Enter to take the first point as the displacement.
std::optional<AcGeVector3d> displacement(Context& c, const wchar_t* basePrompt,
                                         const wchar_t* secondPrompt,
                                         const std::vector<std::wstring>& baseKeywords) {
    std::wstring kw;
    auto base = c.point(basePrompt, baseKeywords, &kw, true);
    if (!base) {
        if (kw == L"mOde") {
            c.report(L"Copy mode is Multiple in this host.");
            return displacement(c, basePrompt, secondPrompt, baseKeywords);
        }
        auto d = c.point(kDisplacement, {}, &kw, true);
        return d ? AcGeVector3d(d->x, d->y, d->z) : AcGeVector3d();
    }
    c.setLastPoint(*base);
    auto second = c.point(secondPrompt, {}, &kw, true);
    if (!second) return AcGeVector3d(base->x, base->y, base->z);
    return between(*base, *second);
}

void moveCommand(Context& c) {
    auto ids = c.select();
    if (ids.empty()) return;
    auto d = displacement(c, kBaseOrDisplacement, kSecondPoint, {L"Displacement"});
    transformEntities(ids, AcGeMatrix3d::translation(*d));
}

void copyCommand(Context& c) {
    auto ids = c.select();
    if (ids.empty()) return;
    c.say(kCopySettings);
    std::wstring kw;
    std::optional<AcGePoint3d> base;
    for (;;) {
        base = c.point(kCopyBase, {L"Displacement", L"mOde"}, &kw, true);
        if (base || kw != L"mOde") break;
        c.report(L"Copy mode is Multiple in this host.");
    }
    if (!base) {
        auto d = c.point(kDisplacement, {}, &kw, true);
        AcGeVector3d v = d ? AcGeVector3d(d->x, d->y, d->z) : AcGeVector3d();
        transformEntities(copyEntities(c.db(), ids), AcGeMatrix3d::translation(v));
        return;
    }
    std::vector<std::vector<AcDbObjectId>> copies;
    for (;;) {
        auto second = copies.empty() ? c.point(kCopyFirst, {L"Array"}, &kw, true)
                                     : c.point(kCopyNext, {L"Array", L"Exit", L"Undo"}, &kw, true);
        if (!second) {
            if (kw.empty() && copies.empty()) {  // the base point is the displacement
                auto made = copyEntities(c.db(), ids);
                transformEntities(
                    made, AcGeMatrix3d::translation(AcGeVector3d(base->x, base->y, base->z)));
                return;
            }
            if (kw.empty() || kw == L"Exit") return;
            if (kw == L"Undo") {
                if (!copies.empty()) {
                    for (AcDbObjectId id : copies.back()) eraseEntity(id);
                    copies.pop_back();
                }
                continue;
            }
            c.report(L"Array is not available in this host; give the second point.");
            continue;
        }
        auto made = copyEntities(c.db(), ids);
        transformEntities(made, AcGeMatrix3d::translation(between(*base, *second)));
        copies.push_back(std::move(made));
    }
}

void rotateCommand(Context& c) {
    c.say(kRotateSettings);
    auto ids = c.select();
    if (ids.empty()) return;
    AcGePoint3d base = *c.point(kBasePoint);
    std::wstring kw;
    bool copy = false;
    std::optional<double> angle;
    for (;;) {
        angle = c.angle(kRotateAngle, &base, 0.0, {L"Copy", L"Reference"}, &kw);
        if (angle) break;
        if (kw == L"Copy") {
            copy = true;
            c.say(L"Rotating a copy of the selected objects.");
            continue;
        }
        double reference = *c.angle(L"Specify the reference angle <0>:", &base, 0.0);
        double target = *c.angle(L"Specify the new angle or [Points] <0>:", &base, 0.0);
        angle = target - reference;
        break;
    }
    if (copy) ids = copyEntities(c.db(), ids);
    transformEntities(ids, AcGeMatrix3d::rotation(*angle, AcGeVector3d::kZAxis, base));
}

void scaleCommand(Context& c) {
    auto ids = c.select();
    if (ids.empty()) return;
    AcGePoint3d base = *c.point(kBasePoint);
    std::wstring kw;
    bool copy = false;
    std::optional<double> factor;
    for (;;) {
        factor = c.distance(kScaleFactor, &base, std::nullopt, {L"Copy", L"Reference"}, &kw);
        if (factor) {
            if (*factor > 0) break;
            c.report(L"Value must be positive and nonzero.");
            continue;
        }
        if (kw == L"Copy") {
            copy = true;
            c.say(L"Scaling a copy of the selected objects.");
            continue;
        }
        double reference = *c.distance(L"Specify reference length <1.0000>:", &base, 1.0);
        double target = *c.distance(L"Specify new length or [Points] <1.0000>:", &base, 1.0);
        if (!(reference > 0) || !(target > 0)) {
            c.report(L"Value must be positive and nonzero.");
            continue;
        }
        factor = target / reference;
        break;
    }
    if (copy) ids = copyEntities(c.db(), ids);
    transformEntities(ids, AcGeMatrix3d::scaling(*factor, base));
}

void mirrorCommand(Context& c) {
    auto ids = c.select();
    if (ids.empty()) return;
    AcGePoint3d a = *c.point(kMirror1);
    AcGePoint3d b = *c.point(kMirror2);
    if (a.distanceTo(b) < 1e-12) {
        c.report(L"Invalid mirror line: the two points are the same.");
        return;
    }
    std::wstring answer = c.keyword(kMirrorErase, {L"Yes", L"No"}, std::wstring(L"No"));
    AcGeVector3d along = between(a, b);
    AcGeVector3d normal(-along.y, along.x, 0);  // the mirror plane holds the line and Z
    AcGeMatrix3d m = AcGeMatrix3d::mirroring(AcGePlane(a, normal.normal()));
    if (answer == L"No") ids = copyEntities(c.db(), ids);
    transformEntities(ids, m);
}

void explodeCommand(Context& c) {
    auto ids = c.select();
    int refused = 0;
    for (AcDbObjectId id : ids) {
        AcDbVoidPtrArray pieces;
        AcDbObjectId owner;
        {
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            if (!entity || entity->explode(pieces) != Acad::eOk || pieces.isEmpty()) {
                for (void* p : pieces) delete static_cast<AcDbEntity*>(p);
                ++refused;
                continue;
            }
            owner = entity->ownerId();
        }
        AcDbObjectPointer<AcDbBlockTableRecord> block(owner, AcDb::kForWrite);
        for (void* p : pieces) {
            auto* piece = static_cast<AcDbEntity*>(p);
            if (!block || block->appendAcDbEntity(piece) != Acad::eOk)
                delete piece;
            else
                piece->close();
        }
        block.close();
        eraseEntity(id);
    }
    if (refused)
        c.say(std::to_wstring(refused) + (refused == 1 ? L" was" : L" were") +
              L" not able to be exploded.");
}

constexpr CommandEntry kEditCommands[] = {
    {L"ERASE", eraseCommand},     {L"MOVE", moveCommand},   {L"COPY", copyCommand},
    {L"ROTATE", rotateCommand},   {L"SCALE", scaleCommand}, {L"MIRROR", mirrorCommand},
    {L"EXPLODE", explodeCommand},
};

}  // namespace

std::span<const CommandEntry> editCommands() {
    return kEditCommands;
}

}  // namespace kelvo::commands
