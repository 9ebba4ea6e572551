// records/registration_photo.cpp — see registration_photo.h.
#include "records/registration_photo.h"

#include "core/users.h"
#include "records/student_photo.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace orvan {
namespace {

constexpr qint64 kLargestPicture = 32 * 1024 * 1024; // bytes; a camera's own are below 20 MB

} // namespace

RegistrationPhoto::RegistrationPhoto(DatabaseSet& databases, Dialogs& dialogs, QString title,
                                     PictureCodec codec)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)), codec_(std::move(codec)) {}

void RegistrationPhoto::say(const QString& text) {
    dialogs_.message(text, QStringLiteral("Uyarı"), Icon::Warning);
}

QString RegistrationPhoto::file(const StudentRecord& student) const {
    if (student.number().isEmpty()) return {};
    const QString path = photoFile(databases_.folder(), student.number());
    return QFileInfo::exists(path) ? path : QString();
}

// A new student's number is his only when he is stored.
bool RegistrationPhoto::mayChange(const StudentRecord& student) {
    if (student.isNew()) {
        say(QStringLiteral("Fotoğraf yüklemek için önce öğrenciyi kaydediniz."));
        return false;
    }
    return mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

bool RegistrationPhoto::load(const StudentRecord& student) {
    if (!mayChange(student)) return false;
    const auto chosen = dialogs_.chooseFile(QStringLiteral("Öğrenci fotoğrafı"),
                                            QStringLiteral("Resim Dosyaları (*.bmp;*.jpg)|*.bmp;*.jpg"));
    if (!chosen) return false;
    const QString name = QFileInfo(*chosen).fileName();
    QFile source(*chosen);
    if (!source.open(QIODevice::ReadOnly)) {
        say(QStringLiteral("“%1” dosyası okunamadı.").arg(name));
        return false;
    }
    if (source.size() > kLargestPicture) {
        say(QStringLiteral("“%1” fotoğraf olarak çok büyük (%2 MB).").arg(name).arg(source.size() >> 20));
        return false;
    }
    const QByteArray picture = codec_(source.readAll());
    if (picture.isEmpty()) {
        say(QStringLiteral("“%1” bir resim dosyası değil ya da bozuk. Bir .bmp ya da .jpg resmi seçiniz.")
                .arg(name));
        return false;
    }
    databases_.folder().ensureFolder(QStringLiteral("\\data\\fotograf"));
    QSaveFile target(photoFile(databases_.folder(), student.number()));
    if (target.open(QIODevice::WriteOnly) && target.write(picture) == picture.size() && target.commit())
        return true;
    say(QStringLiteral("“%1” yazılamadı; öğrencinin fotoğrafı değişmedi.").arg(target.fileName()));
    return false;
}

bool RegistrationPhoto::clear(const StudentRecord& student) {
    const QString path = file(student);
    if (path.isEmpty() || !mayChange(student)) return false;
    const QString title = QStringLiteral("%1 %2").arg(student.number(), student.fullName());
    if (!dialogs_.confirms(QStringLiteral("Öğrencinin fotoğrafı silinsin mi?"), title)) return false;
    if (QFile::remove(path)) return true;
    say(QStringLiteral("“%1” silinemedi.").arg(path));
    return false;
}

} // namespace orvan
