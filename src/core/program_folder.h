// core/program_folder.h — the folder the program lives in, and the fixed literals ("\Data\KALFA.MDB") as real
// paths. Names are matched as Windows does, without regard to case, on every system.
#pragma once

#include <QString>
#include <QStringList>

namespace orvan {

class ProgramFolder {
  public:
    explicit ProgramFolder(const QString& path);

    const QString& path() const { return path_; } // with "/", without one at the end

    // The file or folder that the literal means. Where a component does not exist the literal's own spelling
    // is used from there on, so the result is also the right place to create it.
    QString resolve(const QString& literal) const;
    bool exists(const QString& literal) const;
    // Creates the folder and the missing ones above it; false when the disk refuses.
    bool createFolder(const QString& literal) const;
    void ensureFolder(const QString& literal) const; // the same; throws jet::Error(PathNotValid)
    // Whether this user may make files in it: the disk is asked, not the permissions, which do not tell
    // everything.
    bool mayWrite(const QString& literal) const;
    // Whole paths of the files in `folderLiteral` with that extension ("Mdb"), without regard to case, by
    // name.
    QStringList files(const QString& folderLiteral, const QString& extension) const;
    // Copies one file of the folder to another; throws jet::Error (FileNotFound, DiskIO) naming the file.
    void copy(const QString& fromLiteral, const QString& toLiteral) const;

  private:
    QString path_;
};

} // namespace orvan
