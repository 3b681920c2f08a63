// The command line of one drawing, driven by LISP's `command`.
//
// A command is written as straight-line code that asks for one input after another;
// `command` may end before the command does ((command "PLINE") then (command pt) ...),
// so each drawing's command line runs on a thread of its own and the two take turns:
//
//   LISP turn --feed(inputs)--> command-line turn: takes inputs, runs commands
//   command-line turn --needs input, none left--> LISP turn (feed returns)
//
// Exactly one of the two runs at any time (the turn is handed over under the mutex), so
// the drawing, the host and the interpreter are never touched by both. cancel() is Esc:
// the command in progress ends ("*Cancel*"). The destructor stops the thread without a
// word; commands hold no object open while they wait for input, so nothing is left
// open.
//
// Around each command (not UNDO and U) the drawing's undo log takes a checkpoint, so a
// command is one step of the history; changes LISP made between commands form their
// own step.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "runtime/commands/command_input.h"

namespace kelvo::commands {

class UndoLog;

class CommandLine {
public:
    explicit CommandLine(AcDbDatabase& db);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    AcDbDatabase& database() const { return *db_; }
    // Hands the inputs to the command line; returns when it waits for more.
    void feed(std::vector<Input> inputs, bool echo);
    // Esc: ends the command in progress, if any.
    void cancel();
    bool commandActive() const { return active_; }
    UndoLog& undoLog() { return *undo_; }

private:
    struct Stop {};  // the thread's end, not an error

    void run();
    void dispatch(const Input& first);
    Input take(bool atCommandPrompt);
    void handBack(std::unique_lock<std::mutex>& lock);

    AcDbDatabase* db_;
    std::unique_ptr<UndoLog> undo_;
    std::mutex mutex_;
    std::condition_variable turn_;
    bool commandTurn_ = false;
    bool stop_ = false;
    bool cancel_ = false;
    bool active_ = false;
    bool echo_ = true;
    std::deque<Input> queue_;
    std::thread thread_;
};

// The command line of the current drawing (made on first use); forgetDrawing ends the
// one of a drawing that closes.
CommandLine& commandLineFor(AcDbDatabase& db);
void forgetDrawing(const AcDbDatabase* db);

}  // namespace kelvo::commands
