// tests/proof/repair/known_file.h — a file without damage, walked by the engine: every row with its values
// and every page it needs. What repair owes us after damage is told from this and from nothing in repair
// itself.
#pragma once

#include "jet/database.h"
#include "jet/pages/io_memory.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace proof_repair {

struct KnownRow {
    std::string text;               // values with their types
    std::vector<jet::PageNo> pages; // its own, of its moved body, of its long values
};

struct KnownTable {
    std::string name;
    std::vector<jet::PageNo> definition;
    std::vector<KnownRow> rows;
};

struct KnownFile {
    std::string name, password;
    std::vector<uint8_t> bytes;
    bool encoded = false;
    std::vector<KnownTable> tables;        // of users
    std::vector<jet::PageNo> catalogPages; // where names lie: the rows and the definition of MSysObjects

    size_t pageCount() const { return bytes.size() / 4096; }
};

KnownFile learnFile(const std::string& name, std::vector<uint8_t> bytes, const std::string& password);

std::string rowText(std::span<const jet::Value> values);

// Rows of every user table of a database, counted by their text.
using RowCounts = std::unordered_map<std::string, size_t>;
std::unordered_map<std::string, RowCounts> readAll(jet::Database& database);

std::unique_ptr<jet::Database> openInMemory(const std::shared_ptr<jet::MemoryIo>& io,
                                            const std::string& name);

// A file of our own: three tables with about `rows` rows, memos of every kind, moved rows, indexes.
std::vector<uint8_t> makeLargeFile(int rows);

} // namespace proof_repair
