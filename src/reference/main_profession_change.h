// reference/main_profession_change.h — gives students another main profession: which students there are, and
// one write for the chosen ones after the question with their number. Students are touched in this one field
// only.
#pragma once

#include "core/database_set.h"

#include <optional>
#include <QStringList>
#include <vector>

namespace orvan {

struct MainProfessionStudent {
    QString number; // Ogr_Numarasi
    QString name, surname;
    QString professionCode;
    QString mainCode; // as stored; empty: none
};

struct MainProfessionWrite {
    int changed = 0;
    QStringList left; // students who were not as they had been seen
};

class MainProfessionChange {
  public:
    // `title`: under which the right to write is stored. All must outlive it. REQUIRES: databases are
    // connected.
    MainProfessionChange(DatabaseSet& databases, Dialogs& dialogs, QString title);

    // Students of a curriculum version, by number; of one profession unless `professionCode` is empty.
    std::vector<MainProfessionStudent> students(int version, const QString& professionCode);
    // Asks with the count; then gives them the main profession, all or none. `seen`: the students as
    // students() gave them; one whose main profession is another by now is left alone and named. Returns how
    // many were changed; nothing when nothing was written.
    std::optional<int> change(const std::vector<MainProfessionStudent>& seen, int version,
                              const QString& mainCode);

  private:
    MainProfessionWrite write(const std::vector<MainProfessionStudent>& seen, int version,
                              const QString& mainCode);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
};

} // namespace orvan
