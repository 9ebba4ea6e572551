// records/screens/photo_page.cpp — see photo_page.h.
#include "records/screens/photo_page.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/screen.h"

#include <QBuffer>
#include <QImageReader>
#include <QLabel>
#include <QtEndian>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kQuality = 90;
constexpr QSize kShown(240, 320); // pixels at usual scale
constexpr int kWidestSide = 20000;

// The length that a bitmap tells of itself is there; its reader would fill the rest with black.
bool isWholeBitmap(const QByteArray& picture) {
    constexpr qsizetype kLengthAt = 2;
    return picture.size() > kLengthAt + 4 && qFromLittleEndian<quint32>(picture.constData() + kLengthAt) <=
                                                 static_cast<quint32>(picture.size());
}

} // namespace

QByteArray pictureAsJpeg(const QByteArray& picture) {
    QBuffer source;
    source.setData(picture);
    source.open(QIODevice::ReadOnly);
    QImageReader reader(&source);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    if ((format != "jpeg" && format != "bmp") || size.width() > kWidestSide || size.height() > kWidestSide)
        return {};
    if (format == "bmp" && !isWholeBitmap(picture)) return {};
    const QImage image = reader.read();
    if (image.isNull()) return {};
    if (format == "jpeg") return picture;
    QByteArray jpeg;
    QBuffer target(&jpeg);
    target.open(QIODevice::WriteOnly);
    return image.convertToFormat(QImage::Format_RGB32).save(&target, "JPEG", kQuality) ? jpeg : QByteArray();
}

PhotoPage::PhotoPage(DatabaseSet& databases, Dialogs& dialogs, const QString& title, QWidget* parent)
    : QWidget(parent), dialogs_(dialogs), photo_(databases, dialogs, title, pictureAsJpeg),
      picture_(new QLabel(this)) {
    picture_->setObjectName(QStringLiteral("fotograf"));
    picture_->setFixedSize(kShown);
    picture_->setFrameShape(QFrame::StyledPanel);
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setWordWrap(true);
    load_ =
        makeButton("fotografYukle", QStringLiteral("Fotoğra&f Yükle…"),
                   QStringLiteral("Bir .bmp ya da .jpg dosyasını öğrencinin fotoğrafı yapar"), this, [this] {
                       attempt(dialogs_, QStringLiteral("Fotoğraf yükleme"), [this] {
                           if (photo_.load(student_)) showPhoto();
                       });
                   });
    clear_ = makeButton("fotografTemizle", QStringLiteral("Fotoğrafı Temizle"),
                        QStringLiteral("Öğrencinin fotoğrafını siler"), this, [this] {
                            attempt(dialogs_, QStringLiteral("Fotoğraf silme"), [this] {
                                if (photo_.clear(student_)) showPhoto();
                            });
                        });
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(load_);
    buttons->addWidget(clear_);
    buttons->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(picture_, 0, Qt::AlignTop);
    layout->addLayout(buttons);
    layout->addStretch(1);
}

void PhotoPage::showStudent(const StudentRecord& student) {
    student_ = student;
    showPhoto();
}

void PhotoPage::showPhoto() {
    const QString file = photo_.file(student_);
    const QPixmap photo = file.isEmpty() ? QPixmap() : QPixmap(file);
    if (!photo.isNull()) {
        const qreal scale = devicePixelRatioF();
        QPixmap shown = photo.scaled(kShown * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        shown.setDevicePixelRatio(scale);
        picture_->setPixmap(shown);
    } else {
        picture_->setPixmap({});
        picture_->setText(file.isEmpty() ? QStringLiteral("Fotoğraf yok")
                                         : QStringLiteral("Fotoğraf dosyası bozuk, gösterilemiyor"));
    }
}

void PhotoPage::focusInEvent(QFocusEvent*) { load_->setFocus(Qt::TabFocusReason); }

} // namespace orvan
