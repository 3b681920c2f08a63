// Helpers shared by the module's unit tests: value lists built inline, external calls
// run as the host runs them, and captured command-line output.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adslib.h"
#include "host_ui.h"
#include "bridge/value_list.h"
#include "runtime/host.h"
#include "runtime/ui_backend.h"

namespace kelvo::test {

// acutBuildList, owned.
template <typename... Args>
ValueList list(Args... args) {
    return ValueList(acutBuildList(args..., 0));
}

// A list of texts.
inline ValueList texts(const std::vector<const wchar_t*>& items) {
    ValueList head;
    resbuf** tail = nullptr;
    for (const wchar_t* item : items) {
        resbuf* node = acutBuildList(RTSTR, item, 0);
        if (!head)
            head.reset(node);
        else
            *tail = node;
        tail = &node->rbnext;
    }
    return head;
}

inline host::CallOutcome call(AcedFunction callback, const ValueList& args = {}) {
    return host::runExternalCall(callback, args.get());
}

// Collects what is printed on the command line while it lives.
class CapturedOutput {
public:
    CapturedOutput() {
        host::Host::instance().setOutput([this](std::wstring_view s) { text_ += s; });
    }
    ~CapturedOutput() {
        host::Host::instance().setOutput([](std::wstring_view) {});
    }
    const std::wstring& text() const { return text_; }

private:
    std::wstring text_;
};

// A user-interface backend that records what the module shows and answers from a
// script. Installed while it lives (the host owns the backend; this keeps a view).
struct UiRecord {
    struct Box {
        std::wstring text, caption;
        unsigned style;
    };
    std::vector<Box> boxes;
    std::vector<unsigned> beeps;
    std::vector<std::wstring> opened;
    std::deque<int> answers;  // button ids; IDOK when none is left
    long shellResult = 42;    // above 32: success
};

class RecordingUi : public host::UiBackend {
public:
    explicit RecordingUi(std::shared_ptr<UiRecord> record) : record_(std::move(record)) {}
    int messageBox(std::wstring_view text, std::wstring_view caption, unsigned style) override {
        record_->boxes.push_back({std::wstring(text), std::wstring(caption), style});
        if (record_->answers.empty()) return IDOK;
        const int answer = record_->answers.front();
        record_->answers.pop_front();
        return answer;
    }
    void beep(unsigned sound) override { record_->beeps.push_back(sound); }
    long shellExecute(std::wstring_view verb, std::wstring_view file) override {
        record_->opened.push_back(std::wstring(verb) + L" " + std::wstring(file));
        return record_->shellResult;
    }

private:
    std::shared_ptr<UiRecord> record_;
};

class ScriptedUi {
public:
    ScriptedUi() : record_(std::make_shared<UiRecord>()) {
        host::Host::instance().setUi(std::make_unique<RecordingUi>(record_));
    }
    ~ScriptedUi() { host::Host::instance().setUi(host::makeConsoleUi({}, "")); }
    UiRecord& operator*() { return *record_; }
    UiRecord* operator->() { return record_.get(); }

private:
    std::shared_ptr<UiRecord> record_;
};

}  // namespace kelvo::test
