// The undo history of one drawing (the design is in undo_log.h).

#include "runtime/commands/undo_log.h"

#include <stdexcept>

#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"

namespace kelvo::commands {

using drawing::DatabaseAccess;
using drawing::ObjectAccess;

UndoLog::UndoLog(AcDbDatabase& db) : db_(&db) {
    baseline_ = snapshot();
    seenWrites_ = DatabaseAccess::data(db).writeCount;
    headerBaseline_ = DatabaseAccess::data(db).header;
}

std::map<std::uint64_t, UndoLog::Image> UndoLog::snapshot() const {
    std::map<std::uint64_t, Image> images;
    for (auto& [handle, stub] : DatabaseAccess::data(*db_).stubs) {
        const AcDbObject* object = stub->object;
        if (!object) continue;
        Image image;
        image.erased = object->isErased();
        image.isEntity = AcDbEntity::cast(object) != nullptr;
        if (ObjectAccess::proxy(*object)) {
            image.proxy = true;
        } else {
            image.className = object->isA() ? object->isA()->name() : L"";
            if (drawing::writeObjectToDwg(*object, image.bytes) != Acad::eOk) image.proxy = true;
        }
        images.emplace(handle, std::move(image));
    }
    return images;
}

void UndoLog::checkpoint(const std::wstring& label, bool always) {
    Group changes;
    changes.label = label;
    std::uint64_t writes = DatabaseAccess::data(*db_).writeCount;
    if (writes != seenWrites_) {  // else no object was opened for write or added: none changed
        std::map<std::uint64_t, Image> now = snapshot();
        for (auto& [handle, image] : now) {
            auto it = baseline_.find(handle);
            if (it == baseline_.end())
                changes.before.emplace(handle, std::nullopt);
            else if (!(it->second == image))
                changes.before.emplace(handle, it->second);
        }
        baseline_ = std::move(now);
        seenWrites_ = writes;
    }
    const Header& header = DatabaseAccess::data(*db_).header;
    if (header != headerBaseline_) changes.header = headerBaseline_;
    headerBaseline_ = header;
    if (open_ && !groups_.empty()) {
        Group& group = groups_.back();
        group.before.merge(changes.before);  // an object keeps its oldest image
        if (!group.header) group.header = std::move(changes.header);
        return;
    }
    if (!always && changes.before.empty() && !changes.header) return;
    groups_.push_back(std::move(changes));
}

void UndoLog::begin() {
    end();
    checkpoint(L"");
    Group group;
    group.label = L"GROUP";
    groups_.push_back(std::move(group));
    open_ = true;
}

void UndoLog::end() {
    if (!open_) return;
    checkpoint(L"");
    open_ = false;
}

void UndoLog::mark() {
    Group group;
    group.isMark = true;
    groups_.push_back(std::move(group));
}

bool UndoLog::hasMark() const {
    for (const Group& g : groups_)
        if (g.isMark) return true;
    return false;
}

void UndoLog::requireClosed() const {
    for (auto& [handle, stub] : DatabaseAccess::data(*db_).stubs) {
        const AcDbObject* o = stub->object;
        if (o && (ObjectAccess::readers(*o) > 0 || ObjectAccess::writer(*o)))
            throw std::runtime_error("an object of the drawing is open; nothing was undone");
    }
}

void UndoLog::undoGroup(Group& group) {
    drawing::DatabaseData& data = DatabaseAccess::data(*db_);
    for (auto& [handle, image] : group.before) {
        AcDbStub* stub = DatabaseAccess::findStub(*db_, AcDbHandle(handle));
        if (!stub || !stub->object) continue;
        AcDbObject* current = stub->object;
        if (!image) {  // made in the group
            ObjectAccess::setErased(*current, true);
            continue;
        }
        if (image->proxy) {
            ObjectAccess::setErased(*current, image->erased);
            continue;
        }
        AcDbObject* restored = nullptr;
        drawing::readObjectFromDwg(image->className, image->bytes, *db_, restored, image->isEntity);
        if (!restored || restored->isA() != current->isA()) {
            // A class without a constructor of its own (the symbol tables): the image is
            // read into the object in place.
            delete restored;
            drawing::DwgMemoryFiler filer(AcDb::kFileFiler, db_);
            filer.setBytes(image->bytes);
            ObjectAccess::writerRef(*current) = true;
            current->dwgIn(&filer);
            ObjectAccess::writerRef(*current) = false;
            ObjectAccess::setErased(*current, image->erased);
            continue;
        }
        ObjectAccess::setStub(*restored, stub);
        ObjectAccess::setErased(*restored, image->erased);
        stub->object = restored;
        delete current;
    }
    if (group.header) data.header = *group.header;
}

UndoLog::Outcome UndoLog::undo(int count) {
    requireClosed();
    checkpoint(L"");
    Outcome outcome;
    if (open_) {
        // Inside an open group only what the group did so far is taken back.
        Group& group = groups_.back();
        if (!group.before.empty() || group.header) {
            undoGroup(group);
            group.before.clear();
            group.header.reset();
            outcome.labels.push_back(group.label);
        }
    } else {
        for (int i = 0; i < count && !groups_.empty(); ++i) {
            Group& group = groups_.back();
            if (group.isMark) {
                outcome.hitMark = true;
                break;
            }
            undoGroup(group);
            if (!group.label.empty()) outcome.labels.push_back(group.label);
            groups_.pop_back();
        }
    }
    outcome.everything = groups_.empty();
    baseline_ = snapshot();
    seenWrites_ = DatabaseAccess::data(*db_).writeCount;
    headerBaseline_ = DatabaseAccess::data(*db_).header;
    return outcome;
}

UndoLog::Outcome UndoLog::back() {
    requireClosed();
    end();
    checkpoint(L"");
    Outcome outcome;
    while (!groups_.empty()) {
        Group& group = groups_.back();
        if (group.isMark) {
            groups_.pop_back();
            outcome.hitMark = true;
            break;
        }
        undoGroup(group);
        if (!group.label.empty()) outcome.labels.push_back(group.label);
        groups_.pop_back();
    }
    outcome.everything = groups_.empty() && !outcome.hitMark;
    baseline_ = snapshot();
    seenWrites_ = DatabaseAccess::data(*db_).writeCount;
    headerBaseline_ = DatabaseAccess::data(*db_).header;
    return outcome;
}

}  // namespace kelvo::commands
