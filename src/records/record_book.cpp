// records/record_book.cpp — see record_book.h.
#include "records/record_book.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "reference/code_lists.h"

#include <map>

namespace orvan {
namespace {

constexpr std::array<const char*, static_cast<size_t>(BookField::Count)> kBookFields = {
    "Ogr_Numarasi",
    "Ogr_Kayit_No",
    "Ogr_Adi",
    "Ogr_Soyadi",
    "Ogr_Mernis",
    "Ogr_Sifre",
    "Ogr_MeslekKod",
    "Ogr_AnaMeslek_Kod",
    "DersID",
    "Ogr_Sinif",
    "Ogr_Kanun_Maddesi",
    "Ogr_calistigi_isyerinin_adi",
    "Ogr_Cinsiyeti",
    "Ogr_Nufus_Baba_Adi",
    "Ogr_Cep_Telefon",
    "Ogr_Kayit_Tarihi",
    "Ogr_calistigi_ise_giris_tarihi",
    "Ogr_calistigi_isden_ayrilis_tarihi",
    "Ogr_Ise_Giris_Tarihi",
    "Ogr_Isden_Ayrilis_Tarihi",
    "Ogr_Sigorta_Giris_Tarihi",
    "Ogr_SSK_SonOdeme_Tarihi",
    "SigortaYatirmamaTarihi",
    "Ogr_Dogum_Tarihi",
    "Ogr_Nufus_Dogum_Tarihi",
    "Ogr_Nufus_Verilis_Tarihi",
    "Ogr_veli_Dogum_Tarihi",
    "Ogr_Sinav_Tarihi",
    "Ogr_Belge_Tarihi",
    "Ogr_Gittigi_Belge_Tarihi",
};

constexpr BookField kDates[] = {
    BookField::RegistrationDate,  BookField::WorkStart,        BookField::WorkEnd,
    BookField::ContractStart,     BookField::ContractEnd,      BookField::InsuranceStart,
    BookField::InsuranceLastPaid, BookField::InsuranceStopped, BookField::BirthDate,
    BookField::RegistryBirthDate, BookField::IdentityCardDate, BookField::GuardianBirthDate,
    BookField::ExamDate,          BookField::CertificateDate,  BookField::LeavingDocumentDate,
};

std::set<QString> texts(const jet::ResultSet& rows, QString (*form)(const QString&)) {
    std::set<QString> all;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        all.insert(form(trimmedText(rows.at(i, 0))));
    return all;
}

QString asItIs(const QString& text) { return text; }

std::string studentQuery() {
    std::string fields;
    for (const char* field : kBookFields)
        fields += (fields.empty() ? "" : ", ") + std::string(field);
    return "SELECT " + fields + " FROM OgrenciBilgisi ORDER BY Ogr_Numarasi";
}

} // namespace

std::span<const BookField> dateFields() { return kDates; }

RecordBook RecordBook::read(DatabaseSet& databases, QDate today) {
    RecordBook book;
    book.today = today;
    jet::SqlSession& level = databases.level().sql();
    std::map<std::pair<QString, QString>, QString> names;
    for (const Profession& each : orvan::professions(level))
        names[{each.code, QString::number(each.version)}] = each.name;
    book.mainProfessions =
        texts(level.query("SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?",
                          Parameters{group::mainProfession}),
              asItIs);
    book.classes = texts(level.query("SELECT SinifAdi FROM Sinif"), upperTurkish);
    book.workplaces =
        texts(databases.workplaces().sql().query("SELECT K_Adi FROM isletme_Bilgisi"), upperTurkish);
    const jet::ResultSet rows = level.query(studentQuery());
    book.students.resize(rows.rowCount());
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        BookStudent& student = book.students[i];
        for (size_t field = 0; field < kBookFields.size(); ++field)
            student.texts_[field] = trimmedText(rows.at(i, field));
        const auto name = names.find({student[BookField::Profession], student[BookField::Curriculum]});
        if (name != names.end()) student.professionName = name->second;
    }
    return book;
}

QString bookLabel(const Schema& schema, BookField field) {
    const FieldDeclaration* declared =
        schema.table("OgrenciBilgisi").field(kBookFields[static_cast<size_t>(field)]);
    return declared ? fromUtf8(declared->label) : QString();
}

} // namespace orvan
