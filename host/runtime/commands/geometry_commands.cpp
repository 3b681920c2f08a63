// The commands that draw: LINE, CIRCLE, ARC, PLINE, TEXT and -INSERT (INSERT runs it: this
// host has no dialog for it). Options that need a screen (tangent picks, corner drags)
// say so and ask again.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>

#include "dbents.h"
#include "dbobjptr.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "gepnt2d.h"
#include "runtime/commands/command_input.h"
#include "runtime/commands/command_support.h"
#include "runtime/commands/command_table.h"
#include "runtime/commands/prompts.h"
#include "runtime/host.h"

namespace kelvo::commands {

using host::Host;
namespace {

using namespace prompt;

double angleOf(const AcGePoint3d& from, const AcGePoint3d& to) {
    return std::atan2(to.y - from.y, to.x - from.x);
}

AcGePoint3d polar(const AcGePoint3d& p, double angle, double distance) {
    return AcGePoint3d(p.x + distance * std::cos(angle), p.y + distance * std::sin(angle), p.z);
}

AcGePoint3d mustPoint(Context& c, const std::wstring& text) {
    return *c.point(text);
}

// --- LINE -------------------------------------------------------------------------------

void lineCommand(Context& c) {
    std::wstring kw;
    auto first = c.point(kLineFirst, {}, &kw, true);
    std::vector<AcGePoint3d> points{first ? *first : c.lastPoint()};
    std::vector<AcDbObjectId> made;
    for (;;) {
        bool canClose = made.size() >= 2;
        auto p = canClose ? c.point(kLineNextClose, {L"Close", L"Undo"}, &kw, true)
                          : c.point(kLineNext, {L"Undo"}, &kw, true);
        if (!p && kw.empty()) return;
        if (!p && kw == L"Undo") {
            if (made.empty()) {
                c.say(kAllUndone);
                continue;
            }
            eraseEntity(made.back());
            made.pop_back();
            points.pop_back();
            c.setLastPoint(points.back());
            continue;
        }
        if (!p && kw == L"Close") {
            made.push_back(addToCurrentSpace(c.db(), new AcDbLine(points.back(), points.front())));
            c.setLastPoint(points.front());
            return;
        }
        made.push_back(addToCurrentSpace(c.db(), new AcDbLine(points.back(), *p)));
        points.push_back(*p);
    }
}

// --- CIRCLE -----------------------------------------------------------------------------

std::map<const AcDbDatabase*, double>& lastRadius() {
    static std::map<const AcDbDatabase*, double> radius;
    return radius;
}

void addCircle(Context& c, const AcGePoint3d& center, double radius) {
    if (!(radius > 0)) {
        c.report(L"Value must be positive and nonzero.");
        return;
    }
    lastRadius()[&c.db()] = radius;
    addToCurrentSpace(c.db(), new AcDbCircle(center, AcGeVector3d::kZAxis, radius));
}

// The centre of the circle through three points; false when they are on one line.
bool circumcenter(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                  AcGePoint3d& center) {
    double d = 2 * (a.x * (b.y - c.y) + b.x * (c.y - a.y) + c.x * (a.y - b.y));
    if (std::abs(d) < 1e-12) return false;
    double a2 = a.x * a.x + a.y * a.y, b2 = b.x * b.x + b.y * b.y, c2 = c.x * c.x + c.y * c.y;
    center = AcGePoint3d((a2 * (b.y - c.y) + b2 * (c.y - a.y) + c2 * (a.y - b.y)) / d,
                         (a2 * (c.x - b.x) + b2 * (a.x - c.x) + c2 * (b.x - a.x)) / d, a.z);
    return true;
}

void circleCommand(Context& c) {
    for (;;) {
        std::wstring kw;
        auto center = c.point(kCircleCenter, {L"3P", L"2P", L"Ttr"}, &kw);
        if (center) {
            double previous = lastRadius()[&c.db()];
            std::optional<double> fallback;
            if (previous > 0) fallback = previous;
            std::wstring radiusPrompt = std::wstring(kCircleRadius) +
                                        (fallback ? L" <" + formatReal(previous) + L">:" : L":");
            auto r = c.distance(radiusPrompt, &*center, fallback, {L"Diameter"}, &kw);
            if (!r) {
                std::optional<double> d2;
                if (previous > 0) d2 = 2 * previous;
                auto d = c.distance(
                    std::wstring(kCircleDiameter) + (d2 ? L" <" + formatReal(*d2) + L">:" : L":"),
                    &*center, d2);
                r = *d / 2;
            }
            addCircle(c, *center, *r);
            return;
        }
        if (kw == L"2P") {
            AcGePoint3d a = mustPoint(c, kCircle2p1), b = mustPoint(c, kCircle2p2);
            addCircle(c, AcGePoint3d((a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2),
                      a.distanceTo(b) / 2);
            return;
        }
        if (kw == L"3P") {
            AcGePoint3d a = mustPoint(c, kCircle3p1), b = mustPoint(c, kCircle3p2),
                        p = mustPoint(c, kCircle3p3);
            AcGePoint3d center3;
            if (!circumcenter(a, b, p, center3)) {
                c.report(L"Circle does not exist.");
                return;
            }
            addCircle(c, center3, center3.distanceTo(a));
            return;
        }
        c.report(
            L"Tangent picks need a screen, which this host has not; give the centre, 2P or 3P.");
    }
}

// --- ARC --------------------------------------------------------------------------------

// Rounding noise of the trigonometry (1e-17 for 0) is dropped.
double clean(double v, double scale) {
    return std::abs(v) < 1e-12 * std::max(1.0, scale) ? 0.0 : v;
}

void addArc(Context& c, const AcGePoint3d& center, double radius, double start, double end) {
    if (!(radius > 0)) {
        c.report(L"Invalid arc.");
        return;
    }
    AcGePoint3d at(clean(center.x, radius), clean(center.y, radius), center.z);
    start = std::remainder(start, 2 * kPi);
    end = std::remainder(end, 2 * kPi);
    addToCurrentSpace(c.db(), new AcDbArc(at, radius, clean(start, 1), clean(end, 1)));
}

// Centre and start known: the end point, an included angle or a chord length.
void arcFromCenterStart(Context& c, const AcGePoint3d& center, const AcGePoint3d& start) {
    double radius = center.distanceTo(start);
    double a0 = angleOf(center, start);
    std::wstring kw;
    auto end = c.point(kArcEndOrAngle, {L"Angle", L"chord Length"}, &kw);
    if (end) return addArc(c, center, radius, a0, angleOf(center, *end));
    if (kw == L"Angle") {
        double included = *c.angle(kArcIncluded, &start, std::nullopt);
        if (included >= 0) return addArc(c, center, radius, a0, a0 + included);
        return addArc(c, center, radius, a0 + included, a0);
    }
    double chord = *c.distance(kArcChord, &start, std::nullopt);
    if (chord > 2 * radius) {
        c.report(L"Invalid arc.");
        return;
    }
    addArc(c, center, radius, a0, a0 + 2 * std::asin(chord / (2 * radius)));
}

void arcCommand(Context& c) {
    std::wstring kw;
    auto start = c.point(kArcStart, {L"Center"}, &kw);
    if (!start) {
        AcGePoint3d center = mustPoint(c, kArcCenter);
        AcGePoint3d s = mustPoint(c, kArcStartOnly);
        return arcFromCenterStart(c, center, s);
    }
    auto second = c.point(kArcSecond, {L"Center", L"End"}, &kw);
    if (second) {
        AcGePoint3d end = mustPoint(c, kArcEnd);
        AcGePoint3d center;
        if (!circumcenter(*start, *second, end, center)) {
            c.report(L"Invalid arc.");
            return;
        }
        double turn = (second->x - start->x) * (end.y - start->y) -
                      (second->y - start->y) * (end.x - start->x);
        double a = angleOf(center, *start), b = angleOf(center, end);
        if (turn > 0) return addArc(c, center, center.distanceTo(*start), a, b);
        return addArc(c, center, center.distanceTo(*start), b, a);
    }
    if (kw == L"Center") return arcFromCenterStart(c, mustPoint(c, kArcCenter), *start);
    AcGePoint3d end = mustPoint(c, kArcEnd);
    auto center = c.point(kArcCenterOr, {L"Angle", L"Direction", L"Radius"}, &kw);
    if (center) {
        return addArc(c, *center, center->distanceTo(*start), angleOf(*center, *start),
                      angleOf(*center, end));
    }
    double chord = start->distanceTo(end);
    double included = 0;
    if (kw == L"Radius") {
        double r = *c.distance(kArcRadius, &end, std::nullopt);
        if (std::abs(r) < chord / 2) {
            c.report(L"Invalid arc.");
            return;
        }
        included = 2 * std::asin(chord / (2 * std::abs(r)));
        if (r < 0) included = 2 * kPi - included;  // a negative radius gives the major arc
    } else if (kw == L"Angle") {
        included = *c.angle(kArcIncluded, &end, std::nullopt);
    } else {
        c.report(L"A start direction needs a screen to show it; give the centre, Angle or Radius.");
        return;
    }
    if (std::abs(included) < 1e-12) {
        c.report(L"Invalid arc.");
        return;
    }
    // The centre lies on the chord's bisector, to the left for a counterclockwise arc.
    double radius = chord / (2 * std::sin(std::abs(included) / 2));
    double h = radius * std::cos(std::abs(included) / 2);
    AcGePoint3d mid((start->x + end.x) / 2, (start->y + end.y) / 2, start->z);
    double side = angleOf(*start, end) + (included > 0 ? kPi / 2 : -kPi / 2);
    AcGePoint3d centerPoint = polar(mid, side, h);  // h < 0 puts it across for a major arc
    double a = angleOf(centerPoint, *start), b = angleOf(centerPoint, end);
    if (included > 0) return addArc(c, centerPoint, radius, a, b);
    addArc(c, centerPoint, radius, b, a);
}

// --- PLINE ------------------------------------------------------------------------------

struct PlineVertex {
    AcGePoint3d point;
    double bulge = 0, startWidth = 0, endWidth = 0;
};

void plineCommand(Context& c) {
    AcGePoint3d start = mustPoint(c, kPlineStart);
    double width = 0;
    if (auto w = Host::instance().getVar(L"PLINEWID"); w && w->isNumber()) width = w->asReal();
    c.say(L"Current line-width is " + formatReal(width));
    std::vector<PlineVertex> vertices{{start, 0, width, width}};
    double nextStart = width, nextEnd = width;
    bool arcMode = false, closed = false;
    double direction = 0;  // of the last segment at its end, for tangent arcs
    auto widths = [&](bool half) {
        double k = half ? 2 : 1;
        const wchar_t* first = half ? L"Specify starting half-width" : L"Specify starting width";
        const wchar_t* second = half ? L"Specify ending half-width" : L"Specify ending width";
        AcGePoint3d here = vertices.back().point;
        double s = *c.distance(std::wstring(first) + L" <" + formatReal(nextStart / k) + L">:",
                               &here, nextStart / k);
        double e = *c.distance(std::wstring(second) + L" <" + formatReal(s) + L">:", &here, s);
        nextStart = s * k;
        nextEnd = e * k;
    };
    auto addSegment = [&](const AcGePoint3d& to, double bulge) {
        vertices.back().bulge = bulge;
        vertices.back().startWidth = nextStart;
        vertices.back().endWidth = nextEnd;
        vertices.push_back({to, 0, nextEnd, nextEnd});
        nextStart = nextEnd;
        c.setLastPoint(to);
    };
    for (;;) {
        std::wstring kw;
        std::optional<AcGePoint3d> p;
        if (arcMode) {
            p = c.point(kPlineArc,
                        {L"Angle", L"CEnter", L"CLose", L"Direction", L"Halfwidth", L"Line",
                         L"Radius", L"Second pt", L"Undo", L"Width"},
                        &kw, true);
        } else {
            bool canClose = vertices.size() >= 3;
            p = canClose ? c.point(kPlineNextClose,
                                   {L"Arc", L"Close", L"Halfwidth", L"Length", L"Undo", L"Width"},
                                   &kw, true)
                         : c.point(kPlineNext, {L"Arc", L"Halfwidth", L"Length", L"Undo", L"Width"},
                                   &kw, true);
        }
        if (!p && kw.empty()) break;
        if (p) {
            const AcGePoint3d& from = vertices.back().point;
            double chord = angleOf(from, *p);
            if (arcMode) {
                // Tangent to the last segment: the included angle is twice the turn.
                double turn = std::remainder(chord - direction, 2 * kPi);
                addSegment(*p, std::tan(turn / 2));
                direction = chord + turn;
            } else {
                addSegment(*p, 0);
                direction = chord;
            }
            continue;
        }
        if (kw == L"Arc")
            arcMode = true;
        else if (kw == L"Line")
            arcMode = false;
        else if (kw == L"Width")
            widths(false);
        else if (kw == L"Halfwidth")
            widths(true);
        else if (kw == L"Length") {
            AcGePoint3d here = vertices.back().point;
            double length = *c.distance(kPlineLength, &here, std::nullopt);
            addSegment(polar(here, direction, length), 0);
        } else if (kw == L"Undo") {
            if (vertices.size() > 1) {
                vertices.pop_back();
                vertices.back().bulge = 0;
                c.setLastPoint(vertices.back().point);
            } else {
                c.say(L"All segments already undone.");
            }
        } else if (kw == L"Close" || kw == L"CLose") {
            if (arcMode) {
                double turn =
                    std::remainder(angleOf(vertices.back().point, start) - direction, 2 * kPi);
                vertices.back().bulge = std::tan(turn / 2);
            }
            vertices.back().startWidth = nextStart;
            vertices.back().endWidth = nextEnd;
            closed = true;
            break;
        } else {
            c.report(L"The " + kw +
                     L" option of an arc segment is not available in this host; give the "
                     L"endpoint, Line, CLose, Width, Halfwidth or Undo.");
        }
    }
    if (vertices.size() < 2) return;
    auto* pline = new AcDbPolyline();
    for (unsigned i = 0; i < vertices.size(); ++i) {
        const PlineVertex& v = vertices[i];
        pline->addVertexAt(i, AcGePoint2d(v.point.x, v.point.y), v.bulge, v.startWidth, v.endWidth);
    }
    pline->setElevation(start.z);
    pline->setClosed(closed);
    addToCurrentSpace(c.db(), pline);
}

// --- TEXT -------------------------------------------------------------------------------

struct Justification {
    const wchar_t* keyword;
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
    const wchar_t* prompt;
};

constexpr Justification kJustifications[] = {
    {L"Left", AcDb::kTextLeft, AcDb::kTextBase, L"Specify start point of text:"},
    {L"Center", AcDb::kTextCenter, AcDb::kTextBase, L"Specify center point of text:"},
    {L"Right", AcDb::kTextRight, AcDb::kTextBase, L"Specify right endpoint of text baseline:"},
    {L"Middle", AcDb::kTextMid, AcDb::kTextBase, L"Specify middle point of text:"},
    {L"TL", AcDb::kTextLeft, AcDb::kTextTop, L"Specify top-left point of text:"},
    {L"TC", AcDb::kTextCenter, AcDb::kTextTop, L"Specify top-center point of text:"},
    {L"TR", AcDb::kTextRight, AcDb::kTextTop, L"Specify top-right point of text:"},
    {L"ML", AcDb::kTextLeft, AcDb::kTextVertMid, L"Specify middle-left point of text:"},
    {L"MC", AcDb::kTextCenter, AcDb::kTextVertMid, L"Specify middle point of text:"},
    {L"MR", AcDb::kTextRight, AcDb::kTextVertMid, L"Specify middle-right point of text:"},
    {L"BL", AcDb::kTextLeft, AcDb::kTextBottom, L"Specify bottom-left point of text:"},
    {L"BC", AcDb::kTextCenter, AcDb::kTextBottom, L"Specify bottom-center point of text:"},
    {L"BR", AcDb::kTextRight, AcDb::kTextBottom, L"Specify bottom-right point of text:"},
};

void textCommand(Context& c) {
    AcDbDatabase& db = c.db();
    AcDbObjectId style = db.textstyle();
    const Justification* justify = &kJustifications[0];
    std::optional<AcGePoint3d> at;
    for (;;) {
        double fixed = 0;
        if (AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead); record)
            fixed = record->textSize();
        c.say(L"Current text style:  \"" + recordName(style) + L"\"  Text height:  " +
              formatReal(fixed > 0 ? fixed : db.textsize()) + L"  Annotative:  No  Justify:  " +
              justify->keyword);
        std::wstring kw;
        at = c.point(justify == &kJustifications[0] ? kTextStart : justify->prompt,
                     {L"Justify", L"Style"}, &kw);
        if (at) break;
        if (kw == L"Justify") {
            std::wstring choice =
                c.keyword(kTextJustify,
                          {L"Left", L"Center", L"Right", L"Align", L"Middle", L"Fit", L"TL", L"TC",
                           L"TR", L"ML", L"MC", L"MR", L"BL", L"BC", L"BR"},
                          std::nullopt);
            const Justification* found = nullptr;
            for (const auto& j : kJustifications)
                if (choice == j.keyword) found = &j;
            if (!found) {
                c.report(
                    L"Align and Fit are not available in this host; choose another justification.");
                continue;
            }
            justify = found;
            at = c.point(justify->prompt);
            break;
        }
        std::wstring name = c.text(L"Enter style name or [?] <" + recordName(style) + L">:");
        if (name.empty()) continue;
        AcDbObjectId id = findRecord(db.textStyleTableId(), name);
        if (id.isNull())
            c.report(L"Cannot find text style \"" + name + L"\".");
        else
            style = id;
    }
    double fixed = 0;
    if (AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead); record)
        fixed = record->textSize();
    double height = fixed;
    if (!(fixed > 0)) {
        height = *c.distance(L"Specify height <" + formatReal(db.textsize()) + L">:", &*at,
                             db.textsize());
        if (height > 0) db.setTextsize(height);
    }
    double rotation = *c.angle(std::wstring(kTextRotation) + L" <0>:", &*at, 0.0);
    std::wstring content = c.text(kTextEnter);
    if (content.empty()) return;
    auto* text = new AcDbText(*at, content.c_str(), style, height, rotation);
    if (justify != &kJustifications[0]) {
        text->setHorizontalMode(justify->horizontal);
        text->setVerticalMode(justify->vertical);
        text->setAlignmentPoint(*at);
    }
    AcDbObjectId id = addToCurrentSpace(db, text);
    if (justify != &kJustifications[0])
        if (AcDbObjectPointer<AcDbText> made(id, AcDb::kForWrite); made) made->adjustAlignment(&db);
}

// --- -INSERT ----------------------------------------------------------------------------

// The block definition named, read from NAME.dwg on the support path when the drawing
// has none.
AcDbObjectId blockNamed(Context& c, const std::wstring& name) {
    AcDbObjectId id = findRecord(c.db().blockTableId(), name);
    if (!id.isNull()) return id;
    auto& io = Host::instance().interp().io();
    std::wstring file = name;
    if (file.size() < 4 || upper(file.substr(file.size() - 4)) != L".DWG") file += L".dwg";
    auto path = io.findFile ? io.findFile(file) : std::nullopt;
    if (!path) {
        c.report(L"\"" + file + L"\": Can't find file in search path.");
        return {};
    }
    AcDbDatabase source(false);
    if (source.readDwgFile(path->wstring().c_str()) != Acad::eOk) {
        c.report(L"\"" + file + L"\": cannot be read as a drawing.");
        return {};
    }
    std::wstring blockName = std::filesystem::path(name).stem().wstring();
    if (c.db().insert(id, blockName.c_str(), &source) != Acad::eOk) return {};
    return id;
}

void insertCommand(Context& c) {
    std::wstring name;
    for (;;) {
        name = c.text(kInsertName);
        if (name.empty()) return;
        if (name != L"?") break;
        AcDbObjectPointer<AcDbBlockTable> table(c.db().blockTableId(), AcDb::kForRead);
        AcDbBlockTableIterator* raw = nullptr;
        if (table && table->newIterator(raw) == Acad::eOk) {
            std::unique_ptr<AcDbBlockTableIterator> it(raw);
            for (; !it->done(); it->step()) {
                AcDbObjectId id;
                it->getRecordId(id);
                std::wstring block = recordName(id);
                if (!block.empty() && block[0] != L'*') c.say(L"\"" + block + L"\"");
            }
        }
    }
    AcDbObjectId block = blockNamed(c, name);
    if (block.isNull()) throw CommandFailed{};
    double presetScale = 0, presetRotation = 0;
    bool scalePreset = false, rotationPreset = false;
    std::optional<AcGePoint3d> at;
    while (!at) {
        std::wstring kw;
        at = c.point(kInsertPoint, {L"Basepoint", L"Scale", L"X", L"Y", L"Z", L"Rotate"}, &kw);
        if (at) break;
        if (kw == L"Scale") {
            presetScale = *c.distance(L"Specify scale factor for XYZ axes <1>:", nullptr, 1.0);
            scalePreset = true;
        } else if (kw == L"Rotate") {
            presetRotation = *c.angle(kRotation, nullptr, 0.0);
            rotationPreset = true;
        } else {
            c.report(L"The " + kw +
                     L" option is not available in this host; give the insertion point, "
                     L"Scale or Rotate.");
        }
    }
    double xs = presetScale, ys = presetScale;
    if (!scalePreset) {
        std::wstring kw;
        auto x = c.distance(kInsertX, nullptr, 1.0, {L"Corner", L"XYZ"}, &kw);
        while (!x) {
            c.report(L"Corner and XYZ are not available in this host; give the X scale factor.");
            x = c.distance(kInsertX, nullptr, 1.0, {L"Corner", L"XYZ"}, &kw);
        }
        xs = *x;
        ys = *c.distance(kInsertY, nullptr, xs);
    }
    double rotation = rotationPreset ? presetRotation : *c.angle(kRotation, &*at, 0.0);
    auto* reference = new AcDbBlockReference(*at, block);
    reference->setScaleFactors(AcGeScale3d(xs, ys, xs));
    reference->setRotation(rotation);
    AcDbObjectId id = addToCurrentSpace(c.db(), reference);
    if (id.isNull()) return;

    // Attributes: each variable definition of the block asks for its value (ATTREQ 1).
    auto attreq = Host::instance().getVar(L"ATTREQ");
    if (attreq && attreq->isNumber() && attreq->asReal() == 0) return;
    std::vector<AcDbObjectId> definitions;
    if (AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead); record)
        for (AcDbObjectId e : record->entityIds())
            if (AcDbObjectPointer<AcDbAttributeDefinition> def(e, AcDb::kForRead);
                def && !def->isConstant())
                definitions.push_back(e);
    if (definitions.empty()) return;
    c.say(L"Enter attribute values");
    AcGeMatrix3d xform;
    if (AcDbObjectPointer<AcDbBlockReference> ref(id, AcDb::kForRead); ref)
        xform = ref->blockTransform();
    for (AcDbObjectId e : definitions) {
        std::wstring ask, fallback;
        {
            AcDbObjectPointer<AcDbAttributeDefinition> def(e, AcDb::kForRead);
            ask = def->promptConst() && *def->promptConst() ? def->promptConst() : def->tagConst();
            fallback = def->textStringConst();
        }
        std::wstring value = c.text(ask + L" <" + fallback + L">:");
        if (value.empty()) value = fallback;
        AcDbObjectPointer<AcDbAttributeDefinition> def(e, AcDb::kForRead);
        auto* attribute = new AcDbAttribute();
        attribute->setPropertiesFrom(def.object());
        attribute->setAttributeFromBlock(def.object(), xform);
        attribute->setTextString(value.c_str());
        def.close();
        AcDbObjectPointer<AcDbBlockReference> ref(id, AcDb::kForWrite);
        if (!ref || ref->appendAttribute(attribute) != Acad::eOk)
            delete attribute;
        else if (!attribute->objectId().isNull())
            attribute->close();  // it joined the drawing
    }
}

constexpr CommandEntry kGeometryCommands[] = {
    {L"LINE", lineCommand},   {L"CIRCLE", circleCommand}, {L"ARC", arcCommand},
    {L"PLINE", plineCommand}, {L"TEXT", textCommand},     {L"-INSERT", insertCommand},
};

}  // namespace

std::span<const CommandEntry> geometryCommands() {
    return kGeometryCommands;
}

}  // namespace kelvo::commands
