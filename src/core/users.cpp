// core/users.cpp — sign-in and the making of users.
#include "core/users.h"

#include "core/ini_file.h"
#include "core/turkish_text.h"
#include "core/user_tables.h"
#include "core/values.h"
#include "jet/index/sort_key.h"

namespace orvan {
namespace {

constexpr auto kTable = "Kullanici";
constexpr auto kIndex = "indKullanici";
constexpr auto kName = "Kullanici_Adi";
constexpr auto kPassword = "KullaniciSifre";

SignInResult refused(const char* text) { return {SignIn::Refused, {}, QString::fromUtf8(text)}; }

QString lengthFault(const QString& what, const QString& text, const char* field) {
    const int width = Schema(userTables()).width(kTable, field);
    if (text.size() <= width) return {};
    return QStringLiteral("%1 en çok %2 karakter olabilir; yazdığınız %3 karakter.")
        .arg(what)
        .arg(width)
        .arg(text.size());
}

// While an installation has no user: the typed one becomes its first, when the person wants it.
SignInResult offerFirstUser(jet::Database& constants, Dialogs& dialogs, const QString& name,
                            const QString& password, const SignInResult& otherwise) {
    if (constants.openTable(kTable).rowCount() > 0) return otherwise;
    for (const QString& fault : {userNameFault(name), passwordFault(password)})
        if (!fault.isEmpty()) return {SignIn::Refused, {}, fault};
    const QString question =
        QStringLiteral("Henüz hiç kullanıcı tanımlanmamış.\n'%1' tüm haklara sahip ilk kullanıcı "
                       "olarak açılsın mı?")
            .arg(name);
    if (!dialogs.confirms(question, QStringLiteral("Açıklama"))) return otherwise;
    createUser(constants, name, password);
    grantAll(constants, name, {true, true});
    return checkSignIn(constants, name, password);
}

} // namespace

// By the index; a name stored with blanks round it is found by walking.
bool findUser(jet::Table& users, const QString& name) {
    if (users.def().findIndex(kIndex)) {
        users.setIndex(kIndex);
        const jet::Value key = textValue(name);
        if (users.seek(jet::SeekOp::Equal, {&key, 1})) return true;
    }
    users.setIndex("");
    for (bool more = users.moveFirst(); more; more = users.moveNext())
        if (sameTurkish(trimmedText(users.value(kName)), name)) return true;
    return false;
}

SignInResult checkSignIn(jet::Database& constants, const QString& name, const QString& password) {
    const QString typedName = trimBlanks(name);
    const QString typedPassword = trimBlanks(password);
    if (typedName.isEmpty()) return refused("Lütfen Kullanıcı Adını Giriniz !");
    if (typedPassword.isEmpty()) return refused("Lütfen Kullanıcı Şifresini Giriniz !");
    jet::Table users = constants.openTable(kTable);
    if (!findUser(users, typedName)) return refused("Geçersiz Kullanıcı Adı, Tekrar Deneyiniz.");
    if (trimmedText(users.value(kPassword)) != typedPassword)
        return refused("Geçersiz Şifre, Tekrar Deneyiniz.");
    return {SignIn::Accepted, trimmedText(users.value(kName)), {}};
}

SignIn signIn(const ProgramFolder& folder, Session& session, Dialogs& dialogs, const QString& name,
              const QString& password) {
    if (readOneValueFile(folder.resolve(QStringLiteral("\\orvyet.ini"))) == QLatin1String("0"))
        return SignIn::SwitchedOff;
    const auto constants = openConstants(folder, session);
    SignInResult result = checkSignIn(constants->database(), name, password);
    const QString typedName = trimBlanks(name), typedPassword = trimBlanks(password);
    if (result.outcome == SignIn::Refused && !typedName.isEmpty() && !typedPassword.isEmpty())
        result = offerFirstUser(constants->database(), dialogs, typedName, typedPassword, result);
    if (result.outcome == SignIn::Accepted)
        session.user = result.user;
    else
        dialogs.message(result.message, QStringLiteral("Uyarı"), Icon::Warning);
    return result.outcome;
}

bool awaitsFirstUser(const ProgramFolder& folder, const Session& session) {
    try {
        if (!folder.exists(QLatin1String(kConstantsFile))) return true;
        return openConstants(folder, session)->database().openTable(kTable).rowCount() == 0;
    } catch (const jet::Error&) {
        return false; // the sign-in will say what is wrong with the file
    }
}

QString userNameFault(const QString& name) {
    if (name.isEmpty()) return QStringLiteral("Lütfen Kullanıcı Adını Giriniz !");
    const QString tooLong = lengthFault(QStringLiteral("Kullanıcı adı"), name, kName);
    if (!tooLong.isEmpty()) return tooLong;
    if (jet::canMakeTextKey(utf8(name), jet::kTurkishSort)) return {};
    return QStringLiteral("Kullanıcı adında kullanılamayan bir karakter var. Lütfen harf, rakam ve "
                          "noktalama işaretleriyle yazınız.");
}

QString passwordFault(const QString& password) {
    if (password.isEmpty()) return QStringLiteral("Lütfen Kullanıcı Şifresini Giriniz !");
    return lengthFault(QStringLiteral("Şifre"), password, kPassword);
}

bool userExists(jet::Database& constants, const QString& name) {
    jet::Table users = constants.openTable(kTable);
    return findUser(users, trimBlanks(name));
}

void createUser(jet::Database& constants, const QString& name, const QString& password) {
    jet::Table users = constants.openTable(kTable);
    users.addNew();
    users.set(kName, textValue(trimBlanks(name)));
    users.set(kPassword, textValue(trimBlanks(password)));
    users.update();
}

} // namespace orvan
