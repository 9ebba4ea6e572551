// records/record_checks.cpp — the table of checks: one looks at each student by himself, the other kind at
// texts that two students may not share.
#include "records/record_checks.h"

#include "core/turkish_text.h"
#include "records/identity_number.h"
#include "records/record_book.h"

#include <map>

namespace orvan {
namespace {

using enum BookField;
using Student = BookStudent;

struct Context {
    const RecordBook& book;
    const Schema& schema;
};

// --- one student: the sentence about what is wrong, or the empty text

QString numberShape(const Student& s, const Context&) {
    const QString& number = s[Number];
    if (number.isEmpty()) return QStringLiteral("Kütük No boş.");
    if (number.size() < 5) return QStringLiteral("Kütük No beş karakterden kısa: %1").arg(number);
    const QString code = s[Profession].rightJustified(4, QLatin1Char('0')).left(4);
    if (!s[Profession].isEmpty() && !number.startsWith(code))
        return QStringLiteral("Kütük No %1, meslek koduyla (%2) başlamıyor.").arg(number, code);
    for (const QChar digit : number.mid(4))
        if (digit < QLatin1Char('0') || digit > QLatin1Char('9'))
            return QStringLiteral("Kütük No sırasında harf var: %1").arg(number);
    return {};
}

QString registrationNo(const Student& s, const Context&) {
    return s[RegistrationNo].toInt() > 0 ? QString() : QStringLiteral("Kayıt No yok.");
}

QString names(const Student& s, const Context&) {
    if (!s.has(Name)) return QStringLiteral("Adı boş.");
    return s.has(Surname) ? QString() : QStringLiteral("Soyadı boş.");
}

QString identityMissing(const Student& s, const Context&) {
    return s.has(IdentityNo) ? QString() : QStringLiteral("T.C. kimlik numarası boş.");
}
QString identityWrong(const Student& s, const Context&) {
    if (!s.has(IdentityNo) || isIdentityNumber(s[IdentityNo])) return {};
    if (s[IdentityNo].size() != kIdentityNumberLength)
        return QStringLiteral("%1: 11 rakam olmalı.").arg(s[IdentityNo]);
    return QStringLiteral("%1 geçerli bir T.C. kimlik numarası değil.").arg(s[IdentityNo]);
}

QString passwordLength(const Student& s, const Context&) {
    return !s.has(Password) || s[Password].size() == 4
               ? QString()
               : QStringLiteral("Öğrenci şifresi dört karakter değil: %1").arg(s[Password]);
}

QString sexMissing(const Student& s, const Context&) {
    return s.has(Sex) ? QString() : QStringLiteral("Cinsiyeti boş.");
}

QString wrongDates(const Student& s, const Context& context) {
    QStringList wrong;
    for (const BookField field : dateFields()) {
        if (!s.has(field)) continue;
        const auto day = s.date(field);
        if (!day)
            wrong
                << QStringLiteral("%1 bir tarih değil (%2)").arg(s[field], bookLabel(context.schema, field));
        else if (day->year() < 1900 || day->year() > context.book.today.year() + 20)
            wrong << QStringLiteral("%1 yılı olamaz (%2)").arg(s[field], bookLabel(context.schema, field));
    }
    return wrong.join(QStringLiteral("; "));
}

QString birthDate(const Student& s, const Context& context) {
    const auto birth = s.date(BirthDate), registry = s.date(RegistryBirthDate);
    const auto day = birth ? birth : registry;
    if (!s.has(BirthDate) && !s.has(RegistryBirthDate)) return QStringLiteral("Doğum tarihi boş.");
    if (birth && registry && *birth != *registry)
        return QStringLiteral("Doğum tarihi %1, nüfusta %2.").arg(dateText(*birth), dateText(*registry));
    if (!day) return {}; // no date at all: the check of dates says so
    if (*day > context.book.today) return QStringLiteral("Doğum tarihi ileride: %1").arg(dateText(*day));
    const auto registered = s.date(RegistrationDate);
    if (registered && *registered <= *day)
        return QStringLiteral("Kayıt tarihi (%1) doğum tarihinden (%2) önce.")
            .arg(dateText(*registered), dateText(*day));
    return {};
}

QString startWithoutWorkplace(const Student& s, const Context&) {
    return s.has(WorkStart) && !s.has(Workplace)
               ? QStringLiteral("İşe giriş tarihi (%1) var, işyeri yok.").arg(s[WorkStart])
               : QString();
}
QString workplaceWithoutStart(const Student& s, const Context&) {
    if (!s.has(Workplace) || s.has(WorkStart)) return {};
    return QStringLiteral("İşyeri (%1) var, işe giriş tarihi yok.").arg(s[Workplace]);
}
QString articleSixteen(const Student& s, const Context&) {
    if (!s[LawArticle].contains(QStringLiteral("16.")) || !s.has(Workplace) || s.date(WorkStart)) return {};
    return QStringLiteral("16. madde ile kayıtlı, geçerli bir işe giriş tarihi yok.");
}
QString endWithoutStart(const Student& s, const Context&) {
    return s.has(WorkEnd) && !s.has(WorkStart)
               ? QStringLiteral("İşten çıkış tarihi (%1) var, işe giriş tarihi yok.").arg(s[WorkEnd])
               : QString();
}
QString endBeforeStart(const Student& s, const Context&) {
    const std::pair<BookField, BookField> spans[] = {{WorkStart, WorkEnd}, {ContractStart, ContractEnd}};
    for (const auto& [from, to] : spans)
        if (s.date(from) && s.date(to) && *s.date(to) < *s.date(from))
            return QStringLiteral("Çıkış tarihi (%1) giriş tarihinden (%2) önce.").arg(s[to], s[from]);
    return {};
}
QString paidWithoutEnd(const Student& s, const Context&) {
    return s.has(InsuranceLastPaid) && !s.has(WorkEnd)
               ? QStringLiteral("SSK en son ödeme tarihi (%1) var, işten çıkış tarihi yok.")
                     .arg(s[InsuranceLastPaid])
               : QString();
}

QString professionUnknown(const Student& s, const Context&) {
    if (!s.has(Profession)) return QStringLiteral("Mesleği boş.");
    if (!s.professionName.isEmpty()) return {};
    return QStringLiteral("%1 kodlu meslek (%2. program) tanımlı değil.").arg(s[Profession], s[Curriculum]);
}
QString mainProfessionUnknown(const Student& s, const Context& context) {
    if (!s.has(MainProfession) || context.book.mainProfessions.contains(s[MainProfession])) return {};
    return QStringLiteral("%1 kodlu ana meslek tanımlı değil.").arg(s[MainProfession]);
}
QString classUnknown(const Student& s, const Context& context) {
    if (!s.has(ClassName)) return QStringLiteral("Sınıfı boş.");
    if (context.book.classes.contains(upperTurkish(s[ClassName]))) return {};
    return QStringLiteral("“%1” sınıfı tanımlı değil.").arg(s[ClassName]);
}
QString workplaceUnknown(const Student& s, const Context& context) {
    if (!s.has(Workplace) || context.book.workplaces.contains(upperTurkish(s[Workplace]))) return {};
    return QStringLiteral("“%1” işletmeler arasında yok.").arg(s[Workplace]);
}

QString mobilePhone(const Student& s, const Context&) {
    if (!s.has(MobilePhone)) return {};
    QString digits;
    for (const QChar c : s[MobilePhone])
        if (c.isDigit()) digits += c;
    if (digits.startsWith(QLatin1String("90"))) digits.remove(0, 2);
    if (digits.startsWith(QLatin1Char('0'))) digits.remove(0, 1);
    if (digits.size() == 10 && digits.startsWith(QLatin1Char('5'))) return {};
    return QStringLiteral("Cep telefonu hatalı: %1").arg(s[MobilePhone]);
}

// --- what two may not share; the empty text is not compared

QString sameNumber(const Student& s) { return s[Number]; }
QString sameRegistration(const Student& s) {
    return s[RegistrationNo].toInt() > 0 ? s[RegistrationNo] : QString();
}
QString sameIdentity(const Student& s) { return s[IdentityNo]; }
QString samePassword(const Student& s) { return s[Password]; }
QString samePerson(const Student& s) {
    if (!s.has(Name) || !s.has(Surname)) return {};
    const auto birth = s.date(s.has(BirthDate) ? BirthDate : RegistryBirthDate);
    return QStringList{s[Name], s[Surname], s[FatherName], birth ? dateText(*birth) : QString()}.join(
        QLatin1Char(' '));
}

struct Check {
    const char* key;
    const char* title;
    QString (*alone)(const Student& student, const Context& context);
    QString (*shared)(const Student& student); // used when `alone` is nullptr
};
constexpr Check kChecks[] = {
    {"numara", "Kütük numarası eksik veya hatalı", numberShape, nullptr},
    {"ayniNumara", "Aynı kütük numarası", nullptr, sameNumber},
    {"kayitNo", "Kayıt numarası yok", registrationNo, nullptr},
    {"ayniKayitNo", "Aynı kayıt numarası", nullptr, sameRegistration},
    {"adSoyad", "Adı veya soyadı boş", names, nullptr},
    {"ayniKisi", "Aynı ad, soyad, baba adı ve doğum tarihi", nullptr, samePerson},
    {"kimlikYok", "T.C. kimlik numarası boş", identityMissing, nullptr},
    {"kimlikHatali", "T.C. kimlik numarası hatalı", identityWrong, nullptr},
    {"ayniKimlik", "Aynı T.C. kimlik numarası", nullptr, sameIdentity},
    {"sifre", "Öğrenci şifresi dört karakter değil", passwordLength, nullptr},
    {"ayniSifre", "Aynı öğrenci şifresi", nullptr, samePassword},
    {"cinsiyet", "Cinsiyeti boş", sexMissing, nullptr},
    {"dogum", "Doğum tarihi eksik veya çelişkili", birthDate, nullptr},
    {"tarih", "Geçersiz tarih", wrongDates, nullptr},
    {"meslek", "Mesleği tanımlı değil", professionUnknown, nullptr},
    {"anaMeslek", "Ana mesleği tanımlı değil", mainProfessionUnknown, nullptr},
    {"sinif", "Sınıfı tanımlı değil", classUnknown, nullptr},
    {"isyeri", "İşyeri işletmeler arasında yok", workplaceUnknown, nullptr},
    {"isyersiz", "İşe giriş tarihi var, işyeri yok", startWithoutWorkplace, nullptr},
    {"girissiz", "İşyeri var, işe giriş tarihi yok", workplaceWithoutStart, nullptr},
    {"madde16", "16. madde: işe giriş tarihi eksik", articleSixteen, nullptr},
    {"cikis", "İşten çıkış var, işe giriş yok", endWithoutStart, nullptr},
    {"tarihSirasi", "Çıkış tarihi girişten önce", endBeforeStart, nullptr},
    {"sonOdeme", "SSK son ödeme var, işten çıkış yok", paidWithoutEnd, nullptr},
    {"cepTelefonu", "Cep telefonu hatalı", mobilePhone, nullptr},
};

class Run {
  public:
    Run(const Context& context, RecordFindings& findings) : context_(context), findings_(findings) {}

    void check(const Check& check) {
        if (check.alone) {
            for (const Student& student : context_.book.students)
                add(check, student, check.alone(student, context_));
            return;
        }
        std::map<QString, std::vector<const Student*>> groups;
        for (const Student& student : context_.book.students)
            if (const QString text = check.shared(student); !text.isEmpty())
                groups[upperTurkish(text)].push_back(&student);
        for (const auto& [text, students] : groups)
            if (students.size() > 1) addGroup(check, students);
    }

  private:
    void addGroup(const Check& check, const std::vector<const Student*>& students) {
        for (const Student* student : students) {
            QStringList others;
            for (const Student* other : students)
                if (other != student && others.size() < 3)
                    others << QStringLiteral("%1 %2 %3")
                                  .arg((*other)[Number], (*other)[Name], (*other)[Surname]);
            QString text =
                QStringLiteral("%1: %2").arg(check.shared(*student), others.join(QStringLiteral(", ")));
            if (students.size() > 4) text += QStringLiteral(" ve %1 kişi daha").arg(students.size() - 4);
            add(check, *student, text);
        }
    }
    void add(const Check& check, const Student& s, const QString& text) {
        if (text.isEmpty()) return;
        findings_.list.push_back({QString::fromUtf8(check.title), s[Number], s[Name], s[Surname],
                                  s[ClassName], s.professionName, text});
    }

    const Context& context_;
    RecordFindings& findings_;
};

} // namespace

std::vector<RecordCheck> recordChecks() {
    std::vector<RecordCheck> checks;
    for (const Check& check : kChecks)
        checks.push_back({QString::fromLatin1(check.key), QString::fromUtf8(check.title)});
    return checks;
}

RecordFindings checkRecords(DatabaseSet& databases, const QStringList& keys, const Clock& clock,
                            Dialogs& dialogs) {
    RecordFindings findings;
    const auto progress = dialogs.beginProgress(QStringLiteral("Öğrenci bilgileri denetleniyor"),
                                                static_cast<int>(keys.size()) + 1);
    progress->step(0, QStringLiteral("Kayıtlar okunuyor"));
    const RecordBook book = RecordBook::read(databases, clock.today());
    findings.students = book.students.size();
    const Context context{book, databases.schema()};
    Run run(context, findings);
    int done = 0;
    for (const Check& check : kChecks) {
        if (!keys.contains(QLatin1String(check.key))) continue;
        progress->step(++done, QString::fromUtf8(check.title));
        if (progress->cancelled()) {
            findings.stopped = true;
            break;
        }
        run.check(check);
    }
    return findings;
}

} // namespace orvan
