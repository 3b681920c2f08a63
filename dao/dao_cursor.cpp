// Position rules and the edit buffer shared by every cursor.
#include "dao_cursor.h"

#include "dao_errors.h"

namespace dao {

int Cursor::fieldIndex(std::wstring_view name) const {
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (sameName(fields_[i].name, name)) return static_cast<int>(i);
    throwError(kItemNotFound);
}

int Cursor::checkedIndex(int index) const {
    if (index < 0 || index >= static_cast<int>(fields_.size())) throwError(kItemNotFound);
    return index;
}

void Cursor::requireCurrent() const {
    if (!hasCurrent()) throwError(kNoCurrentRecord);
}

void Cursor::move(long rows) {
    if (rows == 0) {
        requireCurrent();
        return;
    }
    if ((rows > 0 && eof_) || (rows < 0 && bof_)) throwError(kNoCurrentRecord);
    for (long i = 0; i < rows && !eof_; ++i) moveNext();
    for (long i = 0; i > rows && !bof_; --i) movePrev();
}

COleVariant Cursor::value(int field) {
    checkedIndex(field);
    const auto at = static_cast<std::size_t>(field);
    if (editMode_ != 0 && buffer_[at]) return *buffer_[at];
    if (editMode_ == 2) return COleVariant::Null();
    return currentValue(field);  // which requires a current record
}

COleVariant Cursor::lastModified() const {
    if (!lastModified_) throwError(kNoCurrentRecord);
    return *lastModified_;
}

void Cursor::dropEdit() {
    if (editMode_ == 1) endEdit(false);
    editMode_ = 0;
    buffer_.clear();
}

void Cursor::addNew() {
    if (!canUpdate()) throwError(kReadOnly);
    dropEdit();
    buffer_.assign(fields_.size(), std::nullopt);
    editMode_ = 2;
}

void Cursor::edit(bool pessimistic) {
    if (!canUpdate()) throwError(kReadOnly);
    dropEdit();
    requireCurrent();
    beginEdit(pessimistic);
    buffer_.assign(fields_.size(), std::nullopt);
    editMode_ = 1;
}

void Cursor::setValue(int field, const COleVariant& value) {
    checkedIndex(field);
    if (editMode_ == 0) throwError(kUpdateWithoutEdit);
    const FieldDef& def = fields_[static_cast<std::size_t>(field)];
    if (def.counter) throwError(kFieldNotUpdatable);
    buffer_[static_cast<std::size_t>(field)] = convertForField(def, value, name());
}

void Cursor::update() {
    if (editMode_ == 0) throwError(kUpdateWithoutEdit);
    if (editMode_ == 2)
        writeNew(buffer_);
    else
        writeChanges(buffer_);
    // Only a write that went through ends the edit; a failed one can be tried again.
    editMode_ = 0;
    buffer_.clear();
}

void Cursor::cancelUpdate() {
    if (editMode_ == 0) throwError(kUpdateWithoutEdit);
    dropEdit();
}

void Cursor::remove() { throwError(kReadOnly); }

void Cursor::setIndex(std::wstring_view) { throwError(kNotSupported); }

bool Cursor::seek(std::wstring_view, const COleVariant*, int) { throwError(kNotSupported); }

void Cursor::beginEdit(bool) { throwError(kReadOnly); }
void Cursor::endEdit(bool) {}
void Cursor::writeNew(const std::vector<std::optional<COleVariant>>&) { throwError(kReadOnly); }
void Cursor::writeChanges(const std::vector<std::optional<COleVariant>>&) { throwError(kReadOnly); }

}  // namespace dao
