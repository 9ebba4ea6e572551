// reference/school_constants.cpp — see school_constants.h. What may stand in a field: constants_checks.cpp.
#include "reference/school_constants.h"

#include "core/users.h"
#include "core/values.h"
#include "reference/constants_checks.h"

namespace orvan {
namespace {

QStringList allFields(const TableDeclaration& table) {
    QStringList names;
    for (const FieldDeclaration& field : table.fields)
        names << fromUtf8(field.name);
    return names;
}

StoredRows rowsOf(Connection& constants, const Schema& schema) {
    const TableDeclaration& table = schema.table(kConstantsTable);
    return {constants.database(), table, allFields(table)};
}

SchoolConstants constantsFrom(const std::vector<StoredRow>& rows) {
    SchoolConstants constants;
    if (rows.empty()) return constants;
    constants.exists = true;
    constants.values = rows.front().values;
    return constants;
}

void tellSession(Session& session, const SchoolConstants& constants) {
    if (!constants.exists) return;
    session.schoolName = constants.text("SB_Okul_Adi");
    if (session.schoolYear.isEmpty()) session.schoolYear = constants.text("SB_Ders_Yili");
}

std::vector<Place> placesFrom(const jet::ResultSet& rows) {
    std::vector<Place> places;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        places.push_back({trimmedText(rows.at(i, size_t{0})), trimmedText(rows.at(i, 1))});
    return places;
}

} // namespace

QString SchoolConstants::text(const char* field) const {
    const auto found = values.find(QString::fromLatin1(field));
    return found == values.end() ? QString() : found->second;
}

int SchoolConstants::number(const char* field, int otherwise) const {
    bool isNumber = false;
    const int value = text(field).toInt(&isNumber);
    return isNumber ? value : otherwise;
}

double SchoolConstants::decimal(const char* field, double otherwise) const {
    bool isNumber = false;
    const double value = text(field).toDouble(&isNumber);
    return isNumber ? value : otherwise;
}

bool SchoolConstants::yes(const char* field) const { return text(field) == QLatin1String("1"); }

SchoolConstants readConstants(Connection& constants, const Schema& schema) {
    return constantsFrom(rowsOf(constants, schema).all());
}

SchoolConstants readConstants(DatabaseSet& databases) {
    SchoolConstants constants = readConstants(databases.constants(), databases.schema());
    tellSession(databases.session(), constants);
    return constants;
}

ConstantsRecord::ConstantsRecord(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

StoredRows ConstantsRecord::stored() const { return rowsOf(databases_.constants(), databases_.schema()); }

const SchoolConstants& ConstantsRecord::load() {
    auto rows = stored().all();
    loaded_ = constantsFrom(rows);
    row_.reset();
    if (!rows.empty()) row_ = std::move(rows.front());
    return loaded_;
}

bool ConstantsRecord::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

int ConstantsRecord::width(const QString& field) const {
    return databases_.schema().width(kConstantsTable, utf8(field));
}

// Only what is changed is looked at: an old value that would not be taken today stops nobody.
SaveOutcome ConstantsRecord::check(const FieldTexts& wanted) {
    const FieldTexts changed = changedTexts(loaded_.values, wanted);
    const TableDeclaration& table = databases_.schema().table(kConstantsTable);
    return checkConstants(table, loaded_.values, changed);
}

// A row that is not there yet has no value that could be overwritten: empty texts are not written.
RowChange ConstantsRecord::store(FieldTexts wanted) {
    StoredRows rows = stored();
    if (!row_) {
        std::erase_if(wanted, [](const auto& entry) { return entry.second.isEmpty(); });
        jet::WriteBatch batch(databases_.constants().database());
        const auto present = rows.all();
        if (present.empty()) {
            row_ = rows.add(wanted);
            batch.commit();
            return RowChange::Saved;
        }
        row_ = StoredRow{present.front().id, {}}; // another station was first
        for (const auto& [name, text] : present.front().values)
            row_->values[name] = QString();
    }
    const RowChange change = rows.change(*row_, wanted, Clash::SameField, dialogs_);
    if (change != RowChange::Gone) return change;
    row_.reset();
    return store(std::move(wanted));
}

SaveOutcome ConstantsRecord::save(FieldTexts wanted) {
    for (auto& [name, text] : wanted)
        text = text.trimmed();
    if (!mayWrite()) return {};
    if (const SaveOutcome checked = check(wanted); !checked.saved) return checked;
    const RowChange change = store(std::move(wanted));
    loaded_.exists = true;
    loaded_.values = row_->values;
    tellSession(databases_.session(), loaded_);
    return {change == RowChange::Saved};
}

std::vector<Place> provinces(jet::SqlSession& constants) {
    return placesFrom(constants.query("SELECT Il_Kodu, Il_Adi FROM Meb_Il_Tablo ORDER BY Il_Adi"));
}

std::vector<Place> districtsOf(jet::SqlSession& constants, const QString& provinceCode) {
    return placesFrom(constants.query(
        "SELECT Ilce_Kodu, Ilce_Adi FROM Meb_Ilce_Tablo WHERE Il_Kodu = ? ORDER BY Ilce_Adi, Ilce_Kodu",
        Parameters{provinceCode}));
}

} // namespace orvan
