// The command line of one drawing (the turn-taking is described in command_runner.h).

#include "runtime/commands/command_runner.h"

#include <map>

#include "runtime/commands/command_table.h"
#include "runtime/commands/undo_log.h"
#include "runtime/host.h"
#include "utf8.h"

namespace kelvo::commands {

using host::Host;

CommandLine::CommandLine(AcDbDatabase& db) : db_(&db), undo_(std::make_unique<UndoLog>(db)) {}

CommandLine::~CommandLine() {
    if (!thread_.joinable()) return;
    {
        std::lock_guard lock(mutex_);
        stop_ = true;
        commandTurn_ = true;
    }
    turn_.notify_all();
    thread_.join();
}

void CommandLine::feed(std::vector<Input> inputs, bool echo) {
    std::unique_lock lock(mutex_);
    echo_ = echo;
    for (auto& in : inputs) queue_.push_back(std::move(in));
    commandTurn_ = true;
    if (!thread_.joinable())
        thread_ = std::thread([this] { run(); });
    else
        turn_.notify_all();
    turn_.wait(lock, [this] { return !commandTurn_; });
}

void CommandLine::cancel() {
    if (!active_) return;
    std::unique_lock lock(mutex_);
    cancel_ = true;
    commandTurn_ = true;
    turn_.notify_all();
    turn_.wait(lock, [this] { return !commandTurn_; });
}

void CommandLine::handBack(std::unique_lock<std::mutex>& lock) {
    commandTurn_ = false;
    turn_.notify_all();
    turn_.wait(lock, [this] { return commandTurn_; });
}

Input CommandLine::take(bool atCommandPrompt) {
    std::unique_lock lock(mutex_);
    for (;;) {
        if (stop_) throw Stop{};
        if (cancel_) {
            cancel_ = false;
            if (!atCommandPrompt) throw CommandCancelled{};
        }
        if (!queue_.empty()) break;
        handBack(lock);
    }
    Input in = std::move(queue_.front());
    queue_.pop_front();
    return in;
}

void CommandLine::run() {
    try {
        for (;;) dispatch(take(true));
    } catch (const Stop&) {
    }
}

void CommandLine::dispatch(const Input& first) {
    if (first.kind == Input::Kind::Enter) return;  // Enter at the Command prompt: nothing
    Context context(*db_, *undo_, echo_, [this] { return take(false); });
    std::wstring typed;
    if (first.kind == Input::Kind::Pause) {
        Host::instance().freshLine();
        auto line = Host::instance().readInputLine(L"Command: ");
        if (!line || line->empty() || *line == L"*Cancel*") return;
        typed = *line;
    } else if (first.kind == Input::Kind::Text) {
        typed = first.text;
        context.say(L"Command: " + typed);
    } else {
        context.report(L"Command: a command name is expected, not a point, number or object.");
        std::lock_guard lock(mutex_);
        queue_.clear();
        return;
    }
    const CommandEntry* entry = findCommand(typed);
    if (!entry) {
        context.report(L"Unknown command \"" + bareCommandName(typed) + L"\".  Press F1 for help.");
        std::lock_guard lock(mutex_);
        queue_.clear();  // the rest of this call's answers belong to no command
        return;
    }
    bool undoable = !isUndoCommand(*entry);
    if (undoable) undo_->checkpoint(L"");
    active_ = true;
    try {
        entry->run(context);
    } catch (const CommandCancelled&) {
        context.report(L"*Cancel*");
    } catch (const CommandFailed&) {
        std::lock_guard lock(mutex_);
        queue_.clear();
    } catch (const std::exception& e) {
        context.report(L"; error in " + std::wstring(entry->name) + L": " + fromUtf8(e.what()));
        std::lock_guard lock(mutex_);
        queue_.clear();
    }
    active_ = false;
    if (undoable) undo_->checkpoint(entry->name, true);
}

namespace {

std::map<const AcDbDatabase*, std::unique_ptr<CommandLine>>& commandLines() {
    static std::map<const AcDbDatabase*, std::unique_ptr<CommandLine>> lines;
    return lines;
}

}  // namespace

CommandLine& commandLineFor(AcDbDatabase& db) {
    auto& line = commandLines()[&db];
    if (!line) line = std::make_unique<CommandLine>(db);
    return *line;
}

void forgetDrawing(const AcDbDatabase* db) {
    commandLines().erase(db);
}

}  // namespace kelvo::commands
