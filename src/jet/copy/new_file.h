// jet/copy/new_file.h — a database file that is being made under a name of its own beside the one it shall
// have: `OUT.tmp`. It gets its real name whole and synced, or it and all that belongs to it goes.
#pragma once

#include "jet/copy/database_writer.h"
#include "jet/table/open_database.h"

namespace jet {

class NewFile {
  public:
    // Makes the first pages. Errors: see DatabaseWriter.
    NewFile(const std::filesystem::path& out, const NewDatabase& what, const WriterOptions& options);
    ~NewFile(); // without publish(): nothing is left behind
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    OpenDatabase& db() { return *db_; } // inside a write all the time

    // To be called now and then: brings what was written to the disk when it would no longer fit into memory.
    void relieve();
    // A nameless file beside it, see EntrySorter.
    std::unique_ptr<IoFile> temporaryFile();

    void publish(); // only the destructor may be called after it

  private:
    void removeLeftOver();
    std::filesystem::path sibling(const char* ending) const;

    std::shared_ptr<Io> io_;
    std::filesystem::path out_, path_;
    bool replace_;
    std::function<void()> beforeName_;
    size_t pagesInMemory_; // appended before they are brought to the disk
    PageNo relievedAt_ = 0;
    std::unique_ptr<OpenDatabase> db_;
    bool published_ = false, ours_ = false;
};

} // namespace jet
