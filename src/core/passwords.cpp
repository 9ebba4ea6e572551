// core/passwords.cpp — routines that take passwords off database files, and the sweeps over the three
// folders.
#include "core/passwords.h"

#include "core/values.h"

namespace orvan {
namespace {

constexpr const char* kLegacyPassword = "PKRTWZAHLMNOVB";
constexpr const char* kLongPassword = "QZRTM08157320946";

// Opens with `current` and changes it to `wanted`; false, and nothing changed, when that does not work.
bool change(const QString& file, const char* current, const char* wanted) {
    try {
        jet::OpenOptions options;
        options.password = current;
        const auto database = jet::Database::open(filePath(file), options);
        database->changePassword(current, wanted);
        return true;
    } catch (const jet::Error&) {
        return false;
    }
}

QStringList everyDatabaseFile(const ProgramFolder& folder) {
    return folder.files(QStringLiteral("\\Data"), QStringLiteral("mdb")) +
           folder.files(QStringLiteral("\\Mdx"), QStringLiteral("mdx")) +
           folder.files(QString(), QStringLiteral("mdb"));
}

} // namespace

QString legacyPassword() { return QLatin1String(kLegacyPassword); }

bool isProtected(const QString& file) {
    try {
        jet::OpenOptions options;
        options.readOnly = true;
        jet::Database::open(filePath(file), options);
    } catch (const jet::Error& error) {
        return error.number() == jet::Err::InvalidPassword;
    }
    return false;
}

bool removePassword(const QString& file) { return change(file, kLegacyPassword, ""); }

bool setPassword(const QString& file) { return change(file, "", kLegacyPassword); }

bool clearAnyPassword(const QString& file) {
    if (!isProtected(file)) return false;
    return change(file, kLegacyPassword, "") || change(file, kLongPassword, "");
}

void sweepPasswords(const ProgramFolder& folder, Session& session, SweepPolicy policy) {
    session.databasePassword.clear();
    if (policy == SweepPolicy::Protect && isProtected(folder.resolve(QStringLiteral("\\Mdx\\Sabit.Mdx"))))
        session.databasePassword = legacyPassword();
    const bool wantsNone = session.databasePassword.isEmpty();
    for (const QString& file : everyDatabaseFile(folder)) {
        const bool hasOne = isProtected(file);
        if (hasOne && wantsNone) removePassword(file);
        if (!hasOne && !wantsNone) setPassword(file);
    }
}

void clearAllPasswords(const ProgramFolder& folder, Session& session) {
    session.databasePassword.clear();
    for (const QString& file : everyDatabaseFile(folder))
        clearAnyPassword(file);
}

} // namespace orvan
