// core/user_administration.cpp — users and their rights, with the system's own questions in their order.
#include "core/user_administration.h"

#include "core/ini_file.h"
#include "core/row_writer.h"
#include "core/turkish_text.h"
#include "core/values.h"

#include <QHash>

namespace orvan {
namespace {

constexpr auto kUsers = "Kullanici";
constexpr auto kPassword = "KullaniciSifre";
const QString kWarning = QStringLiteral("Uyarı");

const char* markText(bool granted) { return granted ? "1" : "0"; }

// A main title is open, and may be written, when something below it is.
void settleMainTitles(UserRights& marks) {
    Rights* main = nullptr;
    size_t next = 0;
    for (const TitleNode& node : rightsTree()) {
        if (node.kind == TitleKind::Heading) {
            main = nullptr;
            continue;
        }
        Rights& own = marks[next++];
        if (node.kind == TitleKind::Main) {
            main = &own;
            own = {};
        } else if (main) {
            main->enter |= own.enter;
            main->write |= own.write;
        }
    }
}

void deleteRights(jet::Database& constants, const QString& user) {
    jet::SqlSession(constants).execute("Delete * from programhaklari where kullaniciadi = ?",
                                       Parameters{user});
}

} // namespace

QString UserAdministration::title() { return QStringLiteral("Yeni Kullanıcı / Kullanıcı Hakları"); }

QStringList UserAdministration::users() {
    QStringList names;
    const auto rows = databases_.constants().sql().query("Select Kullanici_Adi From Kullanici");
    for (size_t i = 0; i < rows.rowCount(); ++i)
        names << trimmedText(rows.at(i, size_t{0}));
    sortTurkish(names);
    return names;
}

UserRights UserAdministration::rights(const QString& user) {
    const auto rows = databases_.constants().sql().query(
        "Select ProgramAdi, GirisHakki, YazmaHakki From ProgramHaklari Where KullaniciAdi = ?",
        Parameters{user});
    const auto granted = [&](size_t row, size_t column) {
        return trimmedText(rows.at(row, column)) == QLatin1String("1");
    };
    QHash<QString, Rights> stored;
    for (size_t i = rows.rowCount(); i-- > 0;) // of double rows the first counts, as in the rights check
        stored[trimmedText(rows.at(i, size_t{0}))] = {granted(i, 1), granted(i, 2)};
    UserRights marks;
    for (const QString& name : programTitles())
        marks.push_back(stored.value(name));
    return marks;
}

bool UserAdministration::mayChange() {
    return rightsOf(databases_.constants().sql(), databases_.session().user, title()).write;
}

bool UserAdministration::requireChange() {
    return mayWrite(databases_.constants().sql(), databases_.session().user, title(), dialogs_);
}

void UserAdministration::warn(const QString& text) { dialogs_.message(text, kWarning, Icon::Warning); }

// What was typed stays in the line until it can be stored.
std::optional<QString> UserAdministration::askName() {
    QString typed;
    for (;;) {
        const auto answer = dialogs_.inputText(QStringLiteral("Yeni Kullanıcı Adı:"), title(), typed);
        if (!answer) return std::nullopt;
        typed = *answer;
        const QString fault = userNameFault(trimBlanks(typed));
        if (fault.isEmpty()) return trimBlanks(typed);
        warn(fault);
    }
}

// Without blanks at the ends; empty when nothing was typed.
std::optional<QString> UserAdministration::askPassword(const QString& label) {
    for (;;) {
        const auto answer = dialogs_.inputText(label, title(), {}, InputKind::Password);
        if (!answer) return std::nullopt;
        const QString password = trimBlanks(*answer);
        const QString fault = passwordFault(password);
        if (fault.isEmpty() || password.isEmpty()) return password;
        warn(fault);
    }
}

std::optional<QString> UserAdministration::newUser() {
    if (!requireChange()) return std::nullopt;
    const auto name = askName();
    if (!name) return std::nullopt;
    const QString exists = QStringLiteral("Bu isimde bir kullanıcı mevcut !");
    if (userExists(constants(), *name)) {
        warn(exists);
        return std::nullopt;
    }
    const auto password = askPassword(QStringLiteral("Şifre:"));
    if (!password) return std::nullopt;
    if (password->isEmpty()) {
        warn(passwordFault(*password));
        return std::nullopt;
    }
    const auto repeated = askPassword(QStringLiteral("Şifre (tekrar):"));
    if (!repeated) return std::nullopt;
    if (*repeated != *password) {
        warn(QStringLiteral("İki Şifre Aynı Değil !\nŞifre Değişiklik İşlemi İptal Edildi."));
        return std::nullopt;
    }
    try {
        jet::WriteBatch batch(constants());
        createUser(constants(), *name, *password);
        deleteRights(constants(), *name); // what a user of the same name has left behind is not inherited
        batch.commit();
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::DuplicateKey) throw;
        warn(exists); // made on another station meanwhile
        return std::nullopt;
    }
    dialogs_.message(
        QStringLiteral("Yeni Kullanıcı Açıldı.\nŞimdi bu kullanıcının haklarını verebilirsiniz."), title());
    return name;
}

bool UserAdministration::changePassword(const QString& user) {
    if (!requireChange()) return false;
    const auto password = askPassword(QStringLiteral("'%1' için yeni şifre:").arg(user));
    if (!password) return false;
    std::optional<QString> repeated;
    if (!password->isEmpty()) {
        repeated = askPassword(QStringLiteral("Yeni şifre (tekrar):"));
        if (!repeated) return false;
    }
    if (repeated != password) {
        warn(QStringLiteral("Geçersiz Şifre Değişimi. Şifre Değiştirme İşlemi İptal Edildi. "));
        return false;
    }
    try {
        jet::Table users = constants().openTable(kUsers);
        if (findUser(users, user)) {
            users.edit();
            users.set(kPassword, textValue(*password));
            users.update();
            dialogs_.message(QStringLiteral("Şifre Değişikliği Başarıyla Tamamlandı!"), title());
            return true;
        }
    } catch (const jet::Error&) { // locked, read only, changed meanwhile: one text for all
    }
    warn(QStringLiteral("Şifre Değişikliği Gerçekleştirilemedi!"));
    return false;
}

bool UserAdministration::removeUser(const QString& user) {
    if (!requireChange()) return false;
    if (!dialogs_.confirms(
            QStringLiteral("'%1' isimli kullanıcıyı silmek istediğinizde eminmisiniz ?").arg(user),
            QStringLiteral("Dikkat")))
        return false;
    const bool isOneself = sameTurkish(user, databases_.session().user);
    QString refusal;
    {
        jet::WriteBatch batch(constants()); // nobody else deletes between counting and deleting
        jet::Table users = constants().openTable(kUsers);
        if (users.rowCount() <= 1) {
            refusal = QStringLiteral("Sadece bir kullanıcı var. Silinemez.");
        } else if (isOneself) {
            refusal = QStringLiteral("Oturumu açık olan kullanıcı kendisini silemez.");
        } else {
            if (findUser(users, user)) users.remove();
            deleteRights(constants(), user);
        }
        batch.commit();
    }
    if (!refusal.isEmpty()) warn(refusal);
    return refusal.isEmpty();
}

// Some user, this one or another, can still give rights after these marks are stored.
bool UserAdministration::keepsAnAdministrator(const QString& user, const UserRights& marks) {
    const Rights& own = marks[static_cast<size_t>(programTitles().indexOf(title()))];
    if (own.enter && own.write) return true;
    const auto rows = databases_.constants().sql().query(
        "SELECT Kullanici.Kullanici_Adi FROM Kullanici INNER JOIN ProgramHaklari ON "
        "ProgramHaklari.KullaniciAdi = Kullanici.Kullanici_Adi WHERE ProgramHaklari.ProgramAdi = ? AND "
        "ProgramHaklari.GirisHakki = '1' AND ProgramHaklari.YazmaHakki = '1'",
        Parameters{title()});
    for (size_t i = 0; i < rows.rowCount(); ++i)
        if (!sameTurkish(trimmedText(rows.at(i, size_t{0})), user)) return true;
    return false;
}

bool UserAdministration::saveRights(const QString& user, const UserRights& loaded, UserRights marks,
                                    Ask ask) {
    if (!requireChange()) return false;
    if (ask == Ask::Yes &&
        !dialogs_.confirms(QStringLiteral("Yaptığınız değişiklikler kayıt edilsin mi ?"), title()))
        return false;
    if (rights(user) != loaded &&
        !dialogs_.confirms(QStringLiteral("'%1' kullanıcısının hakları siz bakarken başka bir bilgisayarda "
                                          "değiştirilmiş.\nSizin işaretleriniz yine de kayıt edilsin mi?")
                               .arg(user),
                           kWarning))
        return false;
    settleMainTitles(marks);
    QString refusal;
    {
        jet::WriteBatch batch(constants());
        if (!userExists(constants(), user)) {
            refusal = QStringLiteral("'%1' kullanıcısı bu arada silinmiş. Hakları kayıt edilmedi.").arg(user);
        } else if (!keepsAnAdministrator(user, marks)) {
            refusal = QStringLiteral("'%1' bölümüne giriş ve değiştirme hakkı olan en az bir kullanıcı "
                                     "kalmalıdır. Haklar kayıt edilmedi.")
                          .arg(title());
        } else {
            storeRights(constants(), user, marks);
        }
        batch.commit();
    }
    if (!refusal.isEmpty()) {
        warn(refusal);
        return false;
    }
    writeOneValueFile(databases_.folder().resolve(QStringLiteral("\\orvyet.ini")), QStringLiteral("1"));
    return true;
}

void storeRights(jet::Database& constants, const QString& user, const UserRights& marks) {
    const QStringList titles = programTitles();
    jet::WriteBatch batch(constants);
    deleteRights(constants, user);
    jet::Table table = constants.openTable("ProgramHaklari");
    RowWriter writer(table, {"KullaniciAdi", "ProgramAdi", "GirisHakki", "YazmaHakki"});
    for (qsizetype i = 0; i < titles.size(); ++i) {
        const Rights& mark = marks[static_cast<size_t>(i)];
        writer.add({textValue(user), textValue(titles[i]), jet::Value(markText(mark.enter)),
                    jet::Value(markText(mark.write))});
    }
    batch.commit();
}

} // namespace orvan
