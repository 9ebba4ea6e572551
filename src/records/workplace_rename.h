// records/workplace_rename.h — carries a workplace's new name and address into the students' records and
// their histories, in the files of both levels that know it, together: either both files take all changes or,
// short of a disk that fails in between, neither. Asks nothing.
//   Each file has a write of its own. All statements run first, then the files are committed one after the
//   other: a fault before the first commit leaves everything as it was. When a later commit fails the ones
//   before it stand; files() tells which. Run again it finishes: who has the new name already is not touched.
#pragma once

#include "core/database_set.h"

namespace orvan {

struct WorkplaceIdentity {
    QString name, address1, address2;
    bool operator==(const WorkplaceIdentity&) const = default;
};

// What became of one level's file.
struct CarriedFile {
    QString name; // "KALFA.MDB"
    size_t students = 0, histories = 0;
    bool committed = false;
};

class WorkplaceRename {
  public:
    // Opens \Data\KALFA.MDB and \Data\USTA.MDB; the one that is the open level database is used as it is.
    // Throws jet::Error. `databases` must outlive it.
    WorkplaceRename(DatabaseSet& databases, QString oldName);

    // Records that bear the old name (compared trimmed), both files and both tables together.
    size_t users();
    // Throws jet::Error; files() holds what stands.
    void write(const WorkplaceIdentity& now);

    const std::vector<CarriedFile>& files() const { return files_; }

  private:
    void change(size_t place, const WorkplaceIdentity& now);

    std::vector<std::unique_ptr<Connection>> own_;
    std::vector<Connection*> levels_; // in the order of files_
    std::vector<CarriedFile> files_;
    QString oldName_;
};

} // namespace orvan
