// records/registration_conflict.cpp — see registration_conflict.h.
#include "records/registration_conflict.h"

namespace orvan {
namespace {

constexpr int kMostLines = 12; // fields named in the question

QString subject(const RegistrationForm& form) {
    return form.stored.number() + QLatin1Char(' ') + form.stored.fullName();
}

QString shown(const QString& text) { return text.isEmpty() ? QStringLiteral("boş") : u'“' + text + u'”'; }

// "Sınıf: “10-A” yerine “11-B” (siz “12-C” yazdınız)"
QStringList differences(const RegistrationForm& form, const StudentRecord& theirs,
                        const StudentRecords& records) {
    QStringList lines;
    for (const FieldDeclaration& field : records.table().fields) {
        const QString name = QString::fromStdString(field.name);
        const QString before = form.stored.values.at(name), now = theirs.values.at(name);
        if (before == now) continue;
        QString line = QStringLiteral("%1: %2 yerine %3").arg(records.label(name), shown(before), shown(now));
        const auto mine = form.values.find(name);
        if (mine != form.values.end() && mine->second != before && mine->second != now)
            line += QStringLiteral(" (siz %1 yazdınız)").arg(shown(mine->second));
        lines << line;
    }
    const auto more = lines.size() - kMostLines;
    if (more <= 1) return lines;
    lines = lines.first(kMostLines);
    return lines << QStringLiteral("… ve %1 alan daha").arg(more);
}

ConflictChoice ask(const QString& text, const QString& mine, const QString& theirs, Dialogs& dialogs) {
    const QStringList choices{mine, theirs,
                              QStringLiteral("Şimdi kaydedilmesin, yazdıklarım ekranda kalsın")};
    switch (dialogs.choose(text, QStringLiteral("Uyarı"), choices, 2).value_or(2)) {
    case 0: return ConflictChoice::Mine;
    case 1: return ConflictChoice::Theirs;
    default: return ConflictChoice::Stay;
    }
}

} // namespace

ConflictChoice askAboutChange(const RegistrationForm& form, const StudentRecord& theirs,
                              const StudentRecords& records, Dialogs& dialogs) {
    return ask(QStringLiteral("%1 kaydı, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n%2")
                   .arg(subject(form), differences(form, theirs, records).join(QLatin1Char('\n'))),
               QStringLiteral("Benim yazdıklarım kaydedilsin"),
               QStringLiteral("Onun kaydettiği ekrana gelsin, yazdıklarım silinsin"), dialogs);
}

ConflictChoice askAboutDeletion(const RegistrationForm& form, Dialogs& dialogs) {
    return ask(
        QStringLiteral("%1 kaydı, siz açtıktan sonra başka bir bilgisayarda silindi.").arg(subject(form)),
        QStringLiteral("Ekrandaki bilgilerle yeniden kaydedilsin"),
        QStringLiteral("Silinmiş kalsın, ekran boşalsın"), dialogs);
}

} // namespace orvan
