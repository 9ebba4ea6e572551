// tools/orvanctl/demo_photos.cpp — see demo_photos.h.
#include "tools/orvanctl/demo_photos.h"

#include "records/student_photo.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <stdexcept>

namespace orvanctl {
namespace {

constexpr QSize kSize(180, 240); // of a passport photo, 3 : 4

QColor pick(DemoRandom& random, std::initializer_list<QRgb> colours) {
    return QColor(colours.begin()[random.below(static_cast<int>(colours.size()))]);
}

QImage drawPortrait(DemoRandom& random) {
    const QColor wall = pick(random, {0xE8EEF4, 0xEFEBE2, 0xE6F0E8});
    const QColor skin = pick(random, {0xF2CFAE, 0xE3B48C, 0xC98F63, 0xF7DCC4});
    const QColor hair = pick(random, {0x2B1D14, 0x4A2F1B, 0x6B4423, 0x1A1A1A});
    const QColor shirt = pick(random, {0x34567C, 0x7A2E3A, 0x3F6B4A, 0x555B66});
    const bool longHair = random.chance(40);
    QImage image(kSize, QImage::Format_RGB32);
    image.fill(wall);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(hair);
    if (longHair) painter.drawRoundedRect(QRectF(44, 52, 92, 130), 40, 40);
    painter.setBrush(shirt);
    painter.drawRoundedRect(QRectF(20, 186, 140, 90), 40, 40);
    painter.setBrush(skin.darker(108));
    painter.drawRect(QRectF(76, 160, 28, 36));
    painter.setBrush(skin);
    painter.drawEllipse(QRectF(52, 62, 76, 108));
    QPainterPath top;
    top.addEllipse(QRectF(48, 46, 84, 80));
    QPainterPath face;
    face.addEllipse(QRectF(50, 84, 80, 90));
    painter.setBrush(hair);
    painter.drawPath(top - face);
    painter.setBrush(QColor(0x2A2A2A));
    painter.drawEllipse(QPointF(76, 112), 4, 4);
    painter.drawEllipse(QPointF(104, 112), 4, 4);
    painter.setPen(QPen(skin.darker(150), 3, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(76, 126, 28, 20), 200 * 16, 140 * 16);
    return image;
}

} // namespace

int drawPhotos(const orvan::ProgramFolder& folder, const QStringList& numbers, int each, DemoRandom& random) {
    folder.ensureFolder(QStringLiteral("\\data\\fotograf"));
    int drawn = 0;
    for (qsizetype i = 0; i < numbers.size(); i += each, ++drawn) {
        const QString file = orvan::photoFile(folder, numbers[i]);
        if (!drawPortrait(random).save(file, "JPG", 85))
            throw std::runtime_error("Fotoğraf yazılamadı: " + file.toStdString());
    }
    return drawn;
}

} // namespace orvanctl
