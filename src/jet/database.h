// jet/database.h — one Jet database file: open, create, its tables and their structure, password.
// Not thread safe; open one Database per thread or process. SQL: jet/sql/session.h. Check: jet/check/check.h.
#pragma once

#include "jet/format/database_header.h"
#include "jet/format/table_def.h"
#include "jet/format/usage_map.h"
#include "jet/pages/page_file.h"
#include "jet/table/table.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace jet {

struct OpenOptions {
    std::string password{}; // UTF-8; ignored when the file has none (as the original engine does)
    bool readOnly = false;
    bool ignorePassword = false; // for check and repair only
    PageFileOptions pages{};
    std::shared_ptr<Io> io{}; // empty = systemIo()
};

struct CreateOptions {
    std::string password{};
    SortOrder sortOrder = kTurkishSort; // "locale": 0x041F Turkish or 0x0409 General
    uint16_t codePage = 1254;
    uint32_t encodingKey = 0; // every page but the first is encoded with it; 0 = in clear
    PageFileOptions pages{};
    std::shared_ptr<Io> io{};
};

enum class TableKinds { User, All }; // All: system tables too

class Database {
  public:
    // Errors: FileNotFound, NotADatabase, NewerFormat, InvalidPassword, CannotOpen, LockedByOther, Corrupt.
    // A file that cannot be written safely (Jet 3, read-only folder) opens read only; see readOnlyReason().
    static std::unique_ptr<Database> open(const std::filesystem::path& path, const OpenOptions& options = {});
    static std::unique_ptr<Database> create(const std::filesystem::path& path,
                                            const CreateOptions& options = {});
    ~Database();

    const std::filesystem::path& path() const;
    const DatabaseHeader& header() const;
    const Layout& layout() const;
    bool readOnly() const;
    const std::string& readOnlyReason() const; // Turkish sentence; empty when writable
    void requireWritable() const;              // Err::ReadOnly with that sentence

    // --- tables
    std::vector<std::string> tableNames(TableKinds kinds = TableKinds::User); // by name
    bool hasTable(std::string_view name);
    const TableDef& tableDef(std::string_view name); // Err::NoSuchTable; valid until the structure changes
    Table openTable(std::string_view name);

    // --- structure. Each is one statement: wholly there or not at all; works on tables with rows.
    // fields' name, type, size, required, allowZeroLength, autoNumber, defaultValue and indexes' name, fields
    // (by position), primary, unique, required, ignoreNulls are read; the rest is set by the engine.
    void createTable(const std::string& name, std::vector<FieldDef> fields,
                     std::vector<IndexDef> indexes = {});
    void dropTable(std::string_view name); // Err::InvalidArgument when a relation uses it
    void renameTable(std::string_view from, const std::string& to);
    void addField(std::string_view table, const FieldDef& field); // old rows read null (Boolean: false)
    // Err::InvalidArgument when an index or a relation uses it, or when it is the last one.
    void dropField(std::string_view table, std::string_view field);
    void renameField(std::string_view table, std::string_view from, const std::string& to);
    // Changes type, size, required, default of a field in place; rows are rewritten when the type or storage
    // changes (refused with Err::InvalidArgument when a relation uses the field). A value that cannot be
    // converted is Err::Conversion, one too long for the new width Err::FieldTooLong, and nothing changes.
    // `wanted.name` is not looked at.
    void alterField(std::string_view table, std::string_view field, const FieldDef& wanted);
    void setFieldOrder(std::string_view table,
                       const std::vector<std::string>& names); // first these, then the rest
    void createIndex(std::string_view table,
                     const IndexDef& index); // Err::DuplicateKey when rows stand against it
    void dropIndex(std::string_view table, std::string_view index);
    void renameIndex(std::string_view table, std::string_view from, const std::string& to);

    // --- password. Err::InvalidPassword when `current` is not it. Empty = none.
    void changePassword(std::string_view current, const std::string& wanted);

    // The parts below, for the SQL layer, the checker and tests.
    PageFile& pages();
    PageAllocator& allocator();

  private:
    Database();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// Many statements under one lock and one flush. An error of one statement undoes that statement only; what
// the batch wrote before it stays, also when the error leaves the scope of the batch. A crash undoes the
// whole batch.
class WriteBatch {
  public:
    explicit WriteBatch(Database& database);
    ~WriteBatch(); // commits what is there when commit() was not called; call commit() to learn of a failure
    void commit();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

  private:
    PageFile* file_;
    bool done_ = false;
};

} // namespace jet
