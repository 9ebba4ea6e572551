// reference/main_profession_change.cpp — see main_profession_change.h.
#include "reference/main_profession_change.h"

#include "core/users.h"
#include "core/values.h"
#include "reference/professions.h"

#include <map>
#include <QStringList>

namespace orvan {
namespace {

const QString kWarning = QStringLiteral("Uyarı");
constexpr int kNamedStudents = 10; // in a message

QString named(const MainProfessionStudent& student) {
    return QStringLiteral("%1 %2 %3").arg(student.number, student.name, student.surname);
}

// The first few of many, and how many more there are.
QString someOf(const QStringList& lines) {
    QString text = lines.mid(0, kNamedStudents).join(QLatin1Char('\n'));
    if (lines.size() > kNamedStudents)
        text += QStringLiteral("\n… ve %1 öğrenci daha").arg(lines.size() - kNamedStudents);
    return text;
}

} // namespace

MainProfessionChange::MainProfessionChange(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

std::vector<MainProfessionStudent> MainProfessionChange::students(int version,
                                                                  const QString& professionCode) {
    std::string sql = "SELECT Ogr_Numarasi, Ogr_Adi, Ogr_Soyadi, Ogr_MeslekKod, Ogr_AnaMeslek_Kod "
                      "FROM OgrenciBilgisi WHERE DersID = ?";
    std::vector<jet::Value> parameters{jet::Value(version)};
    if (!professionCode.isEmpty()) {
        sql += " AND Ogr_MeslekKod = ?";
        parameters.push_back(textValue(professionCode));
    }
    const auto rows = databases_.level().sql().query(sql + " ORDER BY Ogr_Numarasi", parameters);
    std::vector<MainProfessionStudent> found;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        found.push_back({trimmedText(rows.at(i, size_t{0})), trimmedText(rows.at(i, 1)),
                         trimmedText(rows.at(i, 2)), trimmedText(rows.at(i, 3)), trimmedText(rows.at(i, 4))});
    return found;
}

std::optional<int> MainProfessionChange::change(const std::vector<MainProfessionStudent>& seen, int version,
                                                const QString& mainCode) {
    const auto refuse = [this](const QString& words) {
        dialogs_.message(words, kWarning, Icon::Warning);
        return std::optional<int>();
    };
    if (mainCode.isEmpty()) return refuse(QStringLiteral("Yeni ana mesleği listeden seçiniz."));
    if (seen.empty()) return refuse(QStringLiteral("Ana mesleği değişecek öğrencileri işaretleyiniz."));
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_))
        return std::nullopt;
    const QString name = mainProfessionName(databases_.level().sql(), mainCode, version);
    QStringList lines;
    for (const MainProfessionStudent& student : seen)
        lines << named(student);
    if (!dialogs_.confirms(
            QStringLiteral("%1 öğrencinin ana mesleği “%2 - %3” olarak değiştirilecek:\n\n%4\n\n"
                           "Devam etmek istiyor musunuz?")
                .arg(seen.size())
                .arg(mainCode, name, someOf(lines)),
            kWarning))
        return std::nullopt;

    const MainProfessionWrite done = write(seen, version, mainCode);
    if (!done.left.isEmpty())
        dialogs_.message(QStringLiteral("%1 öğrenci değiştirilmedi; kaydı bu arada başka bir bilgisayarda "
                                        "değişti veya silindi:\n\n%2")
                             .arg(done.left.size())
                             .arg(someOf(done.left)),
                         QStringLiteral("Açıklama"));
    return done.changed;
}

// One walk over the students under the lock.
MainProfessionWrite MainProfessionChange::write(const std::vector<MainProfessionStudent>& seen, int version,
                                                const QString& mainCode) {
    std::map<QString, const MainProfessionStudent*> wanted; // a number is unique within a version
    for (const MainProfessionStudent& student : seen)
        wanted[student.number] = &student;
    MainProfessionWrite done;
    jet::Database& database = databases_.level().database();
    jet::WriteScope scope(database.pages());
    jet::Table table = database.openTable("OgrenciBilgisi");
    const auto place = [&](const char* field) { return table.def().findField(field).value(); };
    const size_t number = place("Ogr_Numarasi"), main = place("Ogr_AnaMeslek_Kod"), id = place("DersID");
    std::vector<jet::Value> values(table.def().fields.size());
    const auto given = std::make_unique<bool[]>(values.size());
    values[main] = textValue(mainCode);
    given[main] = true;
    for (jet::Scan scan = table.scan(); scan.next();) {
        if (toText(scan.value(id)).toInt() != version) continue;
        const auto student = wanted.find(trimmedText(scan.value(number)));
        if (student == wanted.end() || trimmedText(scan.value(main)) != student->second->mainCode) continue;
        wanted.erase(student);
        table.update(scan.id(), values, {given.get(), values.size()});
        ++done.changed;
    }
    scope.commit();
    for (const auto& [studentNo, student] : wanted)
        done.left << named(*student);
    return done;
}

} // namespace orvan
