// reference/ready_curricula.cpp — see ready_curricula.h.
#include "reference/ready_curricula.h"

#include "core/row_writer.h"
#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/code_lists.h"

#include <algorithm>
#include <map>

namespace orvan {
namespace {

const QString kWarning = QStringLiteral("Uyarı");
constexpr auto kCourseTable = "DersHavuzu";
constexpr auto kMaster = "Usta";

using Record = std::map<std::string, jet::Value>; // by the declared field's name

QString textOf(const Record& record, const char* field) {
    const auto found = record.find(field);
    return found == record.end() ? QString() : trimmedText(found->second);
}

// The declared fields that the ready file has too.
std::vector<Record> recordsOf(const jet::ResultSet& rows, const TableDeclaration& table) {
    std::vector<std::pair<std::string, size_t>> columns;
    for (const FieldDeclaration& field : table.fields)
        for (size_t c = 0; c < rows.columns().size(); ++c)
            if (jet::foldName(rows.columns()[c].name) == jet::foldName(field.name))
                columns.emplace_back(field.name, c);
    std::vector<Record> records(rows.rowCount());
    for (size_t r = 0; r < rows.rowCount(); ++r)
        for (const auto& [name, column] : columns)
            records[r][name] = rows.at(r, column);
    return records;
}

void addRecord(jet::Table& table, const Record& record) {
    std::vector<std::string> fields;
    std::vector<jet::Value> values;
    for (const auto& [name, value] : record) {
        fields.push_back(name);
        values.push_back(value);
    }
    RowWriter(table, fields).add(values);
}

// Which row of a curriculum it is: track, year, term, course.
QString rowKey(const Record& record) {
    return upperTurkish(QStringLiteral("%1/%2/%3/%4")
                            .arg(textOf(record, "MeslekOgrenimDurumu"))
                            .arg(textOf(record, "MeslekOgrenimYili").toInt())
                            .arg(textOf(record, "Donem").toInt())
                            .arg(textOf(record, "MeslekDersKodu")));
}

} // namespace

struct ReadyCurricula::Ready {
    std::vector<Record> rows, courses;
    std::vector<Profession> professions; // that have rows; the name is the code when the file names none

    // The rows of one profession: those of the level, or where it has none those of the file's own level.
    std::vector<Record> of(const QString& code, const QString& level) const {
        std::vector<Record> same, others;
        for (const Record& row : rows)
            if (sameTurkish(textOf(row, "MeslekKodu"), code))
                (textOf(row, "MeslekOgrenciTuru") == level ? same : others).push_back(row);
        return same.empty() ? others : same;
    }
};

QString readyFile(const QString& curriculumLevel, const Session& session) {
    const bool master = curriculumLevel == QLatin1String(kMaster) ||
                        (curriculumLevel == QLatin1String("Denklik") && isMasterLevel(session.level));
    return master ? QStringLiteral("\\Mdx\\Usta.Mdx") : QStringLiteral("\\Mdx\\Kalfa.Mdx");
}

ReadyCurricula::ReadyCurricula(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

void ReadyCurricula::tellFailure(const QString& reason) {
    dialogs_.message(QStringLiteral("Dersler Kopyalanamadı!\n\n") + reason, kWarning, Icon::Critical);
}

ReadyLoad ReadyCurricula::load(const CurriculumKey& key) {
    if (key.profession.isEmpty()) {
        dialogs_.message(QStringLiteral("Hazır dersleri yüklemek için önce mesleği seçiniz."), kWarning,
                         Icon::Warning);
        return {};
    }
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_)) return {};
    const QString name = professionName(databases_.level().sql(), key.profession, key.version);
    if (!dialogs_.confirms(
            name + QStringLiteral(" Mesleğinin hazır dersleri yüklenecek.\nDevam Etmek İstiyor musunuz?"),
            kWarning))
        return {};
    const QString literal = readyFile(key.level, databases_.session());
    if (!databases_.folder().exists(literal)) {
        dialogs_.message(databases_.folder().resolve(literal) +
                             QStringLiteral(" Dosyası bulunamadı.\nİşlem devam edemiyor."),
                         QStringLiteral("Dosya Bulunamadı"), Icon::Critical);
        return {};
    }
    try {
        const Ready ready = read(databases_.folder().resolve(literal), key.version);
        const auto code = chosenProfession(ready, key, name);
        return code ? copy(ready, *code, key) : ReadyLoad();
    } catch (const jet::Error& error) {
        tellFailure(errorText(error));
        return {};
    }
}

// Reads the file once and closes it.
ReadyCurricula::Ready ReadyCurricula::read(const QString& file, int version) const {
    jet::OpenOptions options;
    options.password = utf8(databases_.session().databasePassword);
    options.readOnly = true;
    const auto database = jet::Database::open(filePath(file), options);
    jet::SqlSession sql(*database);
    const Parameters ofVersion{version};
    Ready ready;
    ready.rows = recordsOf(sql.query("SELECT * FROM MeslekDersHavuzu WHERE ID = ?", ofVersion),
                           databases_.schema().table(kCurriculumTable));
    ready.courses =
        recordsOf(sql.query("SELECT * FROM DersHavuzu WHERE ID = ? ORDER BY DersTuru, DersAdi", ofVersion),
                  databases_.schema().table(kCourseTable));
    std::map<QString, QString> names;
    if (database->hasTable("Parametrik_giris"))
        for (const Profession& profession : professions(sql, version))
            names[upperTurkish(profession.code)] = profession.name;
    std::set<QString> codes;
    for (const Record& row : ready.rows) {
        const QString code = textOf(row, "MeslekKodu");
        if (!codes.insert(upperTurkish(code)).second) continue;
        const auto name = names.find(upperTurkish(code));
        ready.professions.push_back({code, version, name == names.end() ? code : name->second});
    }
    std::stable_sort(ready.professions.begin(), ready.professions.end(),
                     [](const Profession& a, const Profession& b) { return lessTurkish(a.name, b.name); });
    return ready;
}

// The ready profession with the same code, as long as the file does not give the code another name; else the
// one with the same name; else the one that the person picks.
std::optional<QString> ReadyCurricula::chosenProfession(const Ready& ready, const CurriculumKey& key,
                                                        const QString& name) {
    qsizetype preset = 0, place = 0;
    QStringList words;
    const Profession* sameName = nullptr;
    for (const Profession& profession : ready.professions) {
        const bool unnamed = profession.name == profession.code;
        if (sameTurkish(profession.code, key.profession)) {
            if (unnamed || sameTurkish(profession.name, name)) return profession.code;
            preset = place;
        }
        if (!unnamed && sameTurkish(profession.name, name)) sameName = &profession;
        words << QStringLiteral("%1 - %2").arg(profession.code, profession.name);
        ++place;
    }
    if (sameName) return sameName->code;
    const QString none = QStringLiteral("Meslek Ders Havuzunda Seçtiğiniz Mesleğe ait Dersler bulunamadı!");
    if (words.isEmpty()) {
        dialogs_.message(none, kWarning, Icon::Warning);
        return std::nullopt;
    }
    const QString question =
        none + QStringLiteral(" Eğer ''") + name +
        QStringLiteral("'' adlı meslek manuel olarak tanımlanmış ise bu mesleği listeden "
                       "seçerek dersleri eklemek ister misiniz?");
    if (!dialogs_.confirms(question, kWarning)) return std::nullopt;
    const auto picked =
        dialogs_.choose(QStringLiteral("“%1” mesleğine dersleri eklenecek hazır meslek:").arg(name),
                        QStringLiteral("Hazır Meslekler"), words, preset);
    if (!picked) return std::nullopt;
    return ready.professions[static_cast<size_t>(*picked)].code;
}

ReadyLoad ReadyCurricula::copy(const Ready& ready, const QString& readyCode, const CurriculumKey& key) {
    jet::SqlSession& level = databases_.level().sql();
    jet::Database& database = databases_.level().database();
    jet::WriteScope scope(database.pages());
    ReadyLoad done;
    std::set<QString> present;
    int lastOrder = 0;
    const auto own = recordsOf(
        level.query(
            "SELECT * FROM MeslekDersHavuzu WHERE ID = ? AND MeslekKodu = ? AND MeslekOgrenciTuru = ?",
            Parameters{key.version, key.profession, key.level}),
        databases_.schema().table(kCurriculumTable));
    for (const Record& row : own) {
        present.insert(rowKey(row));
        lastOrder = std::max(lastOrder, textOf(row, "MeslekKayitSira").toInt());
    }
    jet::Table curriculum = database.openTable(kCurriculumTable);
    std::set<QString> used;
    for (Record row : ready.of(readyCode, key.level)) {
        used.insert(upperTurkish(textOf(row, "MeslekDersKodu")));
        if (!present.insert(rowKey(row)).second) {
            ++done.alreadyThere;
            continue;
        }
        row["MeslekKodu"] = textValue(key.profession);
        row["MeslekOgrenciTuru"] = textValue(key.level);
        row["MeslekKayitSira"] = jet::Value(lastOrder + textOf(row, "MeslekKayitSira").toInt());
        addRecord(curriculum, row);
        ++done.rows;
    }
    addCourses(ready, used, key.version, done);
    scope.commit();
    done.loaded = true;
    return done;
}

// The courses that the rows use and the pool does not have yet. REQUIRES: inside a write.
void ReadyCurricula::addCourses(const Ready& ready, const std::set<QString>& used, int version,
                                ReadyLoad& done) {
    std::map<QString, QString> pool; // names by code
    for (const Record& course : recordsOf(
             databases_.level().sql().query("SELECT * FROM DersHavuzu WHERE ID = ?", Parameters{version}),
             databases_.schema().table(kCourseTable)))
        pool[upperTurkish(textOf(course, "DersKodu"))] = textOf(course, "DersAdi");
    jet::Table table = databases_.level().database().openTable(kCourseTable);
    for (const Record& course : ready.courses) {
        const QString code = upperTurkish(textOf(course, "DersKodu")), name = textOf(course, "DersAdi");
        if (!used.contains(code)) continue;
        const auto own = pool.find(code);
        if (own == pool.end()) {
            addRecord(table, course);
            ++done.courses;
        } else if (!sameTurkish(own->second, name)) {
            done.otherNames << QStringLiteral("%1: havuzda “%2”, hazır derslerde “%3”")
                                   .arg(textOf(course, "DersKodu"), own->second, name);
        }
    }
}

} // namespace orvan
