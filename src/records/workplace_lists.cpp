// records/workplace_lists.cpp — the lists of the workplace form: students of each supervisor, districts,
// chambers, fields of production, banks. See workplaces.h.
#include "records/workplaces.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "reference/field_texts.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr auto kBanks = "Bankalar";
const QString kBankName = QStringLiteral("BankaAdi");
const QString kBankBranch = QStringLiteral("sube");

} // namespace

std::array<SupervisorCount, kSupervisors>
Workplaces::counts(const QString& workplace, const std::array<QString, kSupervisors>& supervisors) {
    std::array<SupervisorCount, kSupervisors> counted;
    if (workplace.trimmed().isEmpty()) return counted;
    const auto found = databases_.level().sql().query(
        "SELECT Ogr_Usta_Ogreticisi, sum(iif(Ogr_Cinsiyeti='E',1,0)) AS Esay, "
        "sum(iif(Ogr_Cinsiyeti='K',1,0)) AS Ksay FROM OgrenciBilgisi "
        "WHERE Trim(Ogr_calistigi_isyerinin_adi) = ? GROUP BY Ogr_Usta_Ogreticisi",
        Parameters{workplace.trimmed()});
    for (size_t row = 0; row < found.rowCount(); ++row)
        for (size_t i = 0; i < kSupervisors; ++i) {
            const QString name = supervisors[i].trimmed();
            if (name.isEmpty() || !sameTurkish(trimmedText(found.at(row, size_t{0})), name)) continue;
            counted[i].boys += static_cast<int>(found.at(row, 1).toInt());
            counted[i].girls += static_cast<int>(found.at(row, 2).toInt());
        }
    return counted;
}

int Workplaces::studentCount(const QString& workplace) {
    const auto found = databases_.level().sql().query(
        "SELECT COUNT(*) FROM OgrenciBilgisi WHERE Trim(Ogr_calistigi_isyerinin_adi) = ?",
        Parameters{workplace.trimmed()});
    return static_cast<int>(found.at(0, size_t{0}).toInt());
}

std::vector<District> Workplaces::districts() {
    const auto found = databases_.level().sql().query(
        "SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? "
        "ORDER BY Ta_tanim_aciklama",
        Parameters{group::district});
    std::vector<District> districts;
    for (size_t i = 0; i < found.rowCount(); ++i)
        districts.push_back({trimmedText(found.at(i, size_t{0})), trimmedText(found.at(i, 1))});
    return districts;
}

QStringList Workplaces::chambers() {
    return descriptions(databases_.level().sql(), QString::fromUtf8(group::chamber));
}

QStringList Workplaces::productionFields(const QString& chamber) {
    const auto found = databases_.workplaces().sql().query(
        "SELECT DISTINCT K_uretim_alani FROM isletme_Bilgisi WHERE K_MeslekOdasi = ? "
        "AND Trim(K_uretim_alani) <> '' ORDER BY K_uretim_alani",
        Parameters{chamber});
    QStringList fields;
    for (size_t i = 0; i < found.rowCount(); ++i)
        fields << trimmedText(found.at(i, size_t{0}));
    return fields;
}

std::vector<Bank> Workplaces::banks() {
    const auto found =
        databases_.workplaces().sql().query("SELECT BankaAdi, sube FROM Bankalar ORDER BY BankaAdi");
    std::vector<Bank> banks;
    for (size_t i = 0; i < found.rowCount(); ++i) {
        Bank bank{trimmedText(found.at(i, size_t{0})), trimmedText(found.at(i, 1))};
        const bool known = !banks.empty() && sameTurkish(banks.back().name, bank.name);
        if (!bank.name.isEmpty() && !known) banks.push_back(std::move(bank));
    }
    return banks;
}

int Workplaces::bankWidth(const QString& field) const {
    return databases_.schema().width(kBanks, utf8(field));
}

SaveOutcome Workplaces::addBank(const Bank& typed) {
    const Bank bank{typed.name.trimmed(), typed.branch.trimmed()};
    if (!mayWrite()) return {};
    if (bank.name.isEmpty())
        return SaveOutcome::refused(kBankName, QStringLiteral("Banka adı boş olamaz; adını yazınız."));
    const TableDeclaration& table = databases_.schema().table(kBanks);
    for (const auto& [name, text] : FieldTexts{{kBankName, bank.name}, {kBankBranch, bank.branch}})
        if (const QString problem = fieldProblem(*table.field(utf8(name)), text); !problem.isEmpty())
            return SaveOutcome::refused(name, problem);
    jet::Database& database = databases_.workplaces().database();
    jet::WriteBatch batch(database);
    for (const Bank& other : banks())
        if (sameTurkish(other.name, bank.name))
            return SaveOutcome::refused(kBankName,
                                        QStringLiteral("“%1” bankası listede var.").arg(other.shown()));
    StoredRows(database, table, {kBankName, kBankBranch})
        .add({{kBankName, bank.name}, {kBankBranch, bank.branch}});
    batch.commit();
    return SaveOutcome::done();
}

} // namespace orvan
