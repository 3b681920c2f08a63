// -LAYER (LAYER runs it: this host has no layer dialog) and -PURGE (PURGE likewise).
//
// -LAYER: ?, Make, Set, New, Rename, ON, OFF, Color, Ltype, Freeze, Thaw, LOck and Unlock,
// each followed by the main prompt again until Enter. Name lists are comma-separated and
// take wildcards. LWeight, TRansparency, MATerial, Plot, stAte, Description and rEconcile
// are not available (a clear message, then the main prompt again).
// -PURGE: Blocks, LAyers, LTypes, textSTyles, Regapps and All, with a name pattern and
// the choice to confirm each name.

#include <set>

#include "adslib.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "lisp/wcmatch.h"
#include "runtime/commands/command_input.h"
#include "runtime/commands/command_support.h"
#include "runtime/commands/command_table.h"
#include "runtime/commands/prompts.h"
#include "runtime/drawing/drawing_access.h"

namespace kelvo::commands {
namespace {

using namespace prompt;

std::vector<std::wstring> splitNames(const std::wstring& list) {
    std::vector<std::wstring> names;
    std::wstring current;
    for (wchar_t ch : list + L",") {
        if (ch != L',') {
            current += ch;
            continue;
        }
        std::size_t b = current.find_first_not_of(L' '), e = current.find_last_not_of(L' ');
        if (b != std::wstring::npos) names.push_back(current.substr(b, e - b + 1));
        current.clear();
    }
    return names;
}

// The layers a name list names (wildcards allowed), in table order.
std::vector<AcDbObjectId> layersNamed(AcDbDatabase& db, const std::wstring& list) {
    std::vector<AcDbObjectId> found;
    auto patterns = splitNames(list);
    for (AcDbObjectId id : drawing::tableRecords(db.layerTableId())) {
        std::wstring name = upper(recordName(id));
        for (const auto& pattern : patterns)
            if (lisp::wcmatch(name, upper(pattern))) {
                found.push_back(id);
                break;
            }
    }
    return found;
}

// The layers of a name list; Enter names the current layer where the prompt offers it.
std::vector<AcDbObjectId> askLayers(Context& c, const std::wstring& prompt,
                                    bool currentByDefault = false) {
    std::wstring list = c.text(prompt);
    if (list.empty() && currentByDefault) return {c.db().clayer()};
    auto layers = layersNamed(c.db(), list);
    if (layers.empty() && !list.empty())
        for (const auto& name : splitNames(list))
            c.report(L"No matching layer(s) found for \"" + name + L"\".");
    return layers;
}

AcDbObjectId makeLayer(AcDbDatabase& db, const std::wstring& name) {
    AcDbObjectId id = findRecord(db.layerTableId(), name);
    if (!id.isNull()) return id;
    AcDbObjectPointer<AcDbLayerTable> table(db.layerTableId(), AcDb::kForWrite);
    auto* record = new AcDbLayerTableRecord();
    record->setName(name.c_str());
    record->setLinetypeObjectId(findRecord(db.linetypeTableId(), L"Continuous"));
    if (!table || table->add(id, record) != Acad::eOk) {
        delete record;
        return {};
    }
    record->close();
    return id;
}

bool validName(Context& c, const std::wstring& name) {
    if (!name.empty() && name.size() <= 255 &&
        name.find_first_of(L"<>/\\\":;?*|,=`") == std::wstring::npos)
        return true;
    c.report(L"Invalid layer name \"" + name + L"\".");
    return false;
}

int colorNamed(const std::wstring& text) {
    static const std::pair<const wchar_t*, int> names[] = {
        {L"RED", 1},  {L"YELLOW", 2},  {L"GREEN", 3}, {L"CYAN", 4},
        {L"BLUE", 5}, {L"MAGENTA", 6}, {L"WHITE", 7}};
    std::wstring u = upper(text);
    for (auto& [name, index] : names)
        if (u == name) return index;
    wchar_t* end = nullptr;
    long n = std::wcstol(u.c_str(), &end, 10);
    if (end != u.c_str() && *end == 0 && n >= 1 && n <= 255) return static_cast<int>(n);
    return 0;
}

template <class Change>
void changeLayers(Context& c, const std::wstring& prompt, Change change,
                  bool currentByDefault = false) {
    for (AcDbObjectId id : askLayers(c, prompt, currentByDefault)) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
        if (layer) change(*layer.object(), id);
    }
}

void layerList(Context& c) {
    std::wstring pattern = c.text(L"Enter layer name(s) to list <*>:");
    if (pattern.empty()) pattern = L"*";
    c.say(L"Layer name                       State          Color   Linetype");
    for (AcDbObjectId id : layersNamed(c.db(), pattern)) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        std::wstring state = std::wstring(layer->isOff() ? L"Off" : L"On") +
                             (layer->isFrozen() ? L" Frozen" : L"") +
                             (layer->isLocked() ? L" Locked" : L"");
        std::wstring line = layer->name();
        line.resize(std::max<std::size_t>(line.size() + 1, 33), L' ');
        line += state;
        line.resize(std::max<std::size_t>(line.size() + 1, 48), L' ');
        std::wstring color = std::to_wstring(layer->color().colorIndex());
        line += color;
        line.resize(std::max<std::size_t>(line.size() + 1, 56), L' ');
        line += recordName(layer->linetypeObjectId());
        c.say(line);
    }
}

void layerCommand(Context& c) {
    AcDbDatabase& db = c.db();
    c.say(L"Current layer:  \"" + recordName(db.clayer()) + L"\"");
    const std::vector<std::wstring> options = {
        L"?",     L"Make",  L"Set",     L"New",          L"Rename",      L"ON",       L"OFF",
        L"Color", L"Ltype", L"LWeight", L"TRansparency", L"MATerial",    L"Plot",     L"Freeze",
        L"Thaw",  L"LOck",  L"Unlock",  L"stAte",        L"Description", L"rEconcile"};
    for (;;) {
        std::wstring option = c.keyword(kLayerOption, options, std::wstring());
        if (option.empty()) return;
        if (option == L"?") {
            layerList(c);
        } else if (option == L"Make") {
            std::wstring name = c.text(L"Enter name for new layer (becomes the current layer) <" +
                                       recordName(db.clayer()) + L">:");
            if (name.empty() || !validName(c, name)) continue;
            AcDbObjectId id = makeLayer(db, name);
            AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
            if (layer && layer->isFrozen()) layer->setIsFrozen(false);
            layer.close();
            if (!id.isNull()) db.setClayer(id);
        } else if (option == L"Set") {
            std::wstring name = c.text(L"Enter layer name to make current or <select object>:");
            if (name.empty()) continue;
            AcDbObjectId id = findRecord(db.layerTableId(), name);
            if (id.isNull()) {
                c.report(L"Cannot find layer \"" + name + L"\".");
                continue;
            }
            bool frozen = false;
            if (AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead); layer)
                frozen = layer->isFrozen();
            if (frozen)
                c.report(L"Cannot set frozen layer \"" + recordName(id) + L"\" current.");
            else
                db.setClayer(id);
        } else if (option == L"New") {
            for (const auto& name : splitNames(c.text(L"Enter name list for new layer(s):")))
                if (validName(c, name)) makeLayer(db, name);
        } else if (option == L"Rename") {
            std::wstring old = c.text(L"Enter old layer name:");
            AcDbObjectId id = findRecord(db.layerTableId(), old);
            if (id.isNull()) {
                c.report(L"Cannot find layer \"" + old + L"\".");
                continue;
            }
            std::wstring name = c.text(L"Enter new layer name:");
            if (upper(recordName(id)) == L"0")
                c.report(L"Cannot rename layer \"0\".");
            else if (!findRecord(db.layerTableId(), name).isNull())
                c.report(L"Layer \"" + name + L"\" already exists.");
            else if (validName(c, name))
                if (AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite); layer)
                    layer->setName(name.c_str());
        } else if (option == L"ON") {
            changeLayers(c, L"Enter name list of layer(s) to turn on:",
                         [](AcDbLayerTableRecord& l, AcDbObjectId) { l.setIsOff(false); });
        } else if (option == L"OFF") {
            for (AcDbObjectId id :
                 askLayers(c, L"Enter name list of layer(s) to turn off or <select objects>:")) {
                if (id == db.clayer() &&
                    c.keyword(L"Really want layer \"" + recordName(id) +
                                  L"\" (the CURRENT layer) off? [Yes/No] <No>:",
                              {L"Yes", L"No"}, std::wstring(L"No")) == L"No")
                    continue;
                if (AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite); layer)
                    layer->setIsOff(true);
            }
        } else if (option == L"Color") {
            std::wstring colour = c.text(L"New color [Truecolor/COlorbook] :");
            int index = colorNamed(colour);
            if (!index) {
                c.report(L"Invalid color \"" + colour +
                         L"\": give a colour number 1 to 255 or a colour name.");
                continue;
            }
            changeLayers(
                c,
                L"Enter name list of layer(s) for color " + std::to_wstring(index) + L" <" +
                    recordName(db.clayer()) + L">:",
                [index](AcDbLayerTableRecord& l, AcDbObjectId) {
                    l.setColor(AcCmColor(AcCmEntityColor(static_cast<Adesk::Int16>(index))));
                },
                true);
        } else if (option == L"Ltype") {
            std::wstring name = c.text(L"Enter a loaded linetype name or [?] <Continuous>:");
            if (name.empty()) name = L"Continuous";
            AcDbObjectId linetype = findRecord(db.linetypeTableId(), name);
            if (linetype.isNull()) {
                c.report(L"Linetype \"" + name +
                         L"\" not found.  Use LINETYPE command to load it.");
                continue;
            }
            changeLayers(
                c,
                L"Enter name list of layer(s) for linetype \"" + recordName(linetype) + L"\" <" +
                    recordName(db.clayer()) + L">:",
                [linetype](AcDbLayerTableRecord& l, AcDbObjectId) {
                    l.setLinetypeObjectId(linetype);
                },
                true);
        } else if (option == L"Freeze") {
            changeLayers(c, L"Enter name list of layer(s) to freeze or <select objects>:",
                         [&c, &db](AcDbLayerTableRecord& l, AcDbObjectId id) {
                             if (id == db.clayer())
                                 c.report(L"Cannot freeze layer \"" + l.name() +
                                          L"\".  It is the CURRENT layer.");
                             else
                                 l.setIsFrozen(true);
                         });
        } else if (option == L"Thaw") {
            changeLayers(c, L"Enter name list of layer(s) to thaw:",
                         [](AcDbLayerTableRecord& l, AcDbObjectId) { l.setIsFrozen(false); });
        } else if (option == L"LOck") {
            changeLayers(c, L"Enter name list of layer(s) to lock or <select objects>:",
                         [](AcDbLayerTableRecord& l, AcDbObjectId) { l.setIsLocked(true); });
        } else if (option == L"Unlock") {
            changeLayers(c, L"Enter name list of layer(s) to unlock or <select objects>:",
                         [](AcDbLayerTableRecord& l, AcDbObjectId) { l.setIsLocked(false); });
        } else {
            c.report(L"The " + option + L" option is not available in this host.");
        }
    }
}

// --- -PURGE -----------------------------------------------------------------------------

struct References {
    std::set<AcDbObjectId> used;
    std::set<std::wstring> apps;  // upper case
};

void noteXData(References& refs, const AcDbObject& o) {
    resbuf* xdata = o.xData();
    for (resbuf* rb = xdata; rb; rb = rb->rbnext)
        if (rb->restype == 1001 && rb->resval.rstring) refs.apps.insert(upper(rb->resval.rstring));
    acutRelRb(xdata);
}

References referencesOf(AcDbDatabase& db) {
    References refs;
    refs.used = {db.clayer(), db.celtype(), db.textstyle()};
    for (AcDbObjectId id : drawing::allObjects(db)) {
        AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead);
        if (!object) continue;
        noteXData(refs, *object.object());
        if (auto* e = AcDbEntity::cast(object.object())) {
            refs.used.insert(e->layerId());
            refs.used.insert(e->linetypeId());
        }
        if (auto* r = AcDbBlockReference::cast(object.object()))
            refs.used.insert(r->blockTableRecord());
        if (auto* t = AcDbText::cast(object.object())) refs.used.insert(t->textStyle());
        if (auto* l = AcDbLayerTableRecord::cast(object.object()))
            refs.used.insert(l->linetypeObjectId());
    }
    return refs;
}

// Whether a record can never be purged (the standard ones, layouts).
bool standardRecord(AcDbObjectId id) {
    std::wstring name = upper(recordName(id));
    if (name == L"0" || name == L"DEFPOINTS" || name == L"STANDARD" || name == L"CONTINUOUS" ||
        name == L"BYLAYER" || name == L"BYBLOCK" || name == L"ACAD")
        return true;
    AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
    return block && (block->isLayout() || block->isFromExternalReference());
}

struct PurgeKind {
    const wchar_t* keyword;
    const wchar_t* singular;
    const wchar_t* plural;
    AcDbObjectId (AcDbDatabase::*table)() const;
};

constexpr PurgeKind kPurgeKinds[] = {
    {L"Blocks", L"block", L"blocks", &AcDbDatabase::blockTableId},
    {L"LAyers", L"layer", L"layers", &AcDbDatabase::layerTableId},
    {L"LTypes", L"linetype", L"linetypes", &AcDbDatabase::linetypeTableId},
    {L"textSTyles", L"text style", L"text styles", &AcDbDatabase::textStyleTableId},
    {L"Regapps", L"registered application", L"registered applications",
     &AcDbDatabase::regAppTableId},
};

// One pass over one table; answers how many records went.
int purgeKind(Context& c, const PurgeKind& kind, const std::wstring& pattern, bool verify) {
    AcDbDatabase& db = c.db();
    References refs = referencesOf(db);
    int deleted = 0;
    for (AcDbObjectId id : drawing::tableRecords((db.*kind.table)())) {
        std::wstring name = recordName(id);
        if (standardRecord(id) || refs.used.count(id) ||
            !lisp::wcmatch(upper(name), upper(pattern)))
            continue;
        if (kind.table == &AcDbDatabase::regAppTableId && refs.apps.count(upper(name))) continue;
        if (verify && c.keyword(L"Purge " + std::wstring(kind.singular) + L" \"" + name +
                                    L"\"? [Yes/No] <N>:",
                                {L"Yes", L"No"}, std::wstring(L"No")) == L"No")
            continue;
        AcDbObjectPointer<AcDbObject> record(id, AcDb::kForWrite);
        if (!record || record->erase() != Acad::eOk) continue;
        c.say(L"Deleting " + std::wstring(kind.singular) + L" \"" + name + L"\".");
        ++deleted;
    }
    if (deleted)
        c.say(std::to_wstring(deleted) + L" " + (deleted == 1 ? kind.singular : kind.plural) +
              L" deleted.");
    else
        c.say(L"No unreferenced " + std::wstring(kind.plural) + L" found.");
    return deleted;
}

void purgeCommand(Context& c) {
    std::vector<std::wstring> keywords;
    for (const auto& kind : kPurgeKinds) keywords.push_back(kind.keyword);
    keywords.push_back(L"All");
    std::wstring choice = c.keyword(kPurgeType, keywords, std::nullopt);
    std::wstring pattern = c.text(kPurgeNames);
    if (pattern.empty()) pattern = L"*";
    bool verify = c.keyword(kPurgeVerify, {L"Yes", L"No"}, std::wstring(L"Yes")) == L"Yes";
    if (choice != L"All") {
        for (const auto& kind : kPurgeKinds)
            if (choice == kind.keyword) purgeKind(c, kind, pattern, verify);
        return;
    }
    // All: blocks first (what they held may then be unreferenced), until nothing goes.
    for (int pass = 0; pass < 8; ++pass) {
        int deleted = 0;
        for (const auto& kind : kPurgeKinds) deleted += purgeKind(c, kind, pattern, verify);
        if (!deleted) break;
    }
}

constexpr CommandEntry kLayerCommands[] = {
    {L"-LAYER", layerCommand},
    {L"-PURGE", purgeCommand},
};

}  // namespace

std::span<const CommandEntry> layerCommands() {
    return kLayerCommands;
}

}  // namespace kelvo::commands
