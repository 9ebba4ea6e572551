// core/clock.h — what day it is, passed in; and the one text form of a date, "dd.MM.yyyy".
#pragma once

#include <optional>
#include <QDate>
#include <QString>

namespace orvan {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual QDate today() const = 0;
};

class SystemClock final : public Clock {
  public:
    QDate today() const override { return QDate::currentDate(); }
};

class FixedClock final : public Clock {
  public:
    explicit FixedClock(QDate day) : day_(day) {}
    QDate today() const override { return day_; }

  private:
    QDate day_;
};

QString dateText(QDate date); // "05.09.2008"; an invalid date is the empty text
// Day, month and year from a text such as "05.09.2008" (also with "/" or "-"); nothing when it is no such
// day.
std::optional<QDate> dateFromText(const QString& text);

} // namespace orvan
