// The LISP entity functions of every drawing: entget, entmake, entmakex, entmod, entdel,
// entupd, entnext, entlast, handent, regapp, tblsearch, tblnext, tblobjname, and the
// selection sets (ssget, ssadd, ssdel, ssname, sslength, ssmemb). They work on the
// current drawing's database through the drawing's group-list functions.

#include "dbobjptr.h"
#include "lisp/args.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"
#include "runtime/drawing/xdata_size.h"
#include "runtime/host_impl.h"

namespace kelvo::host {
namespace {

using drawing::RbChain;
using lisp::Args;
using lisp::Interp;
using lisp::Type;
using lisp::Value;
using Values = std::vector<Value>;

AcDbDatabase& currentDatabase() {
    Document* doc = Host::instance().impl().currentDocument();
    if (!doc || !doc->database()) throw lisp::Error(L"no drawing is open");
    return *doc->database();
}

// An entity name argument as an id of an object of an open drawing (null otherwise).
AcDbObjectId idArgument(const Args& args, std::size_t i) {
    if (args[i].type() != Type::Ename) lisp::badArgType(L"lentityp", args[i]);
    AcDbObjectId id(args[i].handleId());
    return drawing::peekObject(id) ? id : AcDbObjectId();
}

Value nameValue(AcDbObjectId id) { return id.isNull() ? Value() : Value::ename(id.asOldId()); }

Value pointValue(const double* p, bool in2d) {
    if (in2d) return Value::list({Value::real(p[0]), Value::real(p[1])});
    return Value::list({Value::real(p[0]), Value::real(p[1]), Value::real(p[2])});
}

// One group as LISP shows it: (code . value), or (code x y z) for a point ((code x y)
// when `in2d`).
Value groupValue(const resbuf* rb, bool in2d = false) {
    Value code = Value::integer(rb->restype);
    switch (rbKindOf(rb->restype)) {
        case RbKind::Real: return Value::cons(code, Value::real(rb->resval.rreal));
        case RbKind::Point:
            return Value::cons(code, pointValue(rb->resval.rpoint, in2d));
        case RbKind::Short: return Value::cons(code, Value::integer(rb->resval.rint));
        case RbKind::Long: return Value::cons(code, Value::integer(rb->resval.rlong));
        case RbKind::Int64: return Value::cons(code, Value::real(static_cast<double>(rb->resval.mnInt64)));
        case RbKind::String:
            return Value::cons(code, Value::string(rb->resval.rstring ? rb->resval.rstring : L""));
        case RbKind::Name: return Value::cons(code, Value::ename(rb->resval.rlname[0]));
        case RbKind::Binary: {
            static const wchar_t* hex = L"0123456789ABCDEF";
            std::wstring text;
            for (short i = 0; i < rb->resval.rbinary.clen; ++i) {
                auto byte = static_cast<unsigned char>(rb->resval.rbinary.buf[i]);
                text += hex[byte >> 4];
                text += hex[byte & 15];
            }
            return Value::cons(code, Value::string(text));
        }
        default: return Value::list({code});
    }
}

// A flat chain as a LISP list; the extended data after -3 becomes
// (-3 ("APP" groups...) ...).
Value chainValue(const resbuf* chain) {
    std::vector<Value> items;
    const resbuf* rb = chain;
    for (; rb && rb->restype != AcDb::kDxfXDataStart; rb = rb->rbnext)
        items.push_back(groupValue(rb, drawing::listsPointsIn2d(chain, rb->restype)));
    if (rb) {
        std::vector<Value> apps;
        std::vector<Value> current;
        for (rb = rb->rbnext; rb; rb = rb->rbnext) {
            if (rb->restype == AcDb::kDxfRegAppName) {
                if (!current.empty()) apps.push_back(Value::list(current));
                current = {Value::string(rb->resval.rstring ? rb->resval.rstring : L"")};
            } else {
                current.push_back(groupValue(rb));
            }
        }
        if (!current.empty()) apps.push_back(Value::list(current));
        items.push_back(Value::cons(Value::integer(AcDb::kDxfXDataStart), Value::list(apps)));
    }
    return Value::list(items);
}

[[noreturn]] void badGroup(const Value& group) {
    throw lisp::Error(L"bad DXF group: " + Interp::prin1String(group));
}

// One group from LISP: (code . value) or (code x y z).
resbuf* groupNode(const Value& group) {
    if (!group.isCons() || group.car().type() != Type::Int) badGroup(group);
    int code = group.car().asInt();
    Value v = group.cdr();
    resbuf* rb = acutNewRb(code);
    RbChain guard(rb);
    switch (rbKindOf(code)) {
        case RbKind::String:
            if (v.type() != Type::Str) badGroup(group);
            acutNewString(v.asString().c_str(), rb->resval.rstring);
            break;
        case RbKind::Real:
            if (!v.isNumber()) badGroup(group);
            rb->resval.rreal = v.asReal();
            break;
        case RbKind::Short: case RbKind::Long: case RbKind::Int64: {
            if (v.type() != Type::Int && !(v.type() == Type::Real && v.asReal() == std::floor(v.asReal())))
                badGroup(group);
            // A value the group's width cannot hold is refused, not cut short.
            double real = v.asReal();
            double limit = rbKindOf(code) == RbKind::Short ? 32768.0
                           : rbKindOf(code) == RbKind::Long ? 2147483648.0 : 9.2e18;
            if (real < -limit || real >= limit) badGroup(group);
            if (rbKindOf(code) == RbKind::Short) rb->resval.rint = static_cast<short>(real);
            else if (rbKindOf(code) == RbKind::Long) rb->resval.rlong = static_cast<std::int32_t>(real);
            else rb->resval.mnInt64 = static_cast<std::int64_t>(real);
            break;
        }
        case RbKind::Point: {
            std::vector<double> p;
            for (Value it = v; it.isCons(); it = it.cdr()) {
                if (!it.car().isNumber()) badGroup(group);
                p.push_back(it.car().asReal());
            }
            if (p.size() < 2 || p.size() > 3) badGroup(group);
            for (std::size_t i = 0; i < 3; ++i) rb->resval.rpoint[i] = i < p.size() ? p[i] : 0.0;
            break;
        }
        case RbKind::Name:
            if (v.type() != Type::Ename) badGroup(group);
            rb->resval.rlname[0] = v.handleId();
            break;
        default: badGroup(group);
    }
    return guard.release();
}

// A LISP group list as a flat chain, with the (-3 ...) part flattened after a -3 node.
RbChain listChain(const Value& list) {
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    RbChain guard;
    auto add = [&](resbuf* node) {
        drawing::appendNode(head, tail, node);
        guard.release();
        guard.reset(head);
    };
    for (Value it = list; it.isCons(); it = it.cdr()) {
        Value group = it.car();
        if (group.isCons() && group.car().type() == Type::Int && group.car().asInt() == AcDb::kDxfXDataStart) {
            add(acutNewRb(AcDb::kDxfXDataStart));
            for (Value app = group.cdr(); app.isCons(); app = app.cdr()) {
                Value part = app.car();
                if (!part.isCons() || part.car().type() != Type::Str) badGroup(group);
                resbuf* name = acutNewRb(AcDb::kDxfRegAppName);
                acutNewString(part.car().asString().c_str(), name->resval.rstring);
                add(name);
                for (Value g = part.cdr(); g.isCons(); g = g.cdr()) add(groupNode(g.car()));
            }
            continue;
        }
        add(groupNode(group));
    }
    return guard;
}

Value entgetFn(Interp&, Values& values) {
    Args args(values, 1, 2);
    AcDbObjectId id = idArgument(args, 0);
    std::vector<std::wstring> apps;
    if (args.has(1))
        for (Value it = args.list(1); it.isCons(); it = it.cdr()) {
            if (it.car().type() != Type::Str) lisp::badArgType(L"stringp", it.car());
            apps.push_back(it.car().asString());
        }
    if (id.isNull() || !AcDbEntity::cast(drawing::peekObject(id))) {
        if (id.isNull() || !drawing::peekObject(id)) return {};
    }
    RbChain data(drawing::entityData(id, args.has(1) ? &apps : nullptr));
    return data ? chainValue(data.get()) : Value();
}

Value entmakeCommon(Values& values, bool answerName) {
    Args args(values, 0, 1);
    AcDbDatabase& db = currentDatabase();
    if (!args.has(0)) {   // cancels a block or complex entity in progress
        drawing::ListState& state = drawing::DatabaseAccess::data(db).lists;
        state.dropBlock();
        state.dropComplex();
        return {};
    }
    RbChain chain = listChain(args.list(0));
    drawing::MakeResult made = drawing::makeFromList(db, chain.get());
    if (made.status != Acad::eOk) return {};
    if (!made.blockName.empty()) return Value::string(made.blockName);
    if (answerName) return nameValue(made.id);
    return args[0];
}

Value entmakeFn(Interp&, Values& values) { return entmakeCommon(values, false); }
Value entmakexFn(Interp&, Values& values) { return entmakeCommon(values, true); }

Value entmodFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    RbChain chain = listChain(args.list(0));
    return drawing::modifyFromList(chain.get()) == Acad::eOk ? args[0] : Value();
}

Value entdelFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    AcDbObjectId id = idArgument(args, 0);
    return drawing::deleteOrRestore(id) == Acad::eOk ? args[0] : Value();
}

Value entupdFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    AcDbObjectId id = idArgument(args, 0);
    return id.isNull() || id.isErased() ? Value() : args[0];
}

Value entnextFn(Interp&, Values& values) {
    Args args(values, 0, 1);
    AcDbObjectId after = args.has(0) ? idArgument(args, 0) : AcDbObjectId();
    if (args.has(0) && after.isNull()) return {};
    return nameValue(drawing::nextEntity(currentDatabase(), after));
}

Value entlastFn(Interp&, Values& values) {
    Args args(values, 0, 0);
    return nameValue(drawing::lastEntity(currentDatabase()));
}

// ERRNO when a handle names no entity.
constexpr int kErrnoBadHandle = 13;

Value handentFn(Interp& in, Values& values) {
    Args args(values, 1, 1);
    AcDbHandle handle(args.string(0).c_str());
    AcDbObjectId id;
    // An entity erased in this session is still found, so that entdel can bring it back.
    if (handle.isNull() || currentDatabase().getAcDbObjectId(id, false, handle) != Acad::eOk ||
        !drawing::peekObject(id)) {
        in.setErrno(kErrnoBadHandle);
        return {};
    }
    return nameValue(id);
}

Value regappFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    return drawing::registerApplication(currentDatabase(), args.string(0)) ? args[0] : Value();
}

Value tblsearchFn(Interp&, Values& values) {
    Args args(values, 2, 3);
    bool setNext = args.has(2) && !args[2].isNil();
    RbChain entry(drawing::tableEntry(currentDatabase(), args.string(0), args.string(1), setNext));
    return entry ? chainValue(entry.get()) : Value();
}

Value tblnextFn(Interp&, Values& values) {
    Args args(values, 1, 2);
    bool rewind = args.has(1) && !args[1].isNil();
    RbChain entry(drawing::nextTableEntry(currentDatabase(), args.string(0), rewind));
    return entry ? chainValue(entry.get()) : Value();
}

Value tblobjnameFn(Interp&, Values& values) {
    Args args(values, 2, 2);
    RbChain entry(drawing::tableEntry(currentDatabase(), args.string(0), args.string(1), false));
    if (!entry) return {};
    auto* table = AcDbSymbolTable::cast(drawing::peekObject(
        drawing::upperName(args.string(0)) == L"LAYER" ? currentDatabase().layerTableId()
        : drawing::upperName(args.string(0)) == L"LTYPE" ? currentDatabase().linetypeTableId()
        : drawing::upperName(args.string(0)) == L"STYLE" ? currentDatabase().textStyleTableId()
        : drawing::upperName(args.string(0)) == L"APPID" ? currentDatabase().regAppTableId()
                                                         : currentDatabase().blockTableId()));
    AcDbObjectId id;
    if (table) table->getAt(args.string(1).c_str(), id);
    return nameValue(id);
}

// --- selection sets ----------------------------------------------------------------------

std::vector<AcDbObjectId>& setArgument(const Args& args, std::size_t i) {
    if (args[i].type() != Type::Pickset) lisp::badArgType(L"lselsetp", args[i]);
    std::vector<AcDbObjectId>* set = drawing::selectionSet(args[i].handleId());
    if (!set) throw lisp::Error(L"bad argument type: lselsetp " + Interp::prin1String(args[i]));
    return *set;
}

Value ssgetFn(Interp&, Values& values) {
    Args args(values, 0, 4);
    std::wstring mode = args.has(0) && args[0].type() == Type::Str ? drawing::upperName(args.string(0)) : L"";
    AcDbDatabase& db = currentDatabase();
    std::vector<AcDbObjectId> ids;
    if (mode == L"X") {
        RbChain filter;
        if (args.has(1)) filter = listChain(args.list(1));
        if (drawing::selectAll(db, filter.get(), ids) != Acad::eOk)
            throw lisp::Error(L"ssget: bad selection filter");
    } else if (mode == L"L") {
        AcDbObjectId last = drawing::lastEntity(db);
        if (!last.isNull()) ids.push_back(last);
    } else {
        Host::instance().freshLine();
        Host::instance().write(L"ssget: selecting with a person at the screen is not available in this build\n");
        return {};
    }
    if (ids.empty()) return {};
    return Value::pickset(drawing::newSelectionSet(std::move(ids)));
}

Value ssaddFn(Interp&, Values& values) {
    Args args(values, 0, 2);
    if (!args.has(0)) return Value::pickset(drawing::newSelectionSet({}));
    AcDbObjectId id = idArgument(args, 0);
    if (id.isNull() || id.isErased()) return {};
    if (!args.has(1)) return Value::pickset(drawing::newSelectionSet({id}));
    std::vector<AcDbObjectId>& set = setArgument(args, 1);
    if (std::find(set.begin(), set.end(), id) == set.end()) set.push_back(id);
    return args[1];
}

Value ssdelFn(Interp&, Values& values) {
    Args args(values, 2, 2);
    AcDbObjectId id = idArgument(args, 0);
    std::vector<AcDbObjectId>& set = setArgument(args, 1);
    auto it = std::find(set.begin(), set.end(), id);
    if (it == set.end()) return {};
    set.erase(it);
    return args[1];
}

Value ssnameFn(Interp&, Values& values) {
    Args args(values, 2, 2);
    std::vector<AcDbObjectId>& set = setArgument(args, 0);
    double index = args.number(1);
    if (index < 0 || index >= static_cast<double>(set.size())) return {};
    return nameValue(set[static_cast<std::size_t>(index)]);
}

Value sslengthFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    return Value::integer(static_cast<std::int32_t>(setArgument(args, 0).size()));
}

Value ssmembFn(Interp&, Values& values) {
    Args args(values, 2, 2);
    AcDbObjectId id = idArgument(args, 0);
    std::vector<AcDbObjectId>& set = setArgument(args, 1);
    return std::find(set.begin(), set.end(), id) == set.end() || id.isNull() ? Value() : args[0];
}

// (xdsize list): the bytes the extended data of the list, ((-3 ("APP" groups...))) or
// (("APP" groups...)), takes in an object; nil when it is not extended data.
Value xdsizeFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    Value list = args.list(0);
    bool marked = list.isCons() && list.car().isCons() && list.car().car().type() == Type::Int &&
                  list.car().car().asInt() == AcDb::kDxfXDataStart;
    if (!marked) list = Value::list({Value::cons(Value::integer(AcDb::kDxfXDataStart), list)});
    try {
        RbChain chain = listChain(list);
        return Value::integer(static_cast<std::int32_t>(drawing::xdataBytes(chain.get())));
    } catch (const lisp::Error&) {
        return {};
    }
}

// (xdroom ename): the bytes of extended data the object can still take.
Value xdroomFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    AcDbObjectId id = idArgument(args, 0);
    if (id.isNull()) return {};
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead);
    if (!object) return {};
    RbChain xdata(object->xData(nullptr));
    return Value::integer(
        static_cast<std::int32_t>(drawing::xdataLimit() - drawing::xdataBytes(xdata.get())));
}

constexpr lisp::Builtin kEntityFunctions[] = {
    {L"xdsize", xdsizeFn},       {L"xdroom", xdroomFn},     {L"entget", entgetFn},
    {L"entmake", entmakeFn},     {L"entmakex", entmakexFn}, {L"entmod", entmodFn},
    {L"entdel", entdelFn},       {L"entupd", entupdFn},     {L"entnext", entnextFn},
    {L"entlast", entlastFn},     {L"handent", handentFn},   {L"regapp", regappFn},
    {L"tblsearch", tblsearchFn}, {L"tblnext", tblnextFn},   {L"tblobjname", tblobjnameFn},
    {L"ssget", ssgetFn},         {L"ssadd", ssaddFn},       {L"ssdel", ssdelFn},
    {L"ssname", ssnameFn},       {L"sslength", sslengthFn}, {L"ssmemb", ssmembFn},
};

}  // namespace

void defineEntityFunctions(lisp::Interp& interp) { lisp::openLibrary(interp, kEntityFunctions); }

}  // namespace kelvo::host
