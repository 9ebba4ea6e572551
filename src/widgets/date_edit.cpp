// widgets/date_edit.cpp — reading typed dates, and the calendar under the field.
#include "widgets/date_edit.h"

#include "core/clock.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFocusEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kDateLength = 10;
constexpr int kFirstYear = 1900, kLastYear = 2099;
constexpr int kLastShortYear = 29; // "29" is 2029, "30" is 1930

struct DayParts {
    int day = 0, month = 0, year = 0;
};

std::optional<DayParts> dayParts(const QString& text) {
    static const QRegularExpression together(QStringLiteral("^(\\d\\d)(\\d\\d)(\\d{2}|\\d{4})$"));
    static const QRegularExpression apart(
        QStringLiteral("^(\\d{1,2}) *[./\\- ] *(\\d{1,2}) *[./\\- ] *(\\d{2}|\\d{4})$"));
    for (const QRegularExpression* form : {&together, &apart}) {
        const auto match = form->match(text.trimmed());
        if (!match.hasMatch()) continue;
        int year = match.capturedView(3).toInt();
        if (match.capturedLength(3) == 2) year += year <= kLastShortYear ? 2000 : 1900;
        return DayParts{match.capturedView(1).toInt(), match.capturedView(2).toInt(), year};
    }
    return std::nullopt;
}

QIcon calendarIcon(const QWidget* field) {
    const int side = field->fontMetrics().height();
    QPixmap picture(QSize(side, side) * field->devicePixelRatioF());
    picture.setDevicePixelRatio(field->devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 16.0, side / 16.0);
    const QColor ink = field->palette().color(QPalette::Text);
    painter.setPen(QPen(ink, 1));
    painter.drawRect(QRectF(2.5, 3.5, 11, 10));
    painter.fillRect(QRectF(2.5, 3.5, 11, 3), ink);
    for (const double y : {9.0, 11.5})
        for (const double x : {5.0, 8.0, 11.0})
            painter.fillRect(QRectF(x - 0.6, y - 0.6, 1.4, 1.4), ink);
    return QIcon(picture);
}

// A popup that goes away by itself: Esc, a click elsewhere, or a chosen day.
class CalendarPopup : public QWidget {
  public:
    explicit CalendarPopup(QWidget* field) : QWidget(field, Qt::Popup), calendar_(new QCalendarWidget(this)) {
        setObjectName(QStringLiteral("takvim"));
        setAttribute(Qt::WA_DeleteOnClose);
        calendar_->setLocale(QLocale(QLocale::Turkish, QLocale::Turkey));
        calendar_->setFirstDayOfWeek(Qt::Monday);
        calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        calendar_->setDateRange(QDate(kFirstYear, 1, 1), QDate(kLastYear, 12, 31));
        calendar_->setAccessibleName(QStringLiteral("Takvim"));
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(1, 1, 1, 1);
        layout->addWidget(calendar_);
        setFocusProxy(calendar_);
    }
    QCalendarWidget* calendar() const { return calendar_; }

    void showBelow(const QWidget* field) {
        adjustSize();
        const QRect room = field->screen()->availableGeometry();
        QPoint place = field->mapToGlobal(QPoint(0, field->height()));
        if (place.y() + height() > room.bottom()) place.setY(field->mapToGlobal(QPoint()).y() - height());
        place.setX(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - width())));
        move(place);
        show();
        calendar_->setFocus(Qt::PopupFocusReason);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F4)
            close();
        else
            QWidget::keyPressEvent(event);
    }

  private:
    QCalendarWidget* calendar_;
};

} // namespace

std::optional<QDate> typedDate(const QString& text) {
    const auto parts = dayParts(text);
    if (!parts || parts->year < kFirstYear || parts->year > kLastYear) return std::nullopt;
    const QDate day(parts->year, parts->month, parts->day);
    return day.isValid() ? std::optional(day) : std::nullopt;
}

QString dateProblem(const QString& text) {
    if (text.trimmed().isEmpty() || typedDate(text)) return {};
    const auto parts = dayParts(text);
    if (!parts) return QStringLiteral("Tarih gg.aa.yyyy biçiminde olmalıdır; örneğin 05.09.2008.");
    if (parts->year < kFirstYear || parts->year > kLastYear)
        return QStringLiteral("Yıl %1 ile %2 arasında olmalıdır.").arg(kFirstYear).arg(kLastYear);
    if (parts->month < 1 || parts->month > 12)
        return QStringLiteral("%1. ay yoktur; ay 1 ile 12 arasında olmalıdır.").arg(parts->month);
    const int days = QDate(parts->year, parts->month, 1).daysInMonth();
    return QStringLiteral("Bu ayda %1. gün yoktur; gün 1 ile %2 arasında olmalıdır.")
        .arg(parts->day)
        .arg(days);
}

DateEdit::DateEdit(QWidget* parent) : TextEdit(TextEntry::Code, kDateLength, kDateLength + 2, parent) {
    setPlaceholderText(QStringLiteral("gg.aa.yyyy"));
    QAction* open = addAction(calendarIcon(this), TrailingPosition);
    open->setObjectName(QStringLiteral("takvimAc"));
    open->setText(QStringLiteral("Takvim"));
    open->setToolTip(QStringLiteral("Takvimi açar (F4)"));
    connect(open, &QAction::triggered, this, &DateEdit::openCalendar);
}

QString DateEdit::value() const {
    if (text() == loaded_) return loaded_;
    if (const auto day = typedDate(text())) return dateText(*day);
    return text().trimmed();
}

void DateEdit::setValue(const QString& value) {
    loaded_ = value;
    putWhole(value);
}

QString DateEdit::problem() const { return text() == loaded_ ? QString() : dateProblem(text()); }

void DateEdit::settle() {
    if (text() == loaded_ || !problem().isEmpty()) return;
    retype(value());
}

void DateEdit::openCalendar() {
    if (isReadOnly() || !isEnabled()) return;
    auto* popup = new CalendarPopup(this);
    if (const auto day = typedDate(text())) popup->calendar()->setSelectedDate(*day);
    const auto take = [this, popup](QDate day) {
        popup->close();
        setFocus(Qt::PopupFocusReason);
        const QString chosen = dateText(day);
        if (chosen == text()) return;
        selectAll();
        insert(chosen);
        emit dateChosen();
    };
    connect(popup->calendar(), &QCalendarWidget::clicked, this, take);
    connect(popup->calendar(), &QCalendarWidget::activated, this, take);
    popup->showBelow(this);
}

void DateEdit::keyPressEvent(QKeyEvent* event) {
    const bool open = (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier) ||
                      (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier);
    if (open) {
        openCalendar();
        return;
    }
    const bool isOther = typesText(*event) && !event->text()[0].isDigit() &&
                         !QStringLiteral("./- ").contains(event->text()[0]);
    if (isOther && !isReadOnly()) {
        emit refused(QStringLiteral("Bu alana tarih yazılır; örneğin 05.09.2008."));
        return;
    }
    TextEdit::keyPressEvent(event);
}

void DateEdit::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) settle();
    TextEdit::focusOutEvent(event);
}

} // namespace orvan
