// core/database_set.cpp — Connect, in the order the system fixes: constants, workplaces, level, coordinators,
// handles.
#include "core/database_set.h"

#include "core/passwords.h"
#include "core/values.h"

#include <cassert>
#include <QDir>
#include <QFileInfo>

namespace orvan {
namespace {

constexpr auto kWorkplacesFile = "\\Data\\Isletme.mdb";
constexpr auto kCoordinatorsFile = "\\Data\\Koord.mdb";

struct SharedTable {
    DatabaseKind database;
    const char* name;
};

// In the order they are opened.
constexpr SharedTable kSharedTables[] = {
    {DatabaseKind::Level, "DersHavuzu"},
    {DatabaseKind::Level, "MeslekDersHavuzu"},
    {DatabaseKind::Workplaces, "isletme_Bilgisi"},
    {DatabaseKind::Coordinators, "KoordinatorBilgisi"},
    {DatabaseKind::Coordinators, "Koord_GorevGiris_Cizelgesi"},
    {DatabaseKind::Level, "OgrenciBilgisi"},
    {DatabaseKind::Level, "Ogrenci_Isyerleri"},
    {DatabaseKind::Level, "Notlar"},
    {DatabaseKind::Level, "Devam"},
    {DatabaseKind::Level, "Sigorta_Devamsizlik"},
    {DatabaseKind::Level, "Parametrik_giris"},
    {DatabaseKind::Constants, "SabitBilgiler"},
    {DatabaseKind::Constants, "AyKitleme"},
    {DatabaseKind::Constants, "ProgramHaklari"},
    {DatabaseKind::Constants, "Kullanici"},
    {DatabaseKind::Constants, "Meb_Il_Tablo"},
    {DatabaseKind::Constants, "Meb_Ilce_Tablo"},
};

std::unique_ptr<jet::Database> openDatabase(const QString& file, const QString& password) {
    jet::OpenOptions options;
    options.password = utf8(password);
    return jet::Database::open(filePath(file), options);
}

void copyWhenMissing(const ProgramFolder& folder, const QString& literal, const QString& original) {
    if (!folder.exists(literal)) folder.copy(original, literal);
}

// A literal begins with one backslash; anything else is a whole path.
QString wholePath(const ProgramFolder& folder, const QString& path) {
    const bool literal = path.startsWith(QLatin1Char('\\')) && !path.startsWith(QLatin1String("\\\\"));
    return literal ? folder.resolve(path) : path;
}

} // namespace

Connection::Connection(const QString& file, const QString& password)
    : file_(file), database_(openDatabase(file, password)), sql_(*database_) {}

DatabaseSet::DatabaseSet(const ProgramFolder& folder, Session& session, const Schema& schema)
    : folder_(folder), session_(session), schema_(schema) {}

DatabaseSet::~DatabaseSet() { close(); }

void DatabaseSet::close() {
    opened_.tables.clear();
    opened_ = {};
}

// SELECT * FROM SabitBilgiler: the school's name, and its current year when none has been selected yet.
void DatabaseSet::readSchool(Connection& constants) {
    const auto rows = constants.sql().query("SELECT * FROM SabitBilgiler;");
    if (rows.empty()) return;
    session_.schoolName = trimmedText(rows.at(0, "SB_OKUL_ADI"));
    if (session_.schoolYear.isEmpty()) session_.schoolYear = trimmedText(rows.at(0, "SB_Ders_Yili"));
}

// A template carries ready-made rows to load from; a new file begins without them. Where that fails they
// stay, which spoils nothing: a file that cannot be opened is told of by those who need it.
void DatabaseSet::copyLevelFile(const QString& literal, const QString& original) {
    if (folder_.exists(literal)) return;
    folder_.copy(original, literal);
    try {
        const auto database = openDatabase(folder_.resolve(literal), session_.databasePassword);
        jet::SqlSession sql(*database);
        jet::WriteBatch batch(*database);
        for (const TableDeclaration& table : schema_.tables())
            if (table.database == DatabaseKind::Level && database->hasTable(table.name))
                for (const std::string& statement : table.emptying)
                    sql.execute(statement);
        batch.commit();
    } catch (const jet::Error&) {
    }
}

QString DatabaseSet::prepareLevelFile(const QString& path) {
    paths_.build(session_.mode, session_.schoolYear);
    const QString chosen = paths_.of(LevelPaths::choose(session_.level, session_.equivalence));
    for (const LevelTemplate& entry : workingSetTemplates())
        copyLevelFile(QLatin1String(entry.file), QLatin1String(entry.original));
    copyWhenMissing(folder_, chosen, QStringLiteral("\\Mdx\\Ogrenci.MDX"));
    return path.isEmpty() ? folder_.resolve(chosen) : wholePath(folder_, path);
}

void DatabaseSet::openTables(Opened& opened) {
    for (const SharedTable& shared : kSharedTables) {
        Connection& connection = opened.of(shared.database);
        opened.tables[jet::foldName(shared.name)] =
            std::make_unique<jet::Table>(connection.database().openTable(shared.name));
    }
}

void DatabaseSet::connect(const QString& path) {
    const QString& password = session_.databasePassword;
    Opened opened;
    folder_.ensureFolder(QStringLiteral("\\Data"));
    opened.constants = openConstants(folder_, session_);
    if (!opened.constants->database().hasTable("SMSLog"))
        createTable(opened.constants->database(), schema_.table("SMSLog"));
    copyWhenMissing(folder_, QLatin1String(kWorkplacesFile), QStringLiteral("\\mdx\\Isletme.mdx"));
    opened.workplaces =
        std::make_unique<Connection>(folder_.resolve(QLatin1String(kWorkplacesFile)), password);
    readSchool(*opened.constants);
    opened.levelFile = prepareLevelFile(path);
    opened.level = std::make_unique<Connection>(opened.levelFile, password);
    copyWhenMissing(folder_, QLatin1String(kCoordinatorsFile), QStringLiteral("\\mdx\\koordinator.mdx"));
    opened.coordinators =
        std::make_unique<Connection>(folder_.resolve(QLatin1String(kCoordinatorsFile)), password);
    openTables(opened);
    close();
    opened_ = std::move(opened);
}

Connection& DatabaseSet::Opened::of(DatabaseKind kind) {
    switch (kind) {
    case DatabaseKind::Level: return *level;
    case DatabaseKind::Constants: return *constants;
    case DatabaseKind::Workplaces: return *workplaces;
    case DatabaseKind::Coordinators: return *coordinators;
    case DatabaseKind::Exams: break; // never kept open
    }
    assert(false);
    return *level;
}

jet::Table& DatabaseSet::table(const QString& name) {
    const auto found = opened_.tables.find(jet::foldName(utf8(name)));
    if (found != opened_.tables.end()) return *found->second;
    jet::Error error(jet::Err::NoSuchTable, "Tablo açık değil.");
    throw error.inTable(utf8(name));
}

bool DatabaseSet::isNormalLevelFile() const {
    LevelPaths working;
    working.build(DataSetMode::Working, session_.schoolYear);
    const QString normal = working.of(LevelPaths::choose(session_.level, session_.equivalence));
    return QFileInfo(opened_.levelFile) == QFileInfo(folder_.resolve(normal));
}

std::unique_ptr<Connection> openConstants(const ProgramFolder& folder, const Session& session) {
    folder.ensureFolder(QStringLiteral("\\Data"));
    copyWhenMissing(folder, QLatin1String(kConstantsFile), QStringLiteral("\\mdx\\Sabit.mdx"));
    return std::make_unique<Connection>(folder.resolve(QLatin1String(kConstantsFile)),
                                        session.databasePassword);
}

std::unique_ptr<Connection> openFile(const QString& file, Dialogs& dialogs) {
    if (!QFileInfo::exists(file)) {
        dialogs.message(
            file + QStringLiteral(" Bulunamadı\nDosya Silinmiş İse Dosyayı İlgili Dizine Kopyalayın"),
            QStringLiteral("Dosya Bulunamadı"), Icon::Critical);
        return nullptr;
    }
    return std::make_unique<Connection>(file, legacyPassword());
}

} // namespace orvan
