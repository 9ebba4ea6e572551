// tests/peer/peer.h — compares what we read from a file with what other programs (mdbtools) read from it.
#pragma once

#include "jet/database.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace peer {

// A table's rows as canonical cells (type-aware: "1.50" and "1.5" of a double are one cell), each row one
// string, sorted.
struct Rows {
    std::vector<std::string> header; // sorted
    std::vector<std::string> rows;
};

// mdb-export cannot tell an empty text from none, and ends a binary field (not a long one) at its first zero
// byte: where it is one side of a comparison, both sides are shown that way.
enum class Detail { Exact, AsMdbTools };

bool haveMdbTools();

// stdout of a shell command; `status` receives the exit status.
std::string runCommand(const std::string& command, int& status);
std::string shellQuoted(const std::string& text); // for the shell
std::string shellQuoted(const std::filesystem::path& path);
std::filesystem::path program(const std::string& name); // of this build

// By `mdb-export`, and by `jetdb dump`; the definition tells the types.
Rows exportedByMdbTools(const std::filesystem::path& file, const jet::TableDef& def);
Rows dumpedByJetdb(const std::filesystem::path& file, const jet::TableDef& def, Detail detail,
                   const std::string& password = {});
Rows fromModel(const std::map<jet::RowId, std::vector<jet::Value>>& model, const jet::TableDef& def,
               Detail detail);

// Empty when equal, else the first differing rows.
std::string difference(const Rows& ours, const Rows& theirs);

// What `jetdb check` finds, a line a fault.
std::set<std::string> faultsOf(const std::filesystem::path& file, const std::string& password = {});

} // namespace peer
