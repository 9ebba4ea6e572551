// records/registration_photo.h — loading and clearing the photo of a student. What a picture is, is told by
// the `PictureCodec` of the window; this decides where it goes and speaks to the person.
#pragma once

#include "records/student_record.h"

#include <functional>

namespace orvan {

// The bytes of any picture file as JPEG; empty when they are no picture.
using PictureCodec = std::function<QByteArray(const QByteArray& picture)>;

class RegistrationPhoto {
  public:
    RegistrationPhoto(DatabaseSet& databases, Dialogs& dialogs, QString title, PictureCodec codec);

    QString file(const StudentRecord& student) const; // whole path; empty when he has none
    // Asks for a file and stores it as data\fotograf\NUMBER.jpg. True: there is a new photo.
    bool load(const StudentRecord& student);
    bool clear(const StudentRecord& student); // asks; true: it is gone

  private:
    bool mayChange(const StudentRecord& student);
    void say(const QString& text);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    PictureCodec codec_;
};

} // namespace orvan
