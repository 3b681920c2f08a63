// The dictionary functions of LISP: namedobjdict, dictsearch, dictnext, dictadd,
// dictremove, dictrename. A dictionary is named by its entity name; an entry answers as
// entget shows its object.

#include <map>

#include "dbdict.h"
#include "dbobjptr.h"
#include "lisp/args.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/host_impl.h"

namespace kelvo::host {
namespace {

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

Value nameValue(AcDbObjectId id) {
    return id.isNull() ? Value() : Value::ename(id.asOldId());
}

// A dictionary argument; throws when it is not an entity name, null when it names no
// dictionary.
AcDbObjectId dictionaryArgument(const Args& args, std::size_t i) {
    if (args[i].type() != Type::Ename) lisp::badArgType(L"lentityp", args[i]);
    AcDbObjectId id(args[i].handleId());
    return AcDbDictionary::cast(drawing::peekObject(id)) ? id : AcDbObjectId();
}

Value entryData(Interp& in, AcDbObjectId id) {
    if (id.isNull()) return {};
    return in.apply(Value::symbol(L"ENTGET"), {nameValue(id)});
}

// Where dictnext is in each dictionary: the name of the entry it answered last.
std::map<AcDbObjectId, std::wstring>& positions() {
    static std::map<AcDbObjectId, std::wstring> marks;
    return marks;
}

// The entries of a dictionary in order: (name, id).
std::vector<std::pair<std::wstring, AcDbObjectId>> entries(AcDbObjectId dict) {
    std::vector<std::pair<std::wstring, AcDbObjectId>> out;
    auto* d = AcDbDictionary::cast(drawing::peekObject(dict));
    if (!d) return out;
    std::unique_ptr<AcDbDictionaryIterator> it(d->newIterator());
    for (; !it->done(); it->next()) out.emplace_back(it->name(), it->objectId());
    return out;
}

Value namedobjdictFn(Interp&, Values& values) {
    Args args(values, 0, 0);
    return nameValue(currentDatabase().namedObjectsDictionaryId());
}

// (dictsearch dict name [setnext]): the entry's data, or nil.
Value dictsearchFn(Interp& in, Values& values) {
    Args args(values, 2, 3);
    AcDbObjectId dict = dictionaryArgument(args, 0);
    const std::wstring& name = args.string(1);
    auto* d = AcDbDictionary::cast(drawing::peekObject(dict));
    AcDbObjectId id;
    if (!d || d->getAt(name.c_str(), id) != Acad::eOk) return {};
    if (args.has(2) && !args[2].isNil()) positions()[dict] = drawing::upperName(name);
    return entryData(in, id);
}

// (dictnext dict [rewind]): the next entry's data (the first with rewind), or nil at
// the end.
Value dictnextFn(Interp& in, Values& values) {
    Args args(values, 1, 2);
    AcDbObjectId dict = dictionaryArgument(args, 0);
    if (dict.isNull()) return {};
    auto list = entries(dict);
    auto mark = positions().find(dict);
    bool rewind = (args.has(1) && !args[1].isNil()) || mark == positions().end();
    std::size_t next = 0;
    if (!rewind) {
        while (next < list.size() && drawing::upperName(list[next].first) != mark->second) ++next;
        ++next;
    }
    if (next >= list.size()) {
        positions()[dict] = L"\x1";  // past the end
        return {};
    }
    positions()[dict] = drawing::upperName(list[next].first);
    return entryData(in, list[next].second);
}

// (dictadd dict name object): the object (made with entmakex) becomes the entry; nil
// when the name is taken.
Value dictaddFn(Interp&, Values& values) {
    Args args(values, 3, 3);
    AcDbObjectId dict = dictionaryArgument(args, 0);
    const std::wstring& name = args.string(1);
    if (args[2].type() != Type::Ename) lisp::badArgType(L"lentityp", args[2]);
    AcDbObjectId objectId(args[2].handleId());
    if (dict.isNull() || !drawing::peekObject(objectId)) return {};
    AcDbObjectPointer<AcDbDictionary> d(dict, AcDb::kForWrite);
    if (!d || d->has(name.c_str())) return {};
    AcDbObjectPointer<AcDbObject> object(objectId, AcDb::kForWrite);
    if (!object) return {};
    AcDbObjectId added;
    if (d->setAt(name.c_str(), object.object(), added) != Acad::eOk) return {};
    return nameValue(added);
}

// (dictremove dict name): the entry leaves the dictionary (its object stays in the
// drawing); its entity name, or nil.
Value dictremoveFn(Interp&, Values& values) {
    Args args(values, 2, 2);
    AcDbObjectId dict = dictionaryArgument(args, 0);
    if (dict.isNull()) return {};
    AcDbObjectPointer<AcDbDictionary> d(dict, AcDb::kForWrite);
    AcDbObjectId removed;
    if (!d || d->remove(args.string(1).c_str(), removed) != Acad::eOk) return {};
    return nameValue(removed);
}

// (dictrename dict old new): the new name, or nil.
Value dictrenameFn(Interp&, Values& values) {
    Args args(values, 3, 3);
    AcDbObjectId dict = dictionaryArgument(args, 0);
    if (dict.isNull()) return {};
    AcDbObjectPointer<AcDbDictionary> d(dict, AcDb::kForWrite);
    if (!d || d->setName(args.string(1).c_str(), args.string(2).c_str()) != Acad::eOk) return {};
    return args[2];
}

constexpr lisp::Builtin kDictionaryFunctions[] = {
    {L"namedobjdict", namedobjdictFn}, {L"dictsearch", dictsearchFn}, {L"dictnext", dictnextFn},
    {L"dictadd", dictaddFn},           {L"dictremove", dictremoveFn}, {L"dictrename", dictrenameFn},
};

}  // namespace

void defineDictionaryFunctions(lisp::Interp& interp) {
    lisp::openLibrary(interp, kDictionaryFunctions);
}

}  // namespace kelvo::host
