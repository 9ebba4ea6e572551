// reference/ready_curricula.h — loads the ready-made courses of a profession from \Mdx\Kalfa.Mdx or
// \Mdx\Usta.Mdx into the open level database. All of it is written or nothing.
#pragma once

#include "core/database_set.h"
#include "reference/curricula.h"
#include "reference/professions.h"

#include <QStringList>
#include <set>

namespace orvan {

struct ReadyLoad {
    bool loaded = false;
    int rows = 0;           // added to the profession's curriculum
    int courses = 0;        // added to the pool
    int alreadyThere = 0;   // rows that the profession had before; they stay as they were
    QStringList otherNames; // courses whose code the pool has already under another name; the pool's stay
};

class ReadyCurricula {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it.
    // REQUIRES: databases are connected.
    ReadyCurricula(DatabaseSet& databases, Dialogs& dialogs, QString title);

    // Every track of the key's level, profession and version; the key's own track is not looked at. Asks
    // first; when the ready file has none for the profession, the person may pick a ready profession.
    ReadyLoad load(const CurriculumKey& key);

  private:
    struct Ready; // what the file holds for a version
    void tellFailure(const QString& reason);
    Ready read(const QString& file, int version) const;
    std::optional<QString> chosenProfession(const Ready& ready, const CurriculumKey& key,
                                            const QString& name);
    ReadyLoad copy(const Ready& ready, const QString& readyCode, const CurriculumKey& key);
    void addCourses(const Ready& ready, const std::set<QString>& used, int version, ReadyLoad& done);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
};

// "\Mdx\Kalfa.Mdx" or "\Mdx\Usta.Mdx". Equivalence courses come from the file of the session's level.
QString readyFile(const QString& curriculumLevel, const Session& session);

} // namespace orvan
