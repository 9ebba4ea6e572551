// core/database_set.h — Connect: the four open databases of a session and the long-lived table handles.
// Owns the connections; every other part reaches its tables through it. Not thread safe.
#pragma once

#include "core/dialogs.h"
#include "core/level_paths.h"
#include "core/program_folder.h"
#include "core/schema.h"
#include "core/session.h"
#include "jet/sql/session.h"

#include <map>
#include <memory>

namespace orvan {

// One open database with its SQL session.
class Connection {
  public:
    Connection(const QString& file, const QString& password); // throws jet::Error
    const QString& file() const { return file_; }
    jet::Database& database() { return *database_; }
    jet::SqlSession& sql() { return sql_; }

  private:
    QString file_;
    std::unique_ptr<jet::Database> database_;
    jet::SqlSession sql_;
};

class DatabaseSet {
  public:
    // All must outlive the set.
    DatabaseSet(const ProgramFolder& folder, Session& session, const Schema& schema);
    ~DatabaseSet();

    // Copies missing files from their templates, chooses the level database by the session and re-opens
    // everything. `path` (whole path or a literal), when not empty, replaces the chosen level database.
    // Throws jet::Error; what was open before stays open then.
    void connect(const QString& path = {});
    void close();
    bool isOpen() const { return opened_.level != nullptr; }

    // REQUIRES: isOpen()
    Connection& level() { return *opened_.level; }
    Connection& constants() { return *opened_.constants; }
    Connection& workplaces() { return *opened_.workplaces; }
    Connection& coordinators() { return *opened_.coordinators; }
    // Shared handle, by name without regard to case; throws jet::Error(NoSuchTable).
    jet::Table& table(const QString& name);

    const QString& levelFile() const { return opened_.levelFile; } // whole path of the open level database
    bool isNormalLevelFile() const; // the open file is the working-set file of the session's level
    const ProgramFolder& folder() const { return folder_; }
    Session& session() { return session_; }
    const Schema& schema() const { return schema_; }

  private:
    struct Opened {
        QString levelFile;
        std::unique_ptr<Connection> level, constants, workplaces, coordinators;
        std::map<std::string, std::unique_ptr<jet::Table>>
            tables; // by folded name; die before the connections
        Connection& of(DatabaseKind kind);
    };
    void readSchool(Connection& constants);
    void copyLevelFile(const QString& literal, const QString& original);
    QString prepareLevelFile(const QString& path); // copies missing files; whole path of the file to open
    static void openTables(Opened& opened);
    const ProgramFolder& folder_;
    Session& session_;
    const Schema& schema_;
    LevelPaths paths_;
    Opened opened_;
};

inline constexpr auto kConstantsFile = "\\Data\\Sabit.mdb";
// Opens \Data\Sabit.mdb alone (copied from its template when missing): for the login, which comes before
// Connect.
std::unique_ptr<Connection> openConstants(const ProgramFolder& folder, const Session& session);
// Opens any database file for a screen. A missing one shows the file-not-found message and gives nullptr.
std::unique_ptr<Connection> openFile(const QString& file, Dialogs& dialogs);

} // namespace orvan
