// core/session.cpp — the words for levels and data sets.
#include "core/session.h"

namespace orvan {

QString levelText(Level level) {
    switch (level) {
    case Level::Kalfa: return QStringLiteral("Kalfa");
    case Level::Usta: return QStringLiteral("Usta");
    case Level::UstaOgretici: return QStringLiteral("Usta Öğretici");
    case Level::IsyeriAcma: return QStringLiteral("İşyeri Açma");
    case Level::DenklikKalfa: return QStringLiteral("DenklikKalfa");
    case Level::DenklikUsta: return QStringLiteral("DenklikUsta");
    }
    return {};
}

QString dataSetCaption(DataSetMode mode) {
    switch (mode) {
    case DataSetMode::Working: return QStringLiteral("Normal Arşiv");
    case DataSetMode::Graduates: return QStringLiteral("Mezunlar Arşivi");
    case DataSetMode::Leavers: return QStringLiteral("Ayrılma Arşivi");
    }
    return {};
}

} // namespace orvan
