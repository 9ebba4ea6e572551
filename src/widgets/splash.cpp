// widgets/splash.cpp — paints the start window.
#include "widgets/splash.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>

namespace orvan {

namespace {

constexpr int kWidth = 46, kHeight = 16; // in heights of the system's font: larger texts make a larger window

const QColor kDark(0x1F, 0x3A, 0x5F);
const QColor kLight(0x2E, 0x6D, 0xA4);

int unit() { return QFontMetrics(QApplication::font()).height() * 7 / 10; }

QPixmap background() {
    const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
    const QSize size(kWidth * unit(), kHeight * unit() * 3 / 2);
    QPixmap picture(size * scale);
    picture.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    QLinearGradient shade(0, 0, size.width(), size.height());
    shade.setColorAt(0, kDark);
    shade.setColorAt(1, kLight);
    painter.fillRect(QRect(QPoint(), size), shade);
    return picture;
}

QFont fontOf(double factor, bool bold = false) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    return font;
}

} // namespace

Splash::Splash(const QString& program, const QString& subtitle, const QString& release)
    : QSplashScreen(background()), program_(program), subtitle_(subtitle), release_(release) {
    setObjectName(QStringLiteral("acilis"));
    setWindowTitle(program);
    setAccessibleName(program + QStringLiteral(" açılıyor"));
}

void Splash::setSchool(const QString& name) {
    school_ = name;
    repaint();
}

void Splash::showStep(const QString& step) {
    step_ = step;
    setAccessibleDescription(step);
    repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Splash::drawContents(QPainter* painter) {
    const int margin = unit() * 2;
    const QRect area = rect().adjusted(margin, margin, -margin, -margin);
    int top = area.top();
    const auto line = [&](const QString& text, const QFont& font) {
        painter->setFont(font);
        const QFontMetrics metrics(font);
        // a long school name takes a second line
        const QRect needed =
            metrics.boundingRect(QRect(0, 0, area.width(), area.height()), Qt::TextWordWrap, text);
        painter->drawText(QRect(area.left(), top, area.width(), needed.height()), Qt::TextWordWrap, text);
        top += needed.height() + unit() / 2;
    };
    painter->setPen(Qt::white);
    line(program_, fontOf(2.6, true));
    line(subtitle_, fontOf(1.15));
    if (!school_.isEmpty()) line(school_, fontOf(1.15, true));

    painter->setFont(fontOf(1));
    const int height = painter->fontMetrics().height();
    const QString release = QStringLiteral("Ver: %1").arg(release_);
    const int releaseWidth = painter->fontMetrics().horizontalAdvance(release);
    const QRect foot(area.left(), area.bottom() - height, area.width(), height);
    painter->drawText(foot, Qt::AlignRight, release);
    const QRect stepPlace = foot.adjusted(0, 0, -releaseWidth - unit(), 0);
    painter->drawText(stepPlace, Qt::AlignLeft,
                      painter->fontMetrics().elidedText(step_, Qt::ElideRight, stepPlace.width()));
    painter->drawLine(area.left(), foot.top() - unit() / 2, area.right(), foot.top() - unit() / 2);
}

} // namespace orvan
