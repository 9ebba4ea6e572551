// records/workplace_rename.cpp — see workplace_rename.h.
#include "records/workplace_rename.h"

#include "core/values.h"

#include <QFileInfo>

namespace orvan {
namespace {

// Always in this order, so that two stations never wait for each other.
constexpr const char* kFiles[] = {"\\Data\\KALFA.MDB", "\\Data\\USTA.MDB"};

} // namespace

WorkplaceRename::WorkplaceRename(DatabaseSet& databases, QString oldName) : oldName_(oldName.trimmed()) {
    const QFileInfo open(databases.levelFile());
    for (const char* literal : kFiles) {
        const QFileInfo file(databases.folder().resolve(QString::fromLatin1(literal)));
        if (file == open) {
            levels_.push_back(&databases.level());
        } else {
            own_.push_back(
                std::make_unique<Connection>(file.filePath(), databases.session().databasePassword));
            levels_.push_back(own_.back().get());
        }
        files_.push_back({QString::fromLatin1(literal).section(QLatin1Char('\\'), -1)});
    }
}

size_t WorkplaceRename::users() {
    size_t found = 0;
    for (Connection* level : levels_)
        for (const char* sql :
             {"SELECT COUNT(*) FROM OgrenciBilgisi WHERE Trim(Ogr_calistigi_isyerinin_adi) = ?",
              "SELECT COUNT(*) FROM Ogrenci_Isyerleri WHERE Trim(Ogr_isyerinin_adi) = ?"})
            found +=
                static_cast<size_t>(level->sql().query(sql, Parameters{oldName_}).at(0, size_t{0}).toInt());
    return found;
}

void WorkplaceRename::change(size_t place, const WorkplaceIdentity& now) {
    jet::SqlSession& level = levels_[place]->sql();
    const Parameters values{now.address1, now.address2, now.name, oldName_};
    files_[place].histories =
        level.execute("UPDATE Ogrenci_Isyerleri SET Ogr_Isyeri_Adresi1 = ?, Ogr_Isyeri_Adresi2 = ?, "
                      "Ogr_isyerinin_adi = ? WHERE Trim(Ogr_isyerinin_adi) = ?",
                      values);
    files_[place].students = level.execute(
        "UPDATE OgrenciBilgisi SET Ogr_calistigi_isyeri_adresi1 = ?, Ogr_calistigi_isyeri_adresi2 = ?, "
        "Ogr_calistigi_isyerinin_adi = ? WHERE Trim(Ogr_calistigi_isyerinin_adi) = ?",
        values);
}

void WorkplaceRename::write(const WorkplaceIdentity& now) {
    std::vector<std::unique_ptr<jet::WriteScope>> scopes; // those not committed are undone
    for (Connection* level : levels_) {
        level->database().requireWritable();
        scopes.push_back(std::make_unique<jet::WriteScope>(level->database().pages()));
    }
    for (size_t i = 0; i < levels_.size(); ++i)
        change(i, now);
    for (size_t i = 0; i < levels_.size(); ++i) {
        scopes[i]->commit();
        files_[i].committed = true;
    }
}

} // namespace orvan
