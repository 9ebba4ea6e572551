// records/screens/photo_page.h — the photo of the student on view, with the buttons to load and clear it.
#pragma once

#include "records/registration_photo.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace orvan {

// JPEG bytes of a .bmp or .jpg picture (a .jpg as it is); empty when the bytes are neither.
QByteArray pictureAsJpeg(const QByteArray& picture);

class PhotoPage : public QWidget {
    Q_OBJECT

  public:
    // All must outlive it.
    PhotoPage(DatabaseSet& databases, Dialogs& dialogs, const QString& title, QWidget* parent = nullptr);

    void showStudent(const StudentRecord& student);

  protected:
    void focusInEvent(QFocusEvent* event) override; // on to the first button

  private:
    void showPhoto();

    Dialogs& dialogs_;
    RegistrationPhoto photo_;
    StudentRecord student_;
    QLabel* picture_;
    QPushButton *load_, *clear_;
};

} // namespace orvan
