// records/student_choices.cpp — see student_choices.h.
#include "records/student_choices.h"

namespace orvan {

QStringList registrationKinds(bool equivalence) {
    QStringList kinds{QStringLiteral("Mesleki Eğitim"),         QStringLiteral("İşyeri Açma"),
                      QStringLiteral("İşyeri Açma-Doğrudan"),   QStringLiteral("Dışardan Bitirme"),
                      QStringLiteral("Dışardan Belge"),         QStringLiteral("Meslek Lisesi Mezunu"),
                      QStringLiteral("Mes.Lis.Mez.(86 Öncesi)")};
    if (equivalence)
        kinds << QStringLiteral("Denklik") << QStringLiteral("DenklikKalfa") << QStringLiteral("DenklikUsta");
    return kinds;
}

QStringList leavingReasons() {
    return {QStringLiteral("Askerlik"),
            QStringLiteral("Devamsızlık"),
            QStringLiteral("Nakil"),
            QStringLiteral("Ölüm"),
            QStringLiteral("Mahkumiyet"),
            QStringLiteral("İşyeri Devamsızlığı"),
            QStringLiteral("Kendi İsteği"),
            QStringLiteral("Hastalık"),
            QStringLiteral("Disiplin"),
            QStringLiteral("İş Yeri Yazısı"),
            QStringLiteral("Velisinin İsteği"),
            QStringLiteral("Başarılı"),
            QStringLiteral("2.Sınavda Başarısız"),
            QStringLiteral("Ana Meslek Değiştirme"),
            QStringLiteral("Deneme Süresi"),
            QStringLiteral("İşyeri Kapanması"),
            QStringLiteral("İşyeri Taşınması"),
            QStringLiteral("İşyeri Değişikliği"),
            QStringLiteral("Bitirme Sınavına Katılma")};
}

QStringList yesNoTexts() { return {QStringLiteral("Evet"), QStringLiteral("Hayır")}; }

} // namespace orvan
