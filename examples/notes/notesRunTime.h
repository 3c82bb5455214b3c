#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/kit/mounts.h"
#include "kiv/kit/tree.h"
#include "kiv/runTimeRegistration.h"

/// A list of notes, shown under one gateway.
struct Notes : Kiv_v4::kit::Mount
{
    std::vector<std::string> names;
};

class NotesTree;

/// Lists of notes as a run-time: text files with a note a line, mounted under items of others.
class NotesRunTime
{
public:
    explicit NotesRunTime(const std::string& name = "notes");
    NotesRunTime(const NotesRunTime&) = delete;
    NotesRunTime& operator=(const NotesRunTime&) = delete;
    ~NotesRunTime();

    [[nodiscard]] Kiv_v4::Rtid id() const noexcept { return _registration.id(); }

    [[nodiscard]] Kiv_v4::kit::Mounts<Notes>& mounts() const noexcept { return *_mounts; }

private:
    const Kiv_v4::RunTimeRegistration _registration;
    const std::shared_ptr<Kiv_v4::kit::Mounts<Notes>> _mounts;
};
