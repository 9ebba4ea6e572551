// reference/class_assignment.cpp — see class_assignment.h.
#include "reference/class_assignment.h"

#include "core/users.h"
#include "core/values.h"

#include <algorithm>

namespace orvan {
namespace {

const QString kWarning = QStringLiteral("Uyarı");

} // namespace

ClassAssignment::ClassAssignment(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

bool ClassAssignment::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

QStringList ClassAssignment::column(const char* sql, std::span<const jet::Value> parameters) {
    const auto rows = databases_.level().sql().query(sql, parameters);
    QStringList texts;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        texts << trimmedText(rows.at(i, size_t{0}));
    texts.removeDuplicates();
    return texts;
}

std::vector<Profession> ClassAssignment::professions() {
    const auto rows = databases_.level().sql().query(
        "SELECT DISTINCT PG.ID, PG.Ta_Tanim_Kod, PG.Ta_tanim_aciklama, PG.YururlulukTarihi "
        "FROM Parametrik_giris PG, OgrenciBilgisi OB WHERE PG.Ta_Tanim_Grup = 'Bölüm' "
        "AND PG.Ta_Tanim_Kod = OB.Ogr_MeslekKod AND PG.ID = OB.DersID "
        "ORDER BY PG.ID, PG.Ta_tanim_aciklama;");
    std::vector<Profession> professions;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        professions.push_back({trimmedText(rows.at(i, 1)), static_cast<int>(rows.at(i, size_t{0}).toInt()),
                               trimmedText(rows.at(i, 2))});
    return professions;
}

QStringList ClassAssignment::stages() {
    return column(
        "SELECT DISTINCT Ogr_Seviye FROM OgrenciBilgisi WHERE Ogr_Seviye <> '' ORDER BY Ogr_Seviye;");
}

QStringList ClassAssignment::classes(const QString& profession, int version) {
    return column(
        "SELECT DISTINCT Trim(Ogr_Sinif & '') FROM OgrenciBilgisi WHERE Trim(Ogr_MeslekKod) = ? AND "
        "DersID = ? ORDER BY 1",
        Parameters{profession, version});
}

QStringList ClassAssignment::targets() { return column("SELECT SinifAdi FROM Sinif ORDER BY SinifAdi;"); }

std::optional<std::vector<ClassStudent>> ClassAssignment::students(const ClassSelection& selection) {
    const auto refuse = [this](const QString& words) {
        dialogs_.message(words, kWarning, Icon::Warning);
        return std::nullopt;
    };
    if (selection.profession.isEmpty()) return refuse(QStringLiteral("Meslek Seçimi Yapılmamış."));
    if (selection.stages.isEmpty()) return refuse(QStringLiteral("Dönem Seçimi Yapılmamış."));
    jet::Database& level = databases_.level().database();
    jet::Table table = level.openTable("OgrenciBilgisi");
    const auto place = [&](const char* field) { return table.def().findField(field).value(); };
    const size_t number = place("Ogr_Numarasi"), name = place("Ogr_Adi"), surname = place("Ogr_Soyadi"),
                 stage = place("Ogr_Seviye"), className = place("Ogr_Sinif"), code = place("Ogr_MeslekKod"),
                 version = place("DersID");
    std::vector<ClassStudent> found;
    const jet::ReadScope scope(level.pages());
    for (jet::Scan scan = table.scan(); scan.next();) {
        if (trimmedText(scan.value(code)) != selection.profession) continue;
        if (toText(scan.value(version)).toInt() != selection.version) continue;
        ClassStudent student{scan.id(),
                             trimmedText(scan.value(number)),
                             trimmedText(scan.value(name)),
                             trimmedText(scan.value(surname)),
                             trimmedText(scan.value(stage)),
                             trimmedText(scan.value(className))};
        if (!selection.stages.contains(student.stage)) continue;
        if (!selection.classes.isEmpty() && !selection.classes.contains(student.className)) continue;
        found.push_back(std::move(student));
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const ClassStudent& a, const ClassStudent& b) { return a.number < b.number; });
    return found;
}

// All of them, marked or not, are asked about twice.
bool ClassAssignment::confirms(const QString& target, size_t chosen, size_t listed, Marks marks) {
    const QString what = marks == Marks::Heed && chosen < listed
                             ? QStringLiteral(" Sınıf İşaretli Öğrencilere Aktarılacak.")
                             : QStringLiteral(" Sınıf Öğrencilere Aktarılacak.");
    if (!dialogs_.confirms(target + what + QStringLiteral("\nİşleme Devam mı?"), kWarning)) return false;
    if (marks == Marks::Heed) return true;
    return dialogs_.confirms(QStringLiteral("İşaretli Olsun veya Olmasın %1 Adet Öğrencinin Sınıfı "
                                            "Değiştirilecek!\nİşleme Devam Etmek İstiyor musunuz?")
                                 .arg(listed),
                             kWarning);
}

std::optional<AssignmentResult> ClassAssignment::assign(const QString& target,
                                                        const std::vector<ClassStudent>& listed,
                                                        const std::vector<size_t>& marked, Marks marks) {
    const auto tell = [this](const char* words) {
        dialogs_.message(QString::fromUtf8(words), QStringLiteral("Açıklama"));
    };
    if (!mayWrite()) return std::nullopt;
    if (target.isEmpty()) {
        dialogs_.message(QStringLiteral("Aktarılacak Sınıf Seçimi Yapılmamış."), kWarning, Icon::Warning);
        return std::nullopt;
    }
    std::vector<ClassStudent> chosen;
    if (marks == Marks::Ignore) chosen = listed;
    if (marks == Marks::Heed)
        for (const size_t place : marked)
            chosen.push_back(listed.at(place));
    AssignmentResult result;
    if (!chosen.empty()) {
        if (!confirms(target, chosen.size(), listed.size(), marks)) {
            tell("Kayıt İşlemi Yapılmadı.");
            return std::nullopt;
        }
        result = write(target, chosen);
    }
    tell(result.changed > 0 ? "Kayıt İşlemi Tamamlandı." : "Sınıf Bilgisi Değişen Öğrenci Yok!");
    return result;
}

// A student whom another station has put elsewhere since he was listed keeps that class.
AssignmentResult ClassAssignment::write(const QString& target, const std::vector<ClassStudent>& chosen) {
    AssignmentResult result;
    jet::Database& level = databases_.level().database();
    jet::WriteBatch batch(level);
    const bool defined = targets().contains(target);
    jet::Table table = level.openTable("OgrenciBilgisi");
    for (const ClassStudent& student : chosen) {
        bool same = defined;
        try {
            if (same) table.goTo(student.row);
            same = same && trimmedText(table.value("Ogr_Numarasi")) == student.number &&
                   trimmedText(table.value("Ogr_Sinif")) == student.className;
        } catch (const jet::Error& error) {
            if (error.number() != jet::Err::NoCurrentRecord) throw;
            same = false;
        }
        if (!same) {
            result.skipped << QStringLiteral("%1 %2 (%3)").arg(student.name, student.surname, student.number);
            continue;
        }
        if (student.className == target) continue;
        table.edit();
        table.set("Ogr_Sinif", textValue(target));
        table.update();
        ++result.changed;
    }
    batch.commit();
    return result;
}

} // namespace orvan
