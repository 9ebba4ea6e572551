// widgets/yes_no.h — the texts of yes and no as fields and cells hold them.
#pragma once

#include <QString>

namespace orvan {

inline const QString kYesText = QStringLiteral("1");
inline const QString kNoText = QStringLiteral("0");

} // namespace orvan
